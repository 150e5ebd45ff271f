#include "exchange/map_template.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <tuple>

#include "circuit/direction.h"
#include "exchange/library.h"
#include "text/near_names.h"
#include "text/phrases.h"
#include "text/table.h"

namespace vrltool::exchange {

namespace {

using Names = std::vector<std::string>;

/// What a netlist uses of one component.
struct Used {
    std::size_t instances = 0;
    std::map<std::string, Node> ports, settings, info;  ///< with the first value that is not null
};

void addValues(std::map<std::string, Node>& values, Node const& given) {
    for (auto const& [name, value] : given) {
        Node& first = values.emplace(name.text, value).first->second;
        if (isNull(first)) first = value;
    }
}

std::map<std::string, Used> usedComponents(Document const& document) {
    std::map<std::string, Used> components;
    std::map<std::string, Used*> ofInstance;
    for (Instance const& instance : document.instances) {
        if (!instance.good) continue;
        Used& used = *(ofInstance[arrayOf(instance.name.text)] = &components[componentOf(instance.given).text]);
        ++used.instances;
        addValues(used.settings, member(instance.given, "settings"));
        addValues(used.info, mapOf(member(instance.given, "info")));
    }
    auto const addPort = [&](std::string const& port) {
        auto const comma = port.rfind(',');
        auto const found = ofInstance.find(arrayOf(port.substr(0, comma)));
        if (found != ofInstance.end()) found->second->ports[port.substr(comma + 1)];
    };
    for (Net const& net : document.nets)
        for (Node const& port : net.ports) addPort(port.text);
    for (auto const& outer : document.ports) addPort(outer.second.text);
    return components;
}

/// The names that have words of a name in them, by how many, most first.
std::map<int, Names, std::greater<>> sharingWords(std::string const& name, Names const& known) {
    static std::regex const word("[A-Za-z][a-z]{2,15}");  // bounded, as its stack is
    std::map<int, Names, std::greater<>> sharing;
    for (std::string const& candidate : known) {
        int count = 0;
        for (std::sregex_iterator at(name.begin(), name.end(), word), end; at != end; ++at)
            count += std::regex_search(candidate, std::regex(at->str(), std::regex::icase));
        if (count > 0) sharing[count].push_back(candidate);
    }
    return sharing;
}

/// Up to three names that have words of a name in them, most of them first; without any, those that are spelt alike.
Names proposals(std::string const& name, Names const& known) {
    Names names;
    for (auto const& [count, sharing] : sharingWords(name, known))
        names.insert(names.end(), sharing.begin(), sharing.end());
    names.resize(std::min<std::size_t>(names.size(), 3));
    return names.empty() ? nearNames(name, known) : names;
}

/// What kind of wire a port is for. Other tools call optical ports "o1" and electrical ones "e1", with words before.
enum class Wire { kOptical, kElectrical, kOther };

Wire wireOf(std::string const& port) {
    static std::regex const numbered("(.*[^A-Za-z])?([eo])[0-9]{1,6}");
    std::smatch match;
    if (port.size() > kLongestName || !std::regex_match(port, match, numbered)) return Wire::kOther;
    return match[2] == "o" ? Wire::kOptical : Wire::kElectrical;
}

Wire wireOf(vrl::EnumList::Domain domain) {
    if (domain == vrl::EnumList::Optics) return Wire::kOptical;
    return isElectrical(domain) ? Wire::kElectrical : Wire::kOther;
}

struct NamedPort {
    std::string name;
    Wire wire;
};
using Ports = std::vector<NamedPort>;

Names namesOf(Ports const& ports, Wire wire) {
    Names names;
    for (NamedPort const& port : ports)
        if (port.wire == wire) names.push_back(port.name);
    return names;
}

Names namesOf(Ports const& ports) {
    Names names;
    for (NamedPort const& port : ports) names.push_back(port.name);
    return names;
}

/// Names that end in numbers in the order of these.
bool naturalOrder(NamedPort const& a, NamedPort const& b) {
    auto const head = [](std::string const& name) { return name.find_last_not_of("0123456789") + 1; };
    auto const key = [&](std::string const& name) {
        std::size_t const digits = name.size() - head(name);
        return std::make_tuple(name.substr(0, head(name)), digits, name);
    };
    return key(a.name) < key(b.name);
}

/// The ports of a component as far as a netlist uses them.
Ports portsOf(Used const& used) {
    Ports ports;
    for (auto const& entry : used.ports) ports.push_back({entry.first, wireOf(entry.first)});
    std::sort(ports.begin(), ports.end(), naturalOrder);
    return ports;
}

/// A kind of ours that a component may be.
struct Candidate {
    std::string key;
    FreshBlock const* fresh;
    Ports ports;

