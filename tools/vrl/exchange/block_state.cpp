#include "exchange/block_state.h"

#include <algorithm>
#include <functional>
#include <map>
#include <utility>

#include "exchange/notes.h"
#include "exchange/values.h"

namespace vrltool::exchange {

namespace {

using Choice = vrl::Foundry::CSInfo;

bool isEmpty(Tree const& map) { return map.members.empty(); }

void addUnlessEmpty(Tree& tree, char const* name, Tree map) {
    if (!isEmpty(map) || !map.items.empty()) tree.add(name, std::move(map));
}

void addChoice(Tree& tree, Choice const& choice) {
    tree.add("crossSection", Tree::ofText(choice.getCSName()));
    tree.add("flow", Tree::ofText(choice.getFlowName()));
}

Tree portChoices(vrl::BB& block, FreshBlock const* fresh) {
    Tree ports = Tree::map();
    for (auto port = block.beginPort(); port != block.endPort(); ++port) {
        vrl::BB::Port* const plain = fresh ? fresh->block->getPort(port->getName().getName()) : nullptr;
        if (port->getCS() == (plain ? plain->getCS() : Choice(nullptr)) || ports.find(port->getName().getName()))
            continue;
        addChoice(ports.add(port->getName().getName(), Tree::map()), port->getCS());
    }
    return ports;
}

vrl::AttributeWithExpr* withExpression(vrl::Attribute* attribute) {
    return dynamic_cast<vrl::AttributeWithExpr*>(attribute);
}

bool isCalculated(vrl::Attribute* attribute) {
    auto* const expressed = withExpression(attribute);
    return expressed && expressed->isCalculated();
}

/// Collects what one block's parameters have besides their values.
struct ParameterState {
    Tree expressions = Tree::map();
    Tree calculated = Tree::map();
    Tree changeable = Tree::map();
    Tree own = Tree::map();
    Tree notes = Tree::map();

    void add(Parameter const& parameter, Parameter const* plain) {
        if (parameter.expression != (plain ? plain->expression : ""))
            expressions.add(parameter.name, Tree::ofText(parameter.expression));
        vrl::Attribute* const a = parameter.attribute;
        vrl::Attribute* const p = plain ? plain->attribute : nullptr;
        if (isCalculated(a) != (p && isCalculated(p))) calculated.add(parameter.name, Tree::ofBool(isCalculated(a)));
        if (!p) return;
        if (a->canBeAutoChangeable() && a->isAutoChangeable() != p->isAutoChangeable())
            changeable.add(parameter.name, Tree::ofBool(a->isAutoChangeable()));
        Tree const texts = treeOfNotes(*a, p);
        if (!isEmpty(texts)) notes.add(parameter.name, texts);
    }
};

using Takers = std::map<std::string, std::function<void(Tree const&)>>;

std::string textOf(Tree const& tree, char const* name) {
    Tree const* const found = tree.find(name);
    return found && found->isText() ? found->text : std::string();
}

Choice choiceOf(Tree const& tree, Choice const& before) {
    Choice choice = before;
    choice.setCS(textOf(tree, "crossSection"));
    choice.setFlow(textOf(tree, "flow"));
    return choice;
}

/// Gives one block its state.
class StateReader {
public:
    StateReader(vrl::BB& target, std::string const& file, Findings& found)
        : block(target), path(file), findings(found) {}

    void read(Tree const& state) {
        auto const parameters = [this](auto&& take) {
            return [this, take](Tree const& tree) {
                for (Tree::Member const& member : tree.members) withParameter(member, take);
            };
        };
        Takers const takers{
            {"crossSection", [this, &state](Tree const&) { setChoice(state); }},
            {"ports", [this](Tree const& tree) { setPorts(tree); }},
            {"parameters", [this](Tree const& tree) { applyParameters(block, tree, path, findings); }},
            {"values", parameters([this](vrl::Attribute& a, Tree const& value) { setValue(a, value); })},
            {"expressions", parameters([](vrl::Attribute& a, Tree const& value) {
                 if (auto* const expressed = withExpression(&a)) expressed->setExpression(value.text);
             })},
            {"calculated", parameters([](vrl::Attribute& a, Tree const& value) {
                 if (auto* const expressed = withExpression(&a)) expressed->setCalculated(value.text == "true");
             })},
            {"autoChangeable",
             parameters([](vrl::Attribute& a, Tree const& value) { a.setAutoChangeable(value.text == "true"); })},
            {"parameterNotes", parameters([](vrl::Attribute& a, Tree const& value) { applyNotes(a, value); })},
            {"notes", [this](Tree const& tree) { applyNotes(block, tree); }}};
        Tree const sorted = inOrder(state);
        for (Tree::Member const& member : sorted.members) {
            auto const taker = takers.find(member.name);
            if (taker != takers.end()) taker->second(member.value);
        }
    }

private:
    /// Values take expressions away, and parameters have to be there before anything else: the rest comes behind them.
    static Tree inOrder(Tree const& state) {
        Tree sorted = state;
        auto const rank = [](Tree::Member const& m) { return m.name == "parameters" ? 0 : m.name == "values" ? 1 : 2; };
        std::stable_sort(sorted.members.begin(), sorted.members.end(),
                         [&](auto const& a, auto const& b) { return rank(a) < rank(b); });
        return sorted;
    }

    template <class Use>
    void withParameter(Tree::Member const& member, Use const& use) {
        if (block.find(member.name))
            use(*block.getAttribute(member.name), member.value);
        else
            findings.error(path, member.mark, "'" + block.getName() + "' has no parameter '" + member.name + "'");
    }

