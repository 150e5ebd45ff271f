#include "exchange/name_map.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <set>

#include "exchange/library.h"
#include "text/failure.h"
#include "text/near_names.h"
#include "text/phrases.h"
#include "text/table.h"

namespace vrltool::exchange {

namespace {

/// A map file that is being checked; each failure names a place in it.
struct MapFile {
    std::string const& path;

    [[noreturn]] void fail(Mark const& mark, std::string const& what, std::string const& hint = "") const {
        throw Failure(placeText(path, mark), what, hint);
    }

    void check(Node const& node, std::string const& what, std::string_view kinds) const {
        bool const empty = isString(node) && node.Scalar().empty();
        std::string const wrong = empty ? wrongKind(what, node, "a string") : misfit(what, node, kinds);
        if (!wrong.empty()) fail(node.Mark(), wrong);
    }

    void check(Node const& node, std::string const& what, std::string const& of,
               std::vector<Shape> const& shapes) const {
        check(node, what, "m");
        for (auto const& entry : node) {
            std::string const name = entry.first.Scalar();
            Shape const* const shape = find(shapes, name);
            if (!shape)
                fail(entry.first.Mark(), what + " has no member '" + printable(name) + "'", nearName(shapes, name));
            check(entry.second, "'" + name + "'" + of, shape->kinds);
        }
    }
};

/// The name of ours that an entry of `ports` or `parameters` leads to; empty for null.
std::string ourName(Node const& entry) { return isMap(entry) ? member(entry, "to").Scalar() : entry.Scalar(); }

double factorOf(Node const& entry) {
    std::string const text = member(entry, "factor").Scalar();
    double number = text.empty();
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

void checkParameter(MapFile const& file, Node const& entry, std::string const& what) {
    if (!isMap(entry)) return file.check(entry, what, "ntm");
    file.check(entry, what, " of " + what, {{"to", "t"}, {"factor", "#"}});
    if (factorOf(entry) == 0 || !std::isfinite(factorOf(entry)))
        file.fail(member(entry, "factor").Mark(), "'factor' of " + what + " is 0 or no number");
    if (ourName(entry).empty())
        file.fail(entry.Mark(), what + " has no 'to'", "name the parameter of ours that it sets");
}

/// The names of the ports or parameters of a component. Two names of theirs for one of ours would have no way back.
NameRules readRules(MapFile const& file, Node const& node, bool ports, std::string const& of) {
    NameRules rules;
    for (auto const& entry : node) {
        std::string const name = entry.first.Scalar(), things = ports ? "two ports" : "two settings";
        std::string const what = (ports ? "port '" : "parameter '") + printable(name) + "'" + of;
        ports ? file.check(entry.second, what, "t") : checkParameter(file, entry.second, what);
        std::string const ours = ourName(entry.second);
        if (!ours.empty() && !rules.theirs.emplace(ours, name).second)
            file.fail(entry.second.Mark(), things + of + " lead to '" + printable(ours) + "'");
        rules.ours[name] = {ours, factorOf(entry.second), entry.second.Mark()};
    }
    return rules;
}

void readComponent(MapFile const& file, Node const& node, ComponentRule& rule, bool sameNames) {
    static std::vector<Shape> const shapes{
        {"key", "nt"}, {"sameNames", "b"}, {"ports", "nm"}, {"parameters", "nm"}, {"defaults", "nm"}};
    std::string const name = "'" + printable(rule.component) + "'";
    if (!isString(node) && !isNull(node)) file.check(node, "component " + name, " of " + name, shapes);
    Node const key = isMap(node) ? member(node, "key") : node;  // the short form is the key alone, or null for none yet
    rule.key = key.Scalar();
    if (!isNull(key)) rule.keyMark = key.Mark();
    rule.ports = readRules(file, member(node, "ports"), true, " of " + name);
    rule.parameters = readRules(file, member(node, "parameters"), false, " of " + name);
    rule.defaults.reset(member(node, "defaults"));
    Node const same = member(node, "sameNames");
    rule.ports.sameNames = rule.parameters.sameNames = same.IsDefined() ? same.Scalar() == "true" : sameNames;
}

using Names = std::vector<std::string>;

/// What a netlist uses of one component.
struct Used {
    std::size_t instances = 0;
    std::set<std::string> ports;
    std::map<std::string, Node> settings;  ///< with the first value that is not null
};

std::map<std::string, Used> usedComponents(Document const& document) {
    std::map<std::string, Used> components;
    std::map<std::string, Used*> ofInstance;
    for (Instance const& instance : document.instances) {
        if (!instance.good) continue;
        Used& used = *(ofInstance[instance.name.Scalar()] = &components[componentOf(instance.given).Scalar()]);
        ++used.instances;
        for (auto const& setting : member(instance.given, "settings")) {
            Node& value = used.settings.emplace(setting.first.Scalar(), setting.second).first->second;
            if (isNull(value)) value.reset(setting.second);
        }
    }
    auto const addPort = [&](std::string const& port) {
        auto const comma = port.rfind(',');
        std::string const name = port.substr(0, comma);
        auto found = ofInstance.find(name);
        if (found == ofInstance.end()) found = ofInstance.find(name.substr(0, name.rfind('<')));
        if (found != ofInstance.end()) found->second->ports.insert(port.substr(comma + 1));
    };
    for (Net const& net : document.nets)
        for (Node const& port : net.ports) addPort(port.Scalar());
    for (auto const& outer : document.ports) addPort(outer.second.Scalar());
    return components;
}

/// The words of a name in small letters: "sfEdgeCoupler" and "sf_edge_coupler" have the same.
std::set<std::string> wordsOf(std::string const& name) {
    std::set<std::string> words;
    std::string word;
    for (char const c : name + ' ') {
        bool const large = c >= 'A' && c <= 'Z';
        bool const small = (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
        if (!small && word.size() > 1) words.insert(word);
        if (!small) word.clear();
        if (large || small) word += large ? static_cast<char>(c + 32) : c;
    }
    return words;
}

/// Up to three names that share words with a name, most of them first; without any, those that are spelt alike.
Names proposals(std::string const& name, Names const& known) {
    std::set<std::string> const words = wordsOf(name);
    std::set<std::pair<int, std::string>> shared;
    for (std::string const& candidate : known) {
        int count = 0;
        for (std::string const& word : wordsOf(candidate)) count -= static_cast<int>(words.count(word));
        if (count < 0) shared.emplace(count, candidate);
    }
    Names names;
    for (auto const& entry : shared)
        if (names.size() < 3) names.push_back(entry.second);
    return names.empty() ? nearNames(name, known) : names;
}

std::string yaml(Node const& node) {
    std::string const text = written(node, Format::kYaml);
    return text.substr(0, text.size() - 1);
}

std::string yaml(std::string const& name) { return yaml(stringNode(name)); }

/// A list of names for a comment.
std::string listed(Names const& names) { return printable(listText(names, names.size())); }

bool contains(Names const& names, std::string const& name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

/// Without a near name, the keys of blocks with as many ports are what to choose from.
std::string keysByPorts(Kinds& kinds, std::size_t count) {
    Names fitting;
    for (std::string const& key : factoryKeys<vrl::BB>()) {
        FreshBlock const* const fresh = kinds.fresh("", ComponentRule(key));
        if (fresh && portNames(*fresh->block).size() == count) fitting.push_back(key);
    }
    if (fitting.empty()) return "one of " + listed(factoryKeys<vrl::BB>());
    return "of " + counted(count, "port") + ": " + listed(fitting);
}

/// Ports are taken in order: theirs as they are named, ours as they are declared.
std::string portLines(Used const& used, FreshBlock const* fresh) {
    Names const ours = fresh ? portNames(*fresh->block) : Names();
    bool const same = std::all_of(used.ports.begin(), used.ports.end(),
                                  [&](std::string const& port) { return contains(ours, port); });
    std::string lines = "    ports:" + (fresh ? "  # ours: " + listed(ours) : "") + "\n";
    std::size_t next = 0;
    for (std::string const& port : used.ports) {
        std::string const target = same ? port : next < ours.size() ? ours[next++] : "";
        lines +=
            (target.empty() ? "      # " : "      ") + yaml(port) + ": " + (target.empty() ? "?" : yaml(target)) + '\n';
    }
    return used.ports.empty() ? "" : lines;
}

std::string parameterLines(Used const& used, FreshBlock const* fresh) {
    Names ours;
    if (fresh)
        for (auto const& entry : fresh->parameters) ours.push_back(entry.first);
    std::string lines = "    parameters:" + (fresh ? "  # ours: " + listed(ours) : "") + "\n";
    for (auto const& [name, value] : used.settings) {
        bool const same = contains(ours, name);
        Names const near = same ? Names() : proposals(name, ours);
        lines += "      " + yaml(name) + ": " + (same ? yaml(name) : "null") + "  # such as " +
                 (value.IsMap() || value.IsSequence() ? kindWord(kindOf(value)) : printable(yaml(value))) +
                 (near.empty() ? "" : "; perhaps " + listed(near)) + '\n';
    }
    return used.settings.empty() ? "" : lines;
}

}  // namespace

MappedName NameRules::toOurs(std::string const& name) const {
    auto const found = ours.find(name);
    if (found != ours.end()) return found->second;
    return {sameNames && theirs.count(name) == 0 ? name : ""};
}

MappedName NameRules::toTheirs(std::string const& name) const {
    auto const found = theirs.find(name);
    if (found != theirs.end()) return {found->second, ours.at(found->second).factor};
    return {sameNames && ours.count(name) == 0 ? name : ""};
}

std::string ComponentRule::ourPort(vrl::BB& block, std::string const& name) const {
    std::string const ours = ports.toOurs(name).name;
    return block.getPort(ours) ? ours : "";
}

MappedName ComponentRule::ourParameter(vrl::BB& block, std::string const& name) const {
    MappedName const ours = parameters.toOurs(name);
    return block.find(ours.name) ? ours : MappedName();
}

ComponentRule const* NameMap::find(std::string const& component) const {
    auto const found = components.find(component);
    return found == components.end() ? nullptr : &found->second;
}

ComponentRule const* NameMap::forKey(std::string const& key) const {
    for (auto const& entry : components)
        if (!key.empty() && entry.second.key == key) return &entry.second;
    return nullptr;
}

NameMap readNameMap(std::string const& path) {
    NameMap map;
    map.path = path;
    if (path.empty()) return map;
    MapFile const file{path};
    Node const root = readFile(path);
    file.check(root, "the map", "", {{"foundry", "nt"}, {"sameNames", "b"}, {"components", "m"}});
    Node const components = member(root, "components"), foundry = member(root, "foundry");
    if (!components.IsDefined())
        file.fail(root.Mark(), "has no 'components'", "each component of the netlist has an entry there");
    map.foundry = foundry.Scalar();
    map.foundryMark = foundry.Mark();
    map.sameNames = member(root, "sameNames").Scalar() != "false";
    for (auto const& entry : components) {
        std::string const name = entry.first.Scalar();
        ComponentRule rule(name);
        rule.mark = rule.keyMark = entry.first.Mark();
        readComponent(file, entry.second, rule, map.sameNames);
        map.components.emplace(name, rule);
    }
    return map;
}

std::string mapTemplate(Document const& document) {
    Kinds kinds;
    Names const foundries = factoryKeys<vrl::Foundry>();
    auto const components = usedComponents(document);
    std::string out = "# From the names of " + printable(document.path) +
                      " to ours. What is null has still to be filled in,\n"
                      "# or may stay so: a setting that is null is kept as a note.\n"
                      "# Parameters may convert: {to: length, factor: 1000}.\n"
                      "foundry: " +
                      (foundries.empty() ? "null" : yaml(foundries.front())) +
                      (foundries.size() > 1 ? "  # " + listed(foundries) : "") +
                      (components.empty() ? "\ncomponents: {}\n" : "\ncomponents:\n");
    for (auto const& [name, used] : components) {
        Names const keys = proposals(name, factoryKeys<vrl::BB>());
        FreshBlock const* const fresh = keys.empty() ? nullptr : kinds.fresh("", ComponentRule(keys.front()));
        out += "  " + yaml(name) + ":  # " + counted(used.instances, "instance") +
               "\n    key: " + (fresh ? yaml(keys.front()) : "null");
        if (keys.empty()) out += "  # " + keysByPorts(kinds, used.ports.size());
        if (keys.size() > 1) out += "  # or " + listed({keys.begin() + 1, keys.end()});
        out += '\n' + portLines(used, fresh) + parameterLines(used, fresh);
    }
    return out;
}

}  // namespace vrltool::exchange