    bool has(NamedPort const& theirs) const {
        return std::any_of(ports.begin(), ports.end(), [&](NamedPort const& ours) {
            return ours.name == theirs.name && (theirs.wire == Wire::kOther || theirs.wire == ours.wire);
        });
    }
    /// Whether there are enough ports of each sort.
    bool holds(Ports const& theirs) const {
        auto const fits = [&](Wire wire) { return namesOf(theirs, wire).size() <= namesOf(ports, wire).size(); };
        return fits(Wire::kOptical) && fits(Wire::kElectrical) && theirs.size() <= ports.size();
    }
    bool agreesByName(Ports const& theirs) const {
        return std::all_of(theirs.begin(), theirs.end(), [&](NamedPort const& port) { return has(port); });
    }
    /// Whether there are as many of each sort.
    bool agreesByNumber(Ports const& theirs) const {
        auto const equal = [&](Wire wire) { return namesOf(theirs, wire).size() == namesOf(ports, wire).size(); };
        return equal(Wire::kOptical) && equal(Wire::kElectrical) && equal(Wire::kOther);
    }
    /// Whether other tools may count its optical ports in order or around it.
    bool hasSeveralOnBothSides() const {
        auto const count = [&](Direction direction) {
            return std::count_if(ports.begin(), ports.end(), [&](NamedPort const& port) {
                return port.wire == Wire::kOptical && directionOf(port.name) == direction;
            });
        };
        return count(Direction::kInput) > 1 && count(Direction::kOutput) > 1;
    }
    bool agrees(Ports const& theirs) const {
        return !theirs.empty() && (agreesByName(theirs) || agreesByNumber(theirs));
    }
};

std::vector<Candidate> allCandidates(Kinds& kinds, std::string const& foundry) {
    std::vector<Candidate> all;
    for (std::string const& key : factoryKeys<vrl::BB>()) {
        FreshBlock const* const fresh = kinds.fresh(foundry, ComponentRule(key));
        if (!fresh) continue;
        Ports ports;
        for (auto port = fresh->block->beginPort(); port != fresh->block->endPort(); ++port)
            ports.push_back({port->getName().getName(), wireOf(port->getDomain())});
        all.push_back({key, fresh, ports});
    }
    return all;
}

std::string listed(Names const& names) { return printable(listText(names, names.size())); }

/// The kind for a component, and what there is to say of others.
struct Guess {
    Candidate const* kind = nullptr;
    std::string comment = {};
};

/// What there is to say of a component that may be several kinds, or none.
std::string mention(Names const& near, Names const& agreeing, Names const& holding) {
    Names const& some = near.empty() ? agreeing : near;
    if (!some.empty()) return "perhaps " + printable(listText(some, some.size(), "or"));
    return holding.empty() ? "no kind has as many ports" : "one of " + listed(holding);
}

/// A kind of that name; else the one whose name is nearest, if its ports agree and no other one is as near. All others
/// are only mentioned: those whose names are near, those whose ports agree, those that have enough of them.
Guess guessFor(std::string const& name, Ports const& ports, std::vector<Candidate> const& all) {
    Names holding, agreeing;
    for (Candidate const& candidate : all) {
        if (candidate.key == name) return {&candidate};
        if (candidate.holds(ports)) holding.push_back(candidate.key);
        if (candidate.agrees(ports)) agreeing.push_back(candidate.key);
    }
    if (ports.empty()) return {nullptr, "no port of it is connected; {skip: true} leaves it out"};
    auto const sharing = sharingWords(name, agreeing);
    Names near = proposals(name, holding);
    if (sharing.empty() || sharing.begin()->second.size() > 1) return {nullptr, mention(near, agreeing, holding)};
    std::string const& nearest = sharing.begin()->second.front();
    near.erase(std::remove(near.begin(), near.end(), nearest), near.end());
    auto const isNearest = [&](Candidate const& candidate) { return candidate.key == nearest; };
    return {&*std::find_if(all.begin(), all.end(), isNearest),
            near.empty() ? "a guess" : "a guess; or " + listed(near)};
}

std::string yaml(Node const& node) { return written(node, Format::kYaml); }

/// The lines for ports. Those that are not called as ours are taken in order, if there are as many of each sort.
std::string portLines(Ports const& theirs, Candidate const* kind) {
    std::string lines = "    ports:" + (kind ? "  # ours: " + listed(namesOf(kind->ports)) : "") + '\n';
    bool const byName = kind && kind->agreesByName(theirs), byNumber = kind && !byName && kind->agreesByNumber(theirs);
    bool const sided = kind && kind->hasSeveralOnBothSides();
    std::map<Wire, std::size_t> next;
    for (NamedPort const& port : theirs) {
        std::string ours, comment;
        if (byName || (kind && !byNumber && kind->has(port))) {
            ours = port.name;
        } else if (byNumber) {
            Names const known = namesOf(kind->ports, port.wire);
            bool const unclear = sided && port.wire == Wire::kOptical;
            bool const twoWays =
                known.size() == 2 && port.wire == Wire::kOptical;  // which end is which does not matter
            if (!unclear && next[port.wire] < known.size()) ours = known[next[port.wire]++];
            comment = unclear ? "  # one of " + listed(known) : twoWays ? "" : "  # in order";
        }
        lines += "      " + yaml(stringNode(port.name)) + ": " + (ours.empty() ? "null" : yaml(stringNode(ours))) +
                 comment + '\n';
    }
    return theirs.empty() ? "" : lines;
}

/// Names of ours for a setting: those that share most of its words.
Names nearParameters(std::string const& setting, Names const& ours) {
    static std::regex const word("[A-Za-z][a-z]{2,15}");
    auto const words =
        std::distance(std::sregex_iterator(setting.begin(), setting.end(), word), std::sregex_iterator());
    auto const sharing = sharingWords(setting, ours);
    bool const most = !sharing.empty() && 2 * sharing.begin()->first > words;
    return most ? sharing.begin()->second : sharing.empty() ? nearNames(setting, ours) : Names();
}

/// The lines for settings, each with an example of its values. That of the cross section is not among them.
std::string parameterLines(std::map<std::string, Node> settings, Names const& ours) {
    settings.erase(kSectionSetting);
    std::string lines = "    parameters:" + (ours.empty() ? "" : "  # ours: " + listed(ours)) + '\n';
    for (auto const& [name, value] : settings) {
        bool const same = std::find(ours.begin(), ours.end(), name) != ours.end();
        std::string const text = yaml(stringNode(name));
        Names const near = same ? Names() : nearParameters(name, ours);
        std::string const example = value.kind < Kind::kList ? printable(yaml(value)) : kindWord(value.kind);
        lines += "      " + text + ": " + (same ? text : "null") +
                 (isNull(value) ? "  # never given" : "  # such as " + example) +
                 (near.empty() ? "" : "; perhaps " + listed(near)) + '\n';
    }
    return settings.empty() ? "" : lines;
}

/// The lines for members of "info" that are called as parameters of ours.
std::string infoLines(std::map<std::string, Node> const& info, Names const& ours) {
    std::string lines;
    for (auto const& [name, value] : info)
        if (std::find(ours.begin(), ours.end(), name) != ours.end() && value.kind < Kind::kList)
            lines += "      " + yaml(stringNode(name)) + ": " + yaml(stringNode(name)) + "  # such as " +
                     printable(yaml(value)) + '\n';
    return lines.empty() ? "" : "    info:\n" + lines;
}

/// The lines for the cross sections that settings name.
std::string sectionLines(Document const& document, Kinds& kinds, std::string const& foundry) {
    std::set<std::string> names;
    for (Instance const& instance : document.instances) {
        Node const& given = member(member(instance.given, "settings"), kSectionSetting);
        if (isString(given)) names.insert(given.text);
    }
    std::string lines;
    for (std::string const& name : names) {
        bool const same = !foundry.empty() && kinds.hasSection(foundry, name);
        lines += "  " + yaml(stringNode(name)) + ": " + (same ? yaml(stringNode(name)) : "null") + '\n';
    }
    return lines.empty() ? "" : "crossSections:\n" + lines;
}

}  // namespace

std::string mapTemplate(Document const& document) {
    Kinds kinds;
    Names const foundries = factoryKeys<vrl::Foundry>();
    auto const components = usedComponents(document);
    auto const candidates = allCandidates(kinds, foundries.empty() ? "" : foundries.front());
    std::string out = "# From the names of " + printable(document.path) +
                      " to ours. What is null has still to be filled in,\n"
                      "# or may stay so: a setting that is null is kept as a note.\n"
                      "# Kinds that are a guess and ports in order: compare them with a drawing of both.\n"
                      "# Parameters may convert: {to: length, factor: 1000}.\n"
                      "# A component that is no part of the circuit: {skip: true}.\n"
                      "foundry: " +
                      (foundries.empty() ? "null" : yaml(stringNode(foundries.front()))) +
                      (foundries.size() > 1 ? "  # " + listed(foundries) : "") + '\n' +
                      sectionLines(document, kinds, foundries.empty() ? "" : foundries.front()) +
                      (components.empty() ? "components: {}\n" : "components:\n");
    for (auto const& [name, used] : components) {
        Ports const ports = portsOf(used);
        Guess const guess = guessFor(name, ports, candidates);
        out += "  " + yaml(stringNode(name)) + ":  # " + counted(used.instances, "instance") +
               "\n    key: " + (guess.kind ? yaml(stringNode(guess.kind->key)) : "null") +
               (guess.comment.empty() ? "" : "  # " + guess.comment) + '\n' + portLines(ports, guess.kind) +
               parameterLines(used.settings, guess.kind ? guess.kind->fresh->parameterNames() : Names()) +
               infoLines(used.info, guess.kind ? guess.kind->fresh->parameterNames() : Names());
    }
    return out;
}

}  // namespace vrltool::exchange
