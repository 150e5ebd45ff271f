#include "check/scope.h"

#include "text/progress.h"

namespace vrltool::check {

namespace {

Circuit rootOf(Design const& design) {
    if (!design.object.block()) return circuitFrom(circuitOf(design));
    Circuit alone;
    alone.elements.push_back(elementOf(design.object.block()->getName(), 0, design.object.block()));
    return alone;
}

Subject subjectOf(Element const& element, std::string const& path) {
    Subject subject;
    subject.path = path + element.label();
    subject.element = &element;
    if (!element.block) return subject;
    subject.parameters = parametersOf(*element.block);
    subject.standIn = isStandIn(*element.block);
    subject.foundry = element.block->getFoundry();
    subject.foundryUnknown = !element.foundry.empty() && !subject.foundry;
    return subject;
}

/// A stand-in is a composite whatever it stands for; without elements there is nothing to look at.
bool hasInside(Subject const& subject) {
    auto const& inside = subject.element->inside;
    return inside && !(subject.standIn && inside->elements.empty());
}

void addBoundary(Scope& scope) {
    Circuit const& circuit = *scope.circuit;
    for (unsigned const node : circuit.inputs) scope.boundary[node].push_back("inputs");
    for (unsigned const node : circuit.outputs) scope.boundary[node].push_back("outputs");
    for (unsigned const node : circuit.dc) scope.boundary[node].push_back("DC nodes");
}

}  // namespace

vrl::BB::Port const& Scope::portOf(End const& end) const {
    // Declared pins come first, in the order of the ports.
    return *(circuit->elements[end.element].block->beginPort() + static_cast<std::ptrdiff_t>(end.pin));
}

Scopes::Scopes(Design const& d) : design(d), root(rootOf(d)) {
    Progress progress("checking", "elements");
    addScope(root, "", progress);
    Scope& top = scopes.front();
    top.top = true;
    top.solo = design.object.block() != nullptr;
    if (design.object.block()) return;
    top.own.parameters = parametersOf(*design.object.netlist());
}

void Scopes::addScope(Circuit const& circuit, std::string const& path, Progress& progress) {
    Scope& scope = scopes.emplace_back();
    scope.path = path;
    scope.design = &design;
    scope.circuit = &circuit;
    scope.sections = &sections;
    scope.own.path = path;
    std::string const prefix = path.empty() ? "" : path + "/";
    for (Element const& element : circuit.elements) {
        scope.subjects.push_back(subjectOf(element, prefix));
        progress.step();
    }
    addBoundary(scope);
    for (Subject const& subject : scope.subjects)
        if (hasInside(subject)) addScope(*subject.element->inside, subject.path, progress);
}

std::size_t Scopes::elementCount() const {
    std::size_t count = 0;
    for (Scope const& scope : scopes) count += scope.subjects.size();
    return count;
}

}  // namespace vrltool::check
