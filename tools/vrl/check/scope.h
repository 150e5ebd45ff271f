#pragma once

#include <deque>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "check/sections.h"
#include "circuit/circuit.h"
#include "circuit/parameters.h"
#include "design/design.h"

// The checking of designs, its words:
//
// scope    one circuit of a design: the whole one, or the inside of a composite
// checked  an element of a scope with what the rules ask of it
// path     how people are reported of an element: "arms/upper" is the element 'upper' inside the composite 'arms'

namespace vrltool::check {

/// Why a rule looks at the parameters of an element; most elements have none of it.
enum Oddity : unsigned {
    kNotInRange = 1,     ///< one is outside its range
    kMayBeInfinite = 2,  ///< or not a number
    kHasExpression = 4,  ///< that may not be calculated
    kHasUndeclared = 8   ///< one came with the file only
};

/// An element with what the rules ask of it.
struct CheckedElement {
    std::string path;
    Element const* element = nullptr;  ///< null for the parameters of a netlist itself
    vrl::Attributes* list = nullptr;   ///< the parameters; null without a block
    unsigned oddities = 0;             ///< those of its parameters
    Dimensions dimensions;
    bool standIn = false;
    bool foundryUnknown = false;  ///< its foundry has a name, and no loaded plug-in has it
    vrl::Foundry const* foundry = nullptr;

    /// Looks at all parameters, for oddities and dimensions. To be called before rules look at the element.
    void readParameters();
};

/// One circuit of a design. It refers to the design and to the snapshot of its circuit.
struct Scope {
    std::string path;  ///< of the composite; empty for the whole circuit
    Design const* design = nullptr;
    Circuit const* circuit = nullptr;
    bool top = false;                                       ///< the outermost one of its file
    bool singleBlock = false;                               ///< a block that was saved alone, with no circuit around it
    CheckedElement own;                                     ///< at the top, the parameters of the netlist itself
    std::vector<CheckedElement> checkedElements;            ///< in the order of the circuit's elements
    std::map<unsigned, std::vector<char const*>> boundary;  ///< the lists that name each boundary node
    Sections* sections = nullptr;                           ///< makes the cross sections of ports

    CheckedElement const& checkedOf(PortPlace const& end) const { return checkedElements[end.element]; }
    ElementPort const& portOf(PortPlace const& end) const { return circuit->elements[end.element].ports[end.port]; }
    /// The port of the block, for one that it declares.
    vrl::BB::Port const& declaredPortOf(PortPlace const& end) const;
    /// "arms/upper,in0".
    std::string portText(PortPlace const& end) const { return checkedOf(end).path + "," + portOf(end).name; }
    /// Whether the node is on the boundary.
    bool onBoundary(unsigned node) const { return boundary.count(node) != 0; }
};

/// All circuits of a design, outermost first. A block that was saved alone is an element with the name of its kind.
class Scopes {
public:
    /// The design outlives the scopes, and its foundries are attached.
    explicit Scopes(Design const& d);
    Scopes(Scopes const&) = delete;
    Scopes& operator=(Scopes const&) = delete;

    std::deque<Scope> const& all() const { return scopes; }
    std::deque<Scope>& all() { return scopes; }
    /// The elements of all circuits.
    std::size_t elementCount() const;

private:
    void addScope(Circuit const& circuit, std::string const& path, Progress& progress);

    Design const& design;
    Circuit root;
    Sections sections;
    std::deque<Scope> scopes;
};

}  // namespace vrltool::check
