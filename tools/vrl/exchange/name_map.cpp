#include "exchange/name_map.h"

#include <algorithm>
#include <cmath>
#include <set>

#include "exchange/installed_maps.h"
#include "exchange/library.h"
#include "exchange/map_checks.h"
#include "text/failure.h"
#include "text/near_names.h"
#include "text/phrases.h"
#include "text/table.h"

namespace vrltool::exchange {

namespace {

Shapes const kParameter{{"to", "t"}, {"factor", "#"}};
Shapes const kPort{{"skip", "b"}, {"same", "t"}};
Shapes const kSection{{"crossSection", "t"}, {"flow", "t"}};
Shapes const kSections{{"*", "ntm", kSection}};
Shapes const kInside{{"component", "t"}, {"settings", "nm"}, {"info", "nm"}};
Shapes const kComposite{{"instances", "m", {{"*", "tm", kInside}}}, {"nets", "nl", {{"*", "l"}}}};
Shapes const kComponent{{"when", "m"},
                        {"key", "nt"},
                        {"preferred", "b"},
                        {"skip", "b"},
                        {"through", "l", {{"*", "l", {{"*", "t"}}}}},
                        {"composite", "m", kComposite},
                        {"foundry", "nt"},
                        {"sameNames", "b"},
                        {"ports", "nm", {{"*", "ntm", kPort}}},
                        {"parameters", "nm", {{"*", "ntml"}}},
                        {"info", "nm", {{"*", "ntm", kParameter}}},
                        {"crossSections", "nm", kSections},
                        {"defaults", "nm"}};
Shapes const kMap{
    {"foundry", "nt"}, {"sameNames", "b"}, {"crossSections", "nm", kSections}, {"components", "m", {{"*", "ntlm"}}}};

bool isTrue(Node const& node, bool unlessGiven) { return isNull(node) ? unlessGiven : node.text == "true"; }

void checkShape(std::string const& path, Node const& node, std::string const& what, Shapes const& shapes) {
    for (Misfit const& misfit : misfits(node, what, shapes)) fail(path, misfit.mark, misfit.text, misfit.hint);
}

/// The settings of a composite: each has the place of one, or a list of them.
void readInsideSettings(Node const& node, ComponentRule& rule) {
    auto const add = [&](std::string const& theirs, Node const& target) {
        auto const [instance, name] = insidePlace(target);
        rule.insideSettings[instance].push_back({theirs, name});
    };
    for (auto const& [theirs, target] : node) {
        if (isString(target)) add(theirs.text, target);
        for (auto const& one : listOf(target)) add(theirs.text, one.second);
        rule.parameters.ours[theirs.text];
    }
}

/// The names of the ports or parameters of a component. Two names of theirs for one of ours would have no way back.
NameRules readRules(std::string const& path, Node const& node, std::string const& things, bool sameNames) {
    NameRules rules;
    rules.sameNames = sameNames;
    for (auto const& entry : node) {
        std::string const name = printable(entry.first.text);
        bool const map = isMap(entry.second), skipped = isTrue(member(entry.second, "skip"), false);
        Node const to = map ? member(entry.second, "to") : entry.second, factor = member(entry.second, "factor");
        Node const same = member(entry.second, "same");
        double const times = isNull(factor) ? 1 : numberOf(factor).value_or(0);
        MappedName const ours{to.text, times, isNull(same) ? to.mark : same.mark, skipped, same.text};
        if (map && ours.name.empty() && ours.same.empty() && !skipped)
            fail(path, entry.second.mark, "'" + name + "' has no 'to'", "name the parameter of ours that it sets");
        if (ours.factor == 0 || !std::isfinite(ours.factor))
            fail(path, factor.mark, "'factor' of '" + name + "' is 0 or no number");
        if (!ours.name.empty() && !rules.theirs.emplace(ours.name, entry.first.text).second)
            fail(path, to.mark, "two " + things + " lead to '" + printable(ours.name) + "'");
        rules.ours[entry.first.text] = ours;
    }
    return rules;
}

SectionRules readSections(Node const& node, SectionRules sections) {
    for (auto const& [theirs, ours] : node) sections[theirs.text] = ours;
    return sections;
}

/// Takes the ports that are connected inside of an instance, which were checked.
void joinPorts(Node const& through, ComponentRule& rule) {
    for (auto const& [none, group] : listOf(through))
        for (auto const& port : group)
            if (port.second.text != group.begin()->second.text)
                rule.joined.emplace(port.second.text, group.begin()->second.text);
    for (auto const& [theirs, ours] : rule.ports.ours)
        if (!ours.same.empty()) rule.joined.emplace(theirs, ours.same);
}

ComponentRule readRule(NameMap const& map, Node const& name, Node const& node, SectionRules const& sections) {
    ComponentRule rule(name.text);
    std::string const of = " of '" + printable(rule.component) + "'", &path = map.path;
    checkShape(path, node, inQuotes(printable(name.text)), kComponent);
    rule.mark = isMap(node) ? node.mark : name.mark;
    rule.when = member(node, "when");
    rule.key = isMap(node) ? member(node, "key") : node;  // the short form is the key alone
    rule.preferred = isTrue(member(node, "preferred"), false);
    rule.skipped = isTrue(member(node, "skip"), false);
    rule.composite = member(node, "composite");
    rule.foundry = member(node, "foundry");
    bool const same = isTrue(member(node, "sameNames"), map.sameNames);
    rule.ports = readRules(path, member(node, "ports"), "ports" + of, same);
    Node const parameters = member(node, "parameters");
    if (isMap(rule.composite)) {
        readInsideSettings(parameters, rule);
    } else {
        checkShape(path, parameters, "'parameters'", {{"*", "ntm", kParameter}});
        rule.parameters = readRules(path, parameters, "settings" + of, same);
    }
    rule.info = readRules(path, member(node, "info"), "members of 'info'" + of, false);
    rule.sections = readSections(member(node, "crossSections"), sections);
    rule.defaults = member(node, "defaults");
    checkRule(path, node, rule);
    joinPorts(member(node, "through"), rule);
    return rule;
}

/// The rules for a component: one, or a list, of which the first that fits is for an instance.
std::vector<ComponentRule> readComponent(NameMap const& map, Node const& name, Node const& node,
                                         SectionRules const& sections) {
    std::vector<ComponentRule> rules;
    if (!isList(node)) return {readRule(map, name, node, sections)};
    for (auto const& part : node) {
        if (!isMap(part.second))
            fail(map.path, part.second.mark,
                 wrongKind("a rule of " + inQuotes(printable(name.text)), part.second, "a map"));
        if (!rules.empty() && isNull(rules.back().when))
            fail(map.path, part.second.mark, "this rule of " + inQuotes(printable(name.text)) + " is for no instance",
                 "the rule before it has no 'when' and is for all");
        rules.push_back(readRule(map, name, part.second, sections));
        rules.back().variant = rules.size() - 1;
    }
    return rules;
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

bool ComponentRule::fits(Node const& settings) const {
    return std::all_of(when.begin(), when.end(), [&](Node::Part const& wanted) {
        std::string const given = written(member(settings, wanted.first.text), Format::kLine);
        auto const isGiven = [&](Node::Part const& one) { return written(one.second, Format::kLine) == given; };
        if (!isList(wanted.second)) return isGiven(wanted);
        return std::any_of(wanted.second.begin(), wanted.second.end(), isGiven);
    });
}

Node ComponentRule::section(Node const& settings) const {
    Node const& given = member(settings, kSectionSetting);
    auto const found = isString(given) ? sections.find(given.text) : sections.end();
    return found == sections.end() ? Node() : found->second;
}

std::string ComponentRule::firstJoined(std::string const& port) const {
    auto const found = joined.find(port);
    return found == joined.end() ? port : found->second;
}

ComponentRule const* NameMap::find(std::string const& component, Node const& settings) const {
    auto const found = components.find(component);
    if (found == components.end()) return nullptr;
    for (ComponentRule const& rule : found->second)
        if (rule.fits(settings)) return &rule;
    return nullptr;
}

std::vector<ComponentRule const*> NameMap::forKey(std::string const& key) const {
    std::vector<ComponentRule const*> all, preferred;
    for (auto const& entry : components)
        for (ComponentRule const& rule : entry.second) {
            if (key.empty() || !isNull(rule.when) || rule.key.text != key) continue;
            all.push_back(&rule);
            if (rule.preferred) preferred.push_back(&rule);
        }
    return preferred.empty() ? all : preferred;
}

NameMap readNameMap(std::string const& name) {
    NameMap map;
    map.name = name;
    std::string const path = map.path = pathOfMap(name);
    if (path.empty()) return map;
    Node const root = readFile(path), components = member(root, "components");
    if (!isMap(root)) fail(path, root.mark, wrongKind("the map", root, "a map"));
    checkShape(path, root, "the map", kMap);
    map.foundry = member(root, "foundry");
    map.sameNames = isTrue(member(root, "sameNames"), true);
    if (!components.isDefined() && !map.sameNames)
        fail(path, root.mark, "has no 'components'", "each component of the netlist has an entry there");
    SectionRules const sections = readSections(member(root, "crossSections"), {});
    for (auto const& entry : components)
        map.components.emplace(entry.first.text, readComponent(map, entry.first, entry.second, sections));
    checkComposites(map);
    return map;
}

}  // namespace vrltool::exchange
