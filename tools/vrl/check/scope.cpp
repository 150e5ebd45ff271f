#include "check/scope.h"

#include <cmath>
#include <ostream>
#include <type_traits>

#include "text/progress.h"

namespace vrltool::check {

namespace {

Circuit rootOf(Design const& design) {
    if (!design.object.block()) return circuitFrom(circuitOf(design));
    Circuit alone;
    alone.elements.push_back(elementOf(design.object.block()->getName(), 0, design.object.block()));
    return alone;
}

/// A stream that keeps nothing, and is made only once, which is most of its cost.
std::ostream& nowhere() {
    static std::ostream stream(nullptr);
    return stream;
}

template <class T>
unsigned odditiesOf(vrl::Value<T> const& parameter) {
    unsigned odd = 0;
    if (!parameter.inSpec(nowhere())) odd |= kNotInRange;
    if constexpr (std::is_same_v<T, double>)
        if (!std::isfinite(parameter.getValue())) odd |= kMayBeInfinite;
    if constexpr (std::is_same_v<T, std::complex<double>>)
        if (!std::isfinite(parameter.getValue().real()) || !std::isfinite(parameter.getValue().imag()))
            odd |= kMayBeInfinite;
    if (!parameter.getExpression().empty()) odd |= kHasExpression;
    return odd;
}

CheckedElement checkedOf(Element const& element, std::string const& path) {
    CheckedElement checked;
    checked.path = path + element.label();
    checked.element = &element;
    if (!element.block) return checked;
    checked.list = element.block;
    checked.standIn = isStandIn(*element.block);
    checked.foundry = element.block->getFoundry();
    checked.foundryUnknown = !element.foundry.empty() && !checked.foundry;
    return checked;
}

/// A stand-in is a composite whatever it represents; without elements there is nothing to check.
bool hasInside(CheckedElement const& checked) {
    auto const& inside = checked.element->inside;
    return inside && !(checked.standIn && inside->elements.empty());
}

void addBoundary(Scope& scope) {
    Circuit const& circuit = *scope.circuit;
    for (unsigned const node : circuit.inputs) scope.boundary[node].push_back("inputs");
    for (unsigned const node : circuit.outputs) scope.boundary[node].push_back("outputs");
    for (unsigned const node : circuit.dc) scope.boundary[node].push_back("DC nodes");
}

}  // namespace

void CheckedElement::readParameters() {
    if (!list) return;
    for (ListedParameter const& listed : listedParameters(*list)) {
        dimensions.take(listed.name, listed.attribute);
        if (!listed.declared) oddities |= kHasUndeclared;
        if (withPlainValue(*listed.attribute, [&](auto const& value) { oddities |= odditiesOf(value); })) continue;
        oddities |= kMayBeInfinite | kHasExpression;  // only its plug-in knows
        if (!parameterOf(*listed.attribute).inRange) oddities |= kNotInRange;
    }
}

vrl::BB::Port const& Scope::declaredPortOf(PortPlace const& place) const {
    // Declared ports come first, in the order of the ports.
    return *(circuit->elements[place.element].block->beginPort() + static_cast<std::ptrdiff_t>(place.port));
}

Scopes::Scopes(Design const& d) : design(d), root(rootOf(d)) {
    Progress progress("checking", "elements");
    addScope(root, "", progress);
    Scope& top = scopes.front();
    top.top = true;
    top.singleBlock = design.object.block() != nullptr;
    if (design.object.block()) return;
    top.own.list = design.object.netlist();
    top.own.readParameters();
}

void Scopes::addScope(Circuit const& circuit, std::string const& path, Progress& progress) {
    Scope& scope = scopes.emplace_back();
    scope.path = path;
    scope.design = &design;
    scope.circuit = &circuit;
    scope.sections = &sections;
    scope.own.path = path;
    std::string const prefix = path.empty() ? "" : path + "/";
    scope.checkedElements.reserve(circuit.elements.size());
    for (Element const& element : circuit.elements) {
        scope.checkedElements.push_back(checkedOf(element, prefix));
        progress.step();
    }
    addBoundary(scope);
    for (CheckedElement const& checked : scope.checkedElements)
        if (hasInside(checked)) addScope(*checked.element->inside, checked.path, progress);
}

std::size_t Scopes::elementCount() const {
    std::size_t count = 0;
    for (Scope const& scope : scopes) count += scope.checkedElements.size();
    return count;
}

}  // namespace vrltool::check
