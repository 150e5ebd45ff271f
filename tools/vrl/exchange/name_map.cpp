#include "exchange/name_map.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <functional>
#include <set>
#include <utility>

#include "exchange/reader.h"
#include "text/failure.h"
#include "text/near_names.h"
#include "text/table.h"

namespace vrltool::exchange {

namespace {

template <class Rule>
Rule const* findRule(std::vector<Rule> const& rules, std::string Rule::*member, std::string const& name) {
    auto const found = std::find_if(rules.begin(), rules.end(), [&](Rule const& r) { return r.*member == name; });
    return found == rules.end() || name.empty() ? nullptr : &*found;
}

class MapReader {
public:
    explicit MapReader(std::string const& path) { map.path = path; }

    NameMap read() {
        Tree const tree = readTree(map.path);
        each(tree, "the map",
             {{"foundry",
               [&](Tree const& value) {
                   map.foundry = value.isNull() ? "" : text(value, "'foundry'");
                   map.foundryMark = value.mark;
               }},
              {"sameNames", [&](Tree const& value) { map.sameNames = truth(value, "'sameNames'"); }},
              {"components", [&](Tree const& value) { components = &value; }}});
        if (!components) fail(tree.mark, "has no 'components'", "each component of the netlist has an entry there");
        check(*components, components->isMap(), "'components'", "a map");
        for (Tree::Member const& member : components->members) readComponent(member);
        std::sort(map.components.begin(), map.components.end(),
                  [](auto const& a, auto const& b) { return a.component < b.component; });
        return std::move(map);
    }

private:
    using Take = std::function<void(Tree const&)>;

    [[noreturn]] void fail(Mark const& mark, std::string const& what, std::string const& cure = "") const {
        throw Failure(placeText(map.path, mark), what, cure);
    }

    void check(Tree const& tree, bool good, std::string const& what, std::string const& wanted) const {
        if (!good) fail(tree.mark, what + " is " + kindWord(tree) + ", where " + wanted + " belongs");
    }

    std::string text(Tree const& tree, std::string const& what) const {
        check(tree, tree.isText() && !tree.text.empty(), what, "a text");
        return tree.text;
    }

    bool truth(Tree const& tree, std::string const& what) const {
        check(tree, tree.kind == Tree::Kind::kBool, what, "true or false");
        return tree.text == "true";
    }

    /// Hands each member to the one that takes it.
    void each(Tree const& tree, std::string const& what,
              std::vector<std::pair<std::string, Take>> const& takers) const {
        check(tree, tree.isMap(), what, "a map");
        for (Tree::Member const& member : tree.members) {
            auto const taker = std::find_if(takers.begin(), takers.end(),
                                            [&](auto const& entry) { return entry.first == member.name; });
            if (taker != takers.end()) {
                taker->second(member.value);
                continue;
            }
            std::vector<std::string> names;
            for (auto const& entry : takers) names.push_back(entry.first);
            fail(member.mark, what + " has no member '" + printable(member.name) + "'", didYouMean(member.name, names));
        }
    }

    void readComponent(Tree::Member const& member) {
        ComponentRule rule;
        rule.component = member.name;
        rule.mark = rule.keyMark = member.mark;
        rule.sameNames = map.sameNames;
        std::string const name = "'" + printable(member.name) + "'";
        if (member.value.isText()) {  // the short form
            rule.key = member.value.text;
            rule.keyMark = member.value.mark;
        } else if (!member.value.isNull()) {  // null: known, and without a key
            readParts(member.value, rule, name);
        }
        refuseTwice(rule, name);
        map.components.push_back(std::move(rule));
    }

