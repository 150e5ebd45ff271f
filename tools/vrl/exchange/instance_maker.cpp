#include "exchange/instance_maker.h"

#include <algorithm>
#include <utility>

#include "design/stand_in.h"
#include "exchange/block_state.h"
#include "exchange/from_netlist.h"
#include "exchange/notes.h"
#include "exchange/values.h"
#include "text/table.h"

namespace vrltool::exchange {

namespace {

/// The value that a parameter has before any setting: that of its kind, or the default of the rule.
ParameterValue valueBefore(Parameter const& plain, ComponentRule const& rule) {
    Tree const* const given = rule.defaults.find(plain.name);
    TakenValue const taken = given ? takeValue(plain, *given) : TakenValue();
    return taken.good ? taken.value : toldValue(plain);
}

void addUnlessEmpty(Tree& tree, char const* name, Tree const& map) {
    if (!map.members.empty()) tree.add(name, map);
}

}  // namespace

InstanceMaker::InstanceMaker(std::string const& file, NameMap const& names, Workshop& shop, Findings& found)
    : path(file), map(names), workshop(shop), findings(found) {}

ComponentRule const& InstanceMaker::ruleFor(Element const& element) {
    std::string const origin = notes::get(*element.block, notes::kComponent).text;
    ComponentRule const* const own = map.find(origin);
    if (own && own->key == element.kind) return *own;
    if (ComponentRule const* const first = map.forKey(element.kind)) return *first;
    if (!map.path.empty()) unmapped.insert(element.kind);
    return sameNames.try_emplace(element.kind, sameNamesRule(element.kind)).first->second;
}

std::string InstanceMaker::portName(Element const& element, ElementPort const& pin) {
    std::string const theirs = pin.declared ? theirPort(ruleFor(element), pin.name) : pin.name;
    return theirs.empty() ? pin.name : theirs;
}

Instance InstanceMaker::make(Element const& element, std::string const& name) {
    vrl::BB& block = *element.block;
    ComponentRule const& rule = ruleFor(element);
    bool const standIn = isStandIn(block);
    FreshBlock const* const fresh = standIn ? nullptr : workshop.fresh(element.foundry, element.kind);
    Instance instance;
    instance.name = name;
    instance.component = rule.component;
    instance.info = notes::get(block, notes::kInfo);
    instance.placement = notes::get(block, notes::kPlacement);
    Tree const others = notes::get(block, notes::kMembers);
    if (others.isMap()) instance.others = others;
    addStateBeside(instance, element, rule, fresh);
    if (!standIn && fresh && dynamic_cast<vrl::CBB*>(&block)) {
        ++composites[element.kind];
        compareInside(element, *fresh);
    }
    return instance;
}

void InstanceMaker::addStateBeside(Instance& instance, Element const& element, ComponentRule const& rule,
                                   FreshBlock const* fresh) {
    vrl::BB& block = *element.block;
    Tree& extension = instance.extension;
    Tree const component = notes::get(block, notes::kComponent);
    Tree const before = notes::get(block, notes::kSettings);
    bool const back = component.text == rule.component;
    if (element.foundry != map.foundry) extension.add("foundry", Tree::ofText(element.foundry));
    Settings parts = settingsOf(block, rule, fresh, back && before.isMap() ? before : Tree());
    instance.settings = std::move(parts.settings);
    addUnlessEmpty(extension, "values", parts.values);
    Tree undeclared = Tree::list();
    for (ElementPort const& pin : element.ports)
        if (!pin.declared) undeclared.items.push_back(Tree::ofText(pin.name));
    if (!undeclared.items.empty()) extension.add("undeclaredPorts", undeclared);
    Tree const state = stateOf(block, fresh, path + ": element '" + element.label() + "'", findings);
    for (Tree::Member const& member : state.members) extension.members.push_back(member);
    if (back || component.isNull()) return;
    Tree& origin = extension.add("origin", Tree::map());
    origin.add("component", component);
    if (!before.isNull()) origin.add("settings", before);
}

/// What the settings were before an import, as far as they still say what the block has. `told` gets the parameters of
/// which nothing more is to be said.
void InstanceMaker::keepBefore(Settings& result, vrl::BB& block, ComponentRule const& rule, FreshBlock const* fresh,
                               Tree const& before, std::set<std::string>& told) {
    for (Tree::Member const& setting : before.members) {
        MappedName const target = ourParameter(rule, block, setting.name);
        if (target.name.empty()) {
            result.settings.add(setting.name, setting.value);
            continue;
        }
        Parameter const now = parameterOf(*block.getAttribute(target.name));
        auto const plain = fresh ? fresh->parameters.find(target.name) : decltype(fresh->parameters.end())();
        bool const known = fresh && plain != fresh->parameters.end();
        TakenValue const taken = takeValue(now, setting.value, target.factor);
        bool const same = taken.good ? sameValue(taken.value, toldValue(now))
                                     : known && sameValue(valueBefore(plain->second, rule), toldValue(now));
        Tree const value = same ? setting.value : treeOfValue(now, target.factor);
        result.settings.add(setting.name, value);
        TakenValue const read = takeValue(now, value, target.factor);
        if (same || (read.good && sameValue(read.value, toldValue(now)))) told.insert(target.name);
    }
}

InstanceMaker::Settings InstanceMaker::settingsOf(vrl::BB& block, ComponentRule const& rule, FreshBlock const* fresh,
                                                  Tree const& before) const {
    Settings result;
    std::set<std::string> told;
    keepBefore(result, block, rule, fresh, before, told);
    for (Parameter const& parameter : parametersOf(block)) {
        auto const plain = fresh ? fresh->parameters.find(parameter.name) : decltype(fresh->parameters.end())();
        bool const declared = fresh && plain != fresh->parameters.end();
        if (told.count(parameter.name) || (fresh && !declared)) continue;
        bool const plainValue = declared && sameValue(valueBefore(plain->second, rule), toldValue(parameter));
        if (before.isMap() && plainValue) continue;
        MappedName const theirs = theirSetting(rule, parameter.name);
        bool const free = !theirs.name.empty() && !result.settings.find(theirs.name);
        if (free) {
            Tree const value = treeOfValue(parameter, theirs.factor);
            result.settings.add(theirs.name, value);
            TakenValue const read = takeValue(parameter, value, theirs.factor);
            if (read.good && sameValue(read.value, toldValue(parameter))) continue;
        }
        if (!plainValue) result.values.add(parameter.name, treeOfValue(parameter));
    }
    return result;
}

/// The inside of a composite comes with its kind; what was changed in there has no place in a netlist.
void InstanceMaker::compareInside(Element const& element, FreshBlock const& fresh) {
    NameMap const none;
    Findings aside;
    auto const text = [&](vrl::BB& block) {
        vrl::Netlist& inside = *dynamic_cast<vrl::CBB&>(block).getAsNetlist();
        Document document = documentFrom(inside, path, none, workshop, aside);
        document.extension.members.erase(
            std::remove_if(document.extension.members.begin(), document.extension.members.end(),
                           [](Tree::Member const& m) { return m.name == "parameters" || m.name == "notes"; }),
            document.extension.members.end());
        return treeFrom(document);
    };
    if (text(*element.block) != text(*fresh.block))
        findings.warning(path, {},
                         "the inside of '" + element.label() + "' (" + element.kind +
                             ") is not as its kind makes it; a netlist holds nothing of that");
}

void InstanceMaker::tellKinds() {
    for (auto const& entry : composites)
        findings.note(path, {},
                      counted(entry.second, "composite") + " of kind '" + entry.first + "': exported as " +
                          (entry.second == 1 ? "one instance" : "one instance each") +
                          "; the inside belongs to the kind");
    for (std::string const& kind : unmapped)
        findings.warning(path, {}, "kind '" + kind + "' has no component in " + map.path + "; it keeps its own names");
}

}  // namespace vrltool::exchange
