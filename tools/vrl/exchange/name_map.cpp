#include "exchange/name_map.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <regex>

#include "exchange/library.h"
#include "text/failure.h"
#include "text/near_names.h"
#include "text/phrases.h"
#include "text/table.h"

namespace vrltool::exchange {

namespace {

Shapes const kParameter{{"to", "t"}, {"factor", "#"}};
Shapes const kComponent{{"key", "nt"},
                        {"sameNames", "b"},
                        {"ports", "nm", {{"*", "nt"}}},
                        {"parameters", "nm", {{"*", "ntm", kParameter}}},
                        {"defaults", "nm"}};
Shapes const kMap{{"foundry", "nt"}, {"sameNames", "b"}, {"components", "m", {{"*", "ntm", kComponent}}}};

bool isTrue(Node const& node, bool unlessGiven) { return isNull(node) ? unlessGiven : node.text == "true"; }

/// The names of the ports or parameters of a component. Two names of theirs for one of ours would have no way back.
NameRules readRules(std::string const& path, Node const& node, std::string const& things, bool sameNames) {
    NameRules rules;
    rules.sameNames = sameNames;
    for (auto const& entry : node) {
        std::string const name = printable(entry.first.text);
        bool const map = isMap(entry.second);
        Node const to = map ? member(entry.second, "to") : entry.second, factor = member(entry.second, "factor");
        MappedName const ours{to.text, isNull(factor) ? 1 : std::strtod(factor.text.c_str(), nullptr), to.mark};
        if (map && ours.name.empty())
            fail(path, entry.second.mark, "'" + name + "' has no 'to'", "name the parameter of ours that it sets");
        if (ours.factor == 0 || !std::isfinite(ours.factor))
            fail(path, factor.mark, "'factor' of '" + name + "' is 0 or no number");
        if (!ours.name.empty() && !rules.theirs.emplace(ours.name, entry.first.text).second)
            fail(path, to.mark, "two " + things + " lead to '" + printable(ours.name) + "'");
        rules.ours[entry.first.text] = ours;
    }
    return rules;
}

ComponentRule readComponent(std::string const& path, Node const& name, Node const& node, bool sameNames) {
    ComponentRule rule(name.text);
    std::string const of = " of '" + printable(rule.component) + "'";
    rule.mark = name.mark;
    rule.key = isMap(node) ? member(node, "key") : node;  // the short form is the key alone
    bool const same = isTrue(member(node, "sameNames"), sameNames);
    rule.ports = readRules(path, member(node, "ports"), "ports" + of, same);
    rule.parameters = readRules(path, member(node, "parameters"), "settings" + of, same);
    rule.defaults = member(node, "defaults");
    return rule;
}

using Names = std::vector<std::string>;

/// What a netlist uses of one component.
struct Used {
    std::size_t instances = 0;
    std::map<std::string, Node> ports, settings;  ///< settings with the first value that is not null
};

std::map<std::string, Used> usedComponents(Document const& document) {
    std::map<std::string, Used> components;
    std::map<std::string, Used*> ofInstance;
    for (Instance const& instance : document.instances) {
        if (!instance.good) continue;
        Used& used = *(ofInstance[arrayOf(instance.name.text)] = &components[componentOf(instance.given).text]);
        ++used.instances;
        for (auto const& setting : member(instance.given, "settings")) {
            Node& value = used.settings.emplace(setting.first.text, setting.second).first->second;
            if (isNull(value)) value = setting.second;
        }
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

/// Up to three names that have words of a name in them, most of them first; without any, those that are spelt alike.
Names proposals(std::string const& name, Names const& known) {
    static std::regex const word("[A-Za-z][a-z]{2,15}");  // bounded, as its stack is
    std::multimap<int, std::string> shared;
    for (std::string const& candidate : known) {
        int count = 0;
        for (std::sregex_iterator at(name.begin(), name.end(), word), end; at != end; ++at)
            count -= std::regex_search(candidate, std::regex(at->str(), std::regex::icase));
        if (count < 0) shared.emplace(count, candidate);
    }
    Names names;
    for (auto const& entry : shared)
        if (names.size() < 3) names.push_back(entry.second);
    return names.empty() ? nearNames(name, known) : names;
}

std::string yaml(Node const& node) { return written(node, Format::kYaml); }

/// A list of names for a comment.
std::string listed(Names const& names) { return printable(listText(names, names.size())); }

/// The rules to begin with for ports or settings, with examples of the values of settings. Ports that are not called
/// as ours are taken in order: theirs as they are named, ours as they are declared.
std::string ruleLines(bool ports, std::map<std::string, Node> const& used, Names const& ours) {
    std::string lines = std::string(ports ? "    ports:" : "    parameters:") +
                        (ours.empty() ? "" : "  # ours: " + listed(ours)) + '\n';
    auto const known = [&](auto const& entry) {
        return std::find(ours.begin(), ours.end(), entry.first) != ours.end();
    };
    bool const allKnown = std::all_of(used.begin(), used.end(), known);
    std::size_t next = 0;
    for (auto const& entry : used) {
        std::string const name = yaml(stringNode(entry.first));
        bool const same = ports ? allKnown : known(entry), inOrder = ports && !same && next < ours.size();
        lines += "      " + name + ": " + (same ? name : inOrder ? yaml(stringNode(ours[next++])) : "null");
        Names const near = ports || same ? Names() : proposals(entry.first, ours);
        if (!ports)
            lines += "  # such as " +
                     (entry.second.kind < Kind::kList ? printable(yaml(entry.second)) : kindWord(entry.second.kind));
        lines += (near.empty() ? "" : "; perhaps " + listed(near)) + '\n';
    }
    return used.empty() ? "" : lines;
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
        if (!key.empty() && entry.second.key.text == key) return &entry.second;
    return nullptr;
}

NameMap readNameMap(std::string const& path) {
    NameMap map;
    map.path = path;
    if (path.empty()) return map;
    Node const root = readFile(path), components = member(root, "components");
    if (!isMap(root)) fail(path, root.mark, wrongKind("the map", root, "a map"));
    for (Misfit const& misfit : misfits(root, "the map", kMap)) fail(path, misfit.mark, misfit.text, misfit.hint);
    if (!components.isDefined())
        fail(path, root.mark, "has no 'components'", "each component of the netlist has an entry there");
    map.foundry = member(root, "foundry");
    map.sameNames = isTrue(member(root, "sameNames"), true);
    for (auto const& entry : components)
        map.components.emplace(entry.first.text, readComponent(path, entry.first, entry.second, map.sameNames));
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
                      (foundries.empty() ? "null" : yaml(stringNode(foundries.front()))) +
                      (foundries.size() > 1 ? "  # " + listed(foundries) : "") +
                      (components.empty() ? "\ncomponents: {}\n" : "\ncomponents:\n");
    for (auto const& [name, used] : components) {
        Names const keys = proposals(name, factoryKeys<vrl::BB>());
        FreshBlock const* const fresh = keys.empty() ? nullptr : kinds.fresh("", ComponentRule(keys.front()));
        out += "  " + yaml(stringNode(name)) + ":  # " + counted(used.instances, "instance") +
               "\n    key: " + (fresh ? yaml(stringNode(keys.front())) : "null");
        if (keys.empty()) out += "  # one of " + listed(factoryKeys<vrl::BB>());
        if (keys.size() > 1) out += "  # or " + listed({keys.begin() + 1, keys.end()});
        out += '\n' + ruleLines(true, used.ports, fresh ? portNames(*fresh->block) : Names()) +
               ruleLines(false, used.settings, fresh ? fresh->parameterNames() : Names());
    }
    return out;
}

}  // namespace vrltool::exchange