    void readParts(Tree const& tree, ComponentRule& rule, std::string const& name) const {
        each(tree, "component " + name,
             {{"key",
               [&](Tree const& value) {
                   rule.key = value.isNull() ? "" : text(value, "'key' of " + name);
                   rule.keyMark = value.mark;
               }},
              {"sameNames", [&](Tree const& value) { rule.sameNames = truth(value, "'sameNames' of " + name); }},
              {"ports", [&](Tree const& value) { readPorts(value, rule, name); }},
              {"parameters", [&](Tree const& value) { readParameters(value, rule, name); }},
              {"defaults", [&](Tree const& value) {
                   check(value, value.isMap() || value.isNull(), "'defaults' of " + name, "a map");
                   rule.defaults.members = value.members;
               }}});
    }

    void readPorts(Tree const& tree, ComponentRule& rule, std::string const& name) const {
        check(tree, tree.isMap() || tree.isNull(), "'ports' of " + name, "a map");
        for (Tree::Member const& member : tree.members)
            rule.ports.push_back({member.name, text(member.value, "port '" + printable(member.name) + "' of " + name),
                                  member.value.mark});
    }

    void readParameters(Tree const& tree, ComponentRule& rule, std::string const& name) const {
        check(tree, tree.isMap() || tree.isNull(), "'parameters' of " + name, "a map");
        for (Tree::Member const& member : tree.members) {
            ParameterRule parameter;
            parameter.theirs = member.name;
            parameter.mark = member.value.mark;
            readParameter(member.value, parameter, "parameter '" + printable(member.name) + "' of " + name);
            rule.parameters.push_back(std::move(parameter));
        }
    }

    void readParameter(Tree const& tree, ParameterRule& rule, std::string const& what) const {
        if (tree.isNull()) return;  // known, and without a parameter
        if (tree.isText()) {
            rule.ours = text(tree, what);
            return;
        }
        each(tree, what,
             {{"to", [&](Tree const& value) { rule.ours = text(value, "'to' of " + what); }},
              {"factor", [&](Tree const& value) { rule.factor = factor(value, "'factor' of " + what); }}});
        if (rule.ours.empty()) fail(tree.mark, what + " has no 'to'", "name the parameter of ours that it sets");
    }

    double factor(Tree const& tree, std::string const& what) const {
        check(tree, tree.isNumber(), what, "a number");
        double number = 0;
        std::from_chars(tree.text.data(), tree.text.data() + tree.text.size(), number);
        if (number == 0 || !std::isfinite(number)) fail(tree.mark, what + " is 0 or no number");
        return number;
    }

    /// Two names of theirs for one of ours would have no way back.
    void refuseTwice(ComponentRule const& rule, std::string const& name) const {
        std::set<std::string> taken;
        for (PortRule const& port : rule.ports)
            if (!taken.insert(port.ours).second)
                fail(port.mark, "two ports of " + name + " lead to '" + printable(port.ours) + "'");
        taken.clear();
        for (ParameterRule const& parameter : rule.parameters)
            if (!parameter.ours.empty() && !taken.insert(parameter.ours).second)
                fail(parameter.mark, "two settings of " + name + " lead to '" + printable(parameter.ours) + "'");
    }

    NameMap map;
    Tree const* components = nullptr;
};

}  // namespace

PortRule const* ComponentRule::portOfTheirs(std::string const& name) const {
    return findRule(ports, &PortRule::theirs, name);
}
PortRule const* ComponentRule::portOfOurs(std::string const& name) const {
    return findRule(ports, &PortRule::ours, name);
}
ParameterRule const* ComponentRule::parameterOfTheirs(std::string const& name) const {
    return findRule(parameters, &ParameterRule::theirs, name);
}
ParameterRule const* ComponentRule::parameterOfOurs(std::string const& name) const {
    return findRule(parameters, &ParameterRule::ours, name);
}

ComponentRule const* NameMap::find(std::string const& component) const {
    auto const found = std::lower_bound(components.begin(), components.end(), component,
                                        [](auto const& rule, auto const& name) { return rule.component < name; });
    return found != components.end() && found->component == component ? &*found : nullptr;
}

ComponentRule const* NameMap::forKey(std::string const& key) const {
    return findRule(components, &ComponentRule::key, key);
}

NameMap readNameMap(std::string const& path) { return MapReader(path).read(); }

}  // namespace vrltool::exchange
