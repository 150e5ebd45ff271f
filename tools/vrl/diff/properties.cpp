#include "diff/properties.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <map>
#include <typeinfo>
#include <utility>

#include "design/stand_in.h"
#include "values/note.h"

namespace vrltool::diff {

namespace {

// Keys of the annotations that a parameter makes itself.
std::string const kName = "vrl::attrName";
std::string const kUnit = "vrl::attrUnitName";
std::string const kDescription = "vrl::attrDescr";

double magnitude(double value) { return std::abs(value); }
double magnitude(std::complex<double> const& value) { return std::abs(value); }

template <class T>
bool near(T const& a, T const& b, DiffSettings const& settings) {
    if (a == b || (a != a && b != b)) return true;
    double const distance = magnitude(a - b);
    double const greater = std::max(magnitude(a), magnitude(b));
    if (!std::isfinite(greater)) return false;  // any distance to infinity would be a small share of it
    return distance <= settings.absolute || distance <= settings.relative * greater;
}

struct Same {
    DiffSettings const& settings;

    bool operator()(int a, int b) const {
        return near(static_cast<double>(a), static_cast<double>(b), settings);  // the difference may not fit an int
    }
    bool operator()(double a, double b) const { return near(a, b, settings); }
    bool operator()(std::complex<double> const& a, std::complex<double> const& b) const { return near(a, b, settings); }
    template <class A, class B>
    bool operator()(A const& a, B const& b) const {
        if constexpr (std::is_same_v<A, B>)
            return a == b;
        else
            return false;
    }
};

/// Goes through two sorted maps side by side; what is missing is a null pointer.
template <class Map, class Visit>
void sideBySide(Map const& a, Map const& b, Visit const& visit) {
    auto left = a.begin();
    auto right = b.begin();
    while (left != a.end() || right != b.end()) {
        bool const takeLeft = right == b.end() || (left != a.end() && left->first <= right->first);
        bool const takeRight = left == a.end() || (right != b.end() && right->first <= left->first);
        auto const& key = takeLeft ? left->first : right->first;
        visit(key, takeLeft ? &left->second : nullptr, takeRight ? &right->second : nullptr);
        if (takeLeft) ++left;
        if (takeRight) ++right;
    }
}

std::map<std::string, Parameter> parametersByName(vrl::Attributes* list) {
    std::map<std::string, Parameter> result;
    if (!list) return result;
    for (Parameter& parameter : parametersOf(*list)) {
        std::string const name = parameter.name;
        result.emplace(name, std::move(parameter));
    }
    return result;
}

std::map<std::string, vrl::BB::Port const*> portsByName(vrl::BB const* block) {
    std::map<std::string, vrl::BB::Port const*> result;
    if (block)
        for (auto port = block->beginPort(); port != block->endPort(); ++port)
            result.emplace(port->getName().getName(), &*port);
    return result;
}

Verb verbOf(void const* a, void const* b) { return !a ? Verb::kAdded : !b ? Verb::kRemoved : Verb::kChanged; }

ChangeSide sideOf(Parameter const* parameter) { return parameter ? ChangeSide(stateOf(*parameter)) : ChangeSide(); }

ChangeSide sideOf(std::string const* text) { return text ? ChangeSide(*text) : ChangeSide(); }

vrl::Annotations::AnnotationMap notesOf(vrl::Annotations const* notes, std::set<std::string> const& without) {
    vrl::Annotations::AnnotationMap result;
    if (notes) result = notes->list();
    for (std::string const& key : without) result.erase(key);
    return result;
}

// Nearly all of two designs is the same, which these find out without the tables that a difference needs. What they are
// not sure of is compared in full.

/// The notes that a parameter has made itself, and no others. To look at all of them would cost each parameter a map.
bool surelySame(vrl::Annotations const& a, vrl::Annotations const& b) {
    std::string const* const keys[] = {&kName, &kUnit, &kDescription};
    if (a.size() != std::size(keys) || b.size() != std::size(keys)) return false;
    try {
        return std::all_of(std::begin(keys), std::end(keys), [&](std::string const* key) {
            return a.getAnnotation(*key, true) == b.getAnnotation(*key, true);
        });
    } catch (std::string const&) {  // a key is missing
        return false;
    }
}

template <class T>
bool surelySame(vrl::Value<T> const& a, vrl::Value<T> const& b) {
    return a.getValue() == b.getValue() && a.isCalculated() == b.isCalculated() &&
           a.isAutoChangeable() == b.isAutoChangeable() && a.getExpression() == b.getExpression() &&
           surelySame(static_cast<vrl::Annotations const&>(a), b);
}

bool surelySame(vrl::Attribute& a, vrl::Attribute& b) {
    bool same = false;
    withPlainValue(a, [&](auto const& value) {
        same = typeid(a) == typeid(b) && surelySame(value, static_cast<decltype(value)>(b));
    });
    return same;
}

bool surelySame(vrl::Attributes& a, vrl::Attributes& b) {
    auto const inA = listedParameters(a);
    auto const inB = listedParameters(b);
    return std::equal(inA.begin(), inA.end(), inB.begin(), inB.end(), [](auto const& x, auto const& y) {
        return x.name == y.name && surelySame(*x.attribute, *y.attribute);
    });
}

bool sameChoices(vrl::BB::Port const& a, vrl::BB::Port const& b) {
    return (!a.hasCS() && !b.hasCS()) || a.getCS() == b.getCS();
}

bool surelySamePorts(vrl::BB const& a, vrl::BB const& b) {
    return std::equal(a.beginPort(), a.endPort(), b.beginPort(), b.endPort(),
                      [](auto const& x, auto const& y) { return x == y && sameChoices(x, y); });
}

/// Whether the notes of two imports are the same string, which most are: to read them takes far longer.
bool sameImports(vrl::Annotations const& a, vrl::Annotations const& b) {
    return a.getAnnotation(values::kNote, false) == b.getAnnotation(values::kNote, false);
}

}  // namespace

bool sameValue(ParameterValue const& a, ParameterValue const& b, DiffSettings const& settings) {
    return std::visit(Same{settings}, a, b);
}

ParameterState stateOf(Parameter const& parameter) {
    ParameterState state{parameter.type, parameter.value, parameter.text, parameter.unit, parameter.expression};
    if (auto const* const withExpression = dynamic_cast<vrl::AttributeWithExpr const*>(parameter.attribute))
        state.calculated = withExpression->isCalculated();
    state.autoChangeable = parameter.attribute->isAutoChangeable();
    return state;
}

bool PropertyComparison::isIgnored(std::string const& name, std::string const& path) const {
    return std::any_of(settings.ignored.begin(), settings.ignored.end(), [&](std::string const& ignored) {
        return ignored == name || (!path.empty() && ignored == path + "." + name);
    });
}

bool PropertyComparison::same(ParameterState const& a, ParameterState const& b) const {
    bool const valueKnown = !std::holds_alternative<std::monostate>(a.value);
    return a.type == b.type && a.unit == b.unit && a.expression == b.expression && a.calculated == b.calculated &&
           a.autoChangeable == b.autoChangeable && sameValue(a.value, b.value, settings) &&
           (valueKnown || a.text == b.text);
}

void PropertyComparison::compareParameter(Parameter const* a, Parameter const* b, std::string const& name,
                                          std::string const& path, bool sameKind) {
    if (!settings.ignored.empty()) {
        names.insert(name);
        names.insert(path + "." + name);
        if (isIgnored(name, path)) return;
    }
    if (!a || !b || !same(stateOf(*a), stateOf(*b)))
        found.changes.push_back({Topic::kParameter, verbOf(a, b), path, name, "", sideOf(a), sideOf(b), {}});
    if (!a || !b) return;
    if (isStandIn(*a->attribute) && isStandIn(*b->attribute)) found.uncompared.push_back({path, name, b->type});
    std::set<std::string> without{kUnit};  // reported with the value
    if (!sameKind) without.insert(kDescription);
    compareNotes(a->attribute, b->attribute, path, name, without);
}

void PropertyComparison::compareParameters(vrl::Attributes* a, vrl::Attributes* b, std::string const& path,
                                           bool sameKind) {
    if (settings.ignored.empty() && a && b && surelySame(*a, *b)) return;
    sideBySide(parametersByName(a), parametersByName(b),
               [&](std::string const& name, Parameter const* inA, Parameter const* inB) {
                   compareParameter(inA, inB, name, path, sameKind);
               });
}

void PropertyComparison::compareSingle(vrl::Attribute& a, vrl::Attribute& b) {
    Parameter const inA = parameterOf(a);
    Parameter const inB = parameterOf(b);
    compareParameter(&inA, &inB, inB.name, "", true);
}

void PropertyComparison::compareNotes(vrl::Annotations const* a, vrl::Annotations const* b, std::string const& path,
                                      std::string const& parameter, std::set<std::string> const& without) {
    if (!settings.notes || (a && b && a->size() + b->size() == 0)) return;
    sideBySide(notesOf(a, without), notesOf(b, without),
               [&](std::string const& key, std::string const* inA, std::string const* inB) {
                   if (inA && inB && *inA == *inB) return;
                   found.changes.push_back(
                       {Topic::kNote, verbOf(inA, inB), path, key, parameter, sideOf(inA), sideOf(inB), {}});
               });
}

void PropertyComparison::addMembers(std::vector<NoteDifference> const& members, std::string const& path) {
    auto const side = [](values::Node const& node) {
        return node.isDefined() ? ChangeSide(written(node, values::Format::kLine)) : ChangeSide();
    };
    for (NoteDifference const& each : members) {
        Verb const verb = !each.inA.isDefined()   ? Verb::kAdded
                          : !each.inB.isDefined() ? Verb::kRemoved
                                                  : Verb::kChanged;
        found.changes.push_back(
            {Topic::kNote, verb, path, values::kNote, "", side(each.inA), side(each.inB), {}, each.member});
    }
}

void PropertyComparison::compareNotesOfBlocks(vrl::BB* a, vrl::BB* b, std::string const& path) {
    if (!settings.notes) return;
    if (a && b && sameImports(*a, *b)) return compareNotes(a, b, path, "", {values::kNote});
    bool const imported = a && b && isMap(values::note(*a)) && isMap(values::note(*b));
    compareNotes(a, b, path, "", imported ? std::set<std::string>{values::kNote} : std::set<std::string>());
    if (imported) addMembers(differentMembers(*a, *b, settings), path);
}

void PropertyComparison::compareNotesOfObjects(SavedObject const& a, SavedObject const& b) {
    bool const imported =
        a.netlist() && b.netlist() && isMap(values::note(*a.netlist())) && isMap(values::note(*b.netlist()));
    compareNotes(a.notes(), b.notes(), "", "",
                 imported ? std::set<std::string>{values::kNote} : std::set<std::string>());
}

void PropertyComparison::compareImports(values::Node const& a, values::Node const& b, std::string const& path) {
    if (settings.notes && isMap(a) && isMap(b)) addMembers(differentMembers(a, b, settings), path);
}

void PropertyComparison::compareTexts(Topic topic, std::string const& a, std::string const& b, std::string const& path,
                                      std::string const& name) {
    if (a == b) return;
    auto const side = [](std::string const& text) { return text.empty() ? ChangeSide() : ChangeSide(text); };
    found.changes.push_back({topic, Verb::kChanged, path, name, "", side(a), side(b), {}});
}

void PropertyComparison::compareChoices(vrl::Foundry::CSInfo const& a, vrl::Foundry::CSInfo const& b,
                                        std::string const& path, std::string const& port) {
    compareTexts(Topic::kCrossSection, a.getCSName(), b.getCSName(), path, port);
    compareTexts(Topic::kFlow, a.getFlowName(), b.getFlowName(), path, port);
}

// Ports that only one of two kinds has are reported by the kinds.
void PropertyComparison::compareBlocks(vrl::BB* a, vrl::BB* b, std::string const& path) {
    if (!a || !b) return;
    compareTexts(Topic::kFoundry, a->getFoundryName(), b->getFoundryName(), path);
    compareChoices(a->vrl::BB::getCS(), b->vrl::BB::getCS(), path);
    if (surelySamePorts(*a, *b)) return;
    bool const sameKind = a->getName() == b->getName();
    using Port = vrl::BB::Port const*;
    sideBySide(portsByName(a), portsByName(b), [&](std::string const& name, Port const* inA, Port const* inB) {
        if (inA && inB) {
            if (!sameChoices(**inA, **inB)) compareChoices((*inA)->getCS(), (*inB)->getCS(), path, name);
        } else if (sameKind)
            found.changes.push_back({Topic::kPort, verbOf(inA, inB), path, name, "", {}, {}, {}});
    });
}

}  // namespace vrltool::diff