    void setChoice(Tree const& state) { block.vrl::BB::setCS(choiceOf(state, block.vrl::BB::getCS())); }

    void setPorts(Tree const& tree) {
        for (Tree::Member const& member : tree.members) {
            if (vrl::BB::Port* const port = block.getPort(member.name))
                port->setCS(choiceOf(member.value, port->getCS()));
            else
                findings.error(path, member.mark, "'" + block.getName() + "' has no port '" + member.name + "'");
        }
    }

    void setValue(vrl::Attribute& attribute, Tree const& value) {
        TakenValue const taken = takeValue(parameterOf(attribute), value);
        if (taken.good)
            storeValue(attribute, taken.value);
        else
            findings.error(path, value.mark, "value of '" + attribute.getName() + "' " + taken.why);
    }

    vrl::BB& block;
    std::string const& path;
    Findings& findings;
};

using Maker = vrl::Attribute* (*)(std::string const& name, std::string const& descr, std::string const& units);

template <class T>
vrl::Attribute* makeValue(std::string const& name, std::string const& descr, std::string const& units) {
    return new vrl::Value<T>(name, T(), descr, units);
}

Maker makerOf(std::string const& type) {
#define VRL_MAKER_(T, Word, Name) {Word, makeValue<T>},
    static std::map<std::string, Maker> const makers{VRL_FOR_VALUE_TYPES(VRL_MAKER_)};
#undef VRL_MAKER_
    auto const found = makers.find(type);
    return found == makers.end() ? nullptr : found->second;
}

}  // namespace

Tree treeOfParameter(Parameter const& parameter) {
    Tree tree = Tree::map();
    tree.add("type", Tree::ofText(parameter.type));
    tree.add("value", treeOfValue(parameter));
    if (!parameter.unit.empty()) tree.add("unit", Tree::ofText(parameter.unit));
    if (!parameter.description.empty()) tree.add("description", Tree::ofText(parameter.description));
    if (!parameter.expression.empty()) tree.add("expression", Tree::ofText(parameter.expression));
    return tree;
}

void applyParameters(vrl::Attributes& list, Tree const& parameters, std::string const& path, Findings& findings) {
    for (Tree::Member const& member : parameters.members) {
        Tree const& tree = member.value;
        if (!list.find(member.name)) {
            Maker const maker = makerOf(textOf(tree, "type"));
            if (!maker) {
                findings.error(path, member.mark,
                               "parameter '" + member.name + "' is of no type that can be made here");
                continue;
            }
            list.add(maker(member.name, textOf(tree, "description"), textOf(tree, "unit")));
        }
        vrl::Attribute& attribute = *list.getAttribute(member.name);
        Tree const* const value = tree.find("value");
        TakenValue const taken = value ? takeValue(parameterOf(attribute), *value) : TakenValue();
        if (!taken.good)
            findings.error(path, member.mark, "value of '" + member.name + "' " + (value ? taken.why : "is missing"));
        else
            storeValue(attribute, taken.value);
        std::string const expression = textOf(tree, "expression");
        if (auto* const expressed = withExpression(&attribute); expressed && !expression.empty())
            expressed->setExpression(expression);
    }
}

Tree treeOfNotes(vrl::Annotations const& source, vrl::Annotations const* other) {
    Tree tree = Tree::map();
    for (auto note = source.beginAnnotation(); note != source.endAnnotation(); ++note) {
        if (note->first.compare(0, sizeof notes::kPrefix - 1, notes::kPrefix) == 0) continue;
        auto const same = other ? other->list().find(note->first) : vrl::Annotations::const_iterator();
        bool const known = other && same != other->endAnnotation() && same->second == note->second;
        if (!known) tree.add(note->first, Tree::ofText(note->second));
    }
    return tree;
}

void applyNotes(vrl::Annotations& target, Tree const& notes) {
    for (Tree::Member const& member : notes.members) target.setAnnotation(member.name, member.value.text);
}

Tree stateOf(vrl::BB& block, FreshBlock const* fresh, std::string const& thing, Findings& findings) {
    Tree state = Tree::map();
    Choice const plain = fresh ? fresh->block->vrl::BB::getCS() : Choice(nullptr);
    if (!(block.vrl::BB::getCS() == plain)) addChoice(state, block.vrl::BB::getCS());
    addUnlessEmpty(state, "ports", portChoices(block, fresh));
    ParameterState parameters;
    for (Parameter const& parameter : parametersOf(block)) {
        auto const known = fresh ? fresh->parameters.find(parameter.name) : decltype(fresh->parameters.end())();
        bool const declared = fresh && known != fresh->parameters.end();
        parameters.add(parameter, declared ? &known->second : nullptr);
        if (declared || !fresh) continue;
        if (makerOf(parameter.type))
            parameters.own.add(parameter.name, treeOfParameter(parameter));
        else
            findings.warning(thing, {}, "its parameter '" + parameter.name + "' is of a type that cannot be exported");
    }
    addUnlessEmpty(state, "parameters", std::move(parameters.own));
    addUnlessEmpty(state, "expressions", std::move(parameters.expressions));
    addUnlessEmpty(state, "calculated", std::move(parameters.calculated));
    addUnlessEmpty(state, "autoChangeable", std::move(parameters.changeable));
    addUnlessEmpty(state, "parameterNotes", std::move(parameters.notes));
    vrl::Annotations const* plainNotes = nullptr;
    if (fresh) plainNotes = fresh->block;
    addUnlessEmpty(state, "notes", treeOfNotes(block, plainNotes));
    return state;
}

void applyState(vrl::BB& block, Tree const& state, std::string const& path, Findings& findings) {
    StateReader(block, path, findings).read(state);
}

}  // namespace vrltool::exchange
