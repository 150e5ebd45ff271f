#pragma once

#include <string>
#include <vector>

#include "circuit/circuit.h"

namespace vrl_test {

/// A circuit of blocks without a kind, built step by step. Ports are named as "element,port"; those that begin with "e"
/// are DC, the others optical.
class Generated {
public:
    Generated& add(std::string const& name, std::vector<std::string> const& ports);
    Generated& join(std::string const& a, std::string const& b);
    Generated& input(std::string const& port);
    Generated& output(std::string const& port);
    Generated& contact(std::string const& port);
    /// Makes an element a composite.
    Generated& inside(std::string const& name, Generated inner);

    /// The circuit; nothing can be added afterwards.
    vrltool::Circuit take();

private:
    vrltool::ElementPort& port(std::string const& name);
    unsigned node(std::string const& port);

    vrltool::Circuit circuit;
    unsigned lastNode = 0;
};

/// Circuits of the shapes that real ones have; each with outer ports.
vrltool::Circuit chainOf(std::size_t length);
vrltool::Circuit ringOf(std::size_t length);
vrltool::Circuit coupledRings(std::size_t count);
vrltool::Circuit treeOf(std::size_t depth);
vrltool::Circuit meshOf(std::size_t columns, std::size_t rows);
vrltool::Circuit padsOf(std::size_t count);
vrltool::Circuit starOf(std::size_t count);
vrltool::Circuit heatersOf(std::size_t count);
vrltool::Circuit nestedOf(std::size_t depth);
/// Anything connected to anything, the same for the same seed.
vrltool::Circuit randomOf(std::size_t blocks, unsigned seed);

}  // namespace vrl_test
