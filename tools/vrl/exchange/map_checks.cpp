#include "exchange/map_checks.h"

#include <algorithm>
#include <initializer_list>
#include <set>
#include <vector>

#include "text/near_names.h"
#include "text/phrases.h"
#include "text/table.h"

namespace vrltool::exchange {

namespace {

using Rules = std::vector<ComponentRule>;

std::vector<std::string> namesIn(Node const& map) {
    std::vector<std::string> names;
    for (auto const& entry : map) names.push_back(entry.first.text);
    return names;
}

/// The instance of a composite that a port or a setting of its rule names.
void checkPart(std::string const& path, ComponentRule const& rule, Node const& node) {
    Node const instances = member(rule.composite, "instances");
    std::string const in = " in the composite " + inQuotes(printable(rule.component));
    if (!isString(node) || node.text.find(',') == std::string::npos)
        fail(path, node.mark,
             "a port" + in + " is " + (isString(node) ? inQuotes(printable(node.text)) : kindWord(node.kind)) +
                 ", where \"instance,port\" belongs");
    std::string const part = insidePlace(node).first;
    if (!member(instances, part).isDefined())
        fail(path, node.mark, "there is no instance " + inQuotes(printable(part)) + in,
             didYouMean(part, namesIn(instances)));
}

/// Fails for a composite that names an instance that it has not, or that has none.
void checkParts(std::string const& path, Node const& given, ComponentRule const& rule) {
    std::string const name = inQuotes(printable(rule.component));
    if (member(rule.composite, "instances").size() == 0)
        fail(path, rule.composite.mark, "the composite " + name + " has no 'instances'");
    for (auto const& [instance, inside] : member(rule.composite, "instances"))
        if (!isString(componentOf(inside)))
            fail(path, inside.mark,
                 "the instance " + inQuotes(printable(instance.text)) + " of " + name + " names no component");
    for (auto const& net : listOf(member(rule.composite, "nets"))) {
        if (net.second.size() < 2)
            fail(path, net.second.mark, "a net of the composite " + name + " has less than two ports");
        for (auto const& port : net.second) checkPart(path, rule, port.second);
    }
    for (auto const& [theirs, target] : member(given, "ports")) {
        if (isString(target)) checkPart(path, rule, target);
        if (isString(member(target, "same")))
            fail(path, target.mark,
                 "the port " + inQuotes(printable(theirs.text)) + " of the composite " + name + " has 'same'",
                 "'same' belongs to the rules for its instances");
    }
    for (auto const& [theirs, target] : member(given, "parameters")) {
        if (isString(target)) checkPart(path, rule, target);
        if (isMap(target))
            fail(path, target.mark, "a setting of the composite " + name + " has a factor",
                 "factors belong to the rules for its instances");
        for (auto const& one : listOf(target)) checkPart(path, rule, one.second);
    }
}

/// Fails for ports that are connected with each other in more than one way, or with none that leads anywhere.
void checkJoined(std::string const& path, Node const& given, ComponentRule const& rule) {
    std::string const name = inQuotes(printable(rule.component));
    Node const through = member(given, "through");
    if (!rule.skipped && isList(through))
        fail(path, through.mark, name + " is not skipped and has 'through'",
             "ports of others are connected with 'same'");
    std::set<std::string> seen;
    for (auto const& group : listOf(through))
        for (auto const& port : group.second)
            if (!seen.insert(port.second.text).second)
                fail(path, port.second.mark,
                     "'through' of " + name + " has '" + printable(port.second.text) + "' twice");
    std::vector<std::string> leading;
    for (auto const& port : rule.ports.theirs) leading.push_back(port.second);
    for (auto const& [theirs, ours] : rule.ports.ours) {
        if (ours.same.empty()) continue;
        auto const other = rule.ports.ours.find(ours.same);
        std::string const what = inQuotes(printable(theirs)) + " of " + name;
        if (ours.skipped || !ours.name.empty()) fail(path, ours.mark, what + " has 'same' and more", "remove the rest");
        if (other == rule.ports.ours.end() ? !rule.ports.sameNames : other->second.name.empty())
            fail(path, ours.mark,
                 what + " is the same as '" + printable(ours.same) + "', which leads to no port of ours",
                 didYouMean(ours.same, leading));
    }
}

/// Whether a rule for an instance says something of a port.
bool knowsPort(ComponentRule const& rule, std::string const& port) {
    return rule.skipped || rule.ports.ours.count(port) > 0 || !rule.ports.toOurs(port).name.empty();
}

bool knowsSetting(ComponentRule const& rule, std::string const& setting) {
    return rule.skipped || setting == kSectionSetting || rule.parameters.ours.count(setting) > 0 ||
           member(rule.when, setting).isDefined() || !rule.parameters.toOurs(setting).name.empty();
}

/// What a rule for an instance has names for.
std::vector<std::string> knownNames(Rules const& rules, NameRules const ComponentRule::*names) {
    std::vector<std::string> known;
    for (ComponentRule const& rule : rules)
        for (auto const& entry : (rule.*names).ours) known.push_back(entry.first);
    return known;
}

/// Fails for what a composite names and what no rule for the component of its instance knows.
void checkTargets(NameMap const& map, ComponentRule const& rule) {
    auto const check = [&](std::string const& instance, Node const& name, char const* thing, auto const& knows,
                           NameRules const ComponentRule::*names) {
        std::string const component = componentOf(member(member(rule.composite, "instances"), instance)).text;
        auto const found = map.components.find(component);
        if (found == map.components.end()) return;
        Rules const& rules = found->second;
        if (std::none_of(rules.begin(), rules.end(), [&](auto const& one) { return knows(one, name.text); }))
            fail(map.path, name.mark,
                 "'" + printable(component) + "' has no " + thing + " '" + printable(name.text) + "' in the map",
                 didYouMean(name.text, knownNames(rules, names)));
    };
    auto const checkPort = [&](Node const& port) {
        auto const [instance, name] = insidePlace(port);
        check(instance, name, "port", knowsPort, &ComponentRule::ports);
    };
    for (auto const& net : listOf(member(rule.composite, "nets")))
        for (auto const& port : net.second) checkPort(port.second);
    for (auto const& [theirs, inside] : rule.ports.ours)
        if (!inside.name.empty()) checkPort(stringNode(inside.name, inside.mark));
    for (auto const& [instance, settings] : rule.insideSettings)
        for (InsideSetting const& setting : settings)
            check(instance, setting.name, "setting", knowsSetting, &ComponentRule::parameters);
}

/// An instance of a composite is one block: what is expanded is not looked at again.
void checkNotNested(NameMap const& map, ComponentRule const& rule) {
    for (auto const& [instance, given] : member(rule.composite, "instances")) {
        auto const found = map.components.find(componentOf(given).text);
        if (found == map.components.end()) continue;
        Rules const& rules = found->second;
        if (std::all_of(rules.begin(), rules.end(), [](auto const& one) { return isMap(one.composite); }))
            fail(map.path, instance.mark,
                 "the instance " + inQuotes(printable(instance.text)) + " of the composite " +
                     inQuotes(printable(rule.component)) + " is a composite itself",
                 "name the instances inside of that one in its place");
    }
}

}  // namespace

std::pair<std::string, Node> insidePlace(Node const& node) {
    auto const comma = node.text.rfind(',');
    return {node.text.substr(0, comma), stringNode(node.text.substr(comma + 1), node.mark)};
}

void checkRule(std::string const& path, Node const& given, ComponentRule const& rule) {
    std::string const name = inQuotes(printable(rule.component));
    auto const refuse = [&](std::string const& what, std::initializer_list<char const*> idle) {
        for (char const* const word : idle)
            if (!isNull(member(given, word)))
                fail(path, member(given, word).mark, name + " is " + what + " and has '" + word + "'",
                     "remove one of them");
    };
    if (rule.skipped)
        refuse("skipped", {"key", "composite", "foundry", "ports", "parameters", "info", "crossSections", "defaults"});
    if (isMap(rule.composite)) {
        refuse("a composite", {"key", "foundry", "info", "crossSections", "defaults"});
        checkParts(path, given, rule);
    }
    checkJoined(path, given, rule);
}

void checkComposites(NameMap const& map) {
    for (auto const& [component, rules] : map.components)
        for (ComponentRule const& rule : rules) {
            if (!isMap(rule.composite)) continue;
            checkNotNested(map, rule);
            checkTargets(map, rule);
        }
}

}  // namespace vrltool::exchange
