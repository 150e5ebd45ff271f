#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "circuit/circuit.h"
#include "circuit/outer_names.h"

namespace vrltool::diff {

/// No part, no net, no place.
constexpr std::size_t kNone = static_cast<std::size_t>(-1);

/// What a circuit connects, without the numbers of its nodes: its order follows from the names alone.
struct Wiring {
    /// A port that is connected, with the net that it is on.
    struct Connection {
        std::string port;
        std::size_t net;
    };
    /// An element, or a name that only connections are left of.
    struct Part {
        std::string name;                     ///< empty for an element that lost its name
        std::string label;                    ///< the name, or "#NUMBER" without one
        Element const* element;               ///< null for a bare name
        std::vector<Connection> connections;  ///< by port
    };
    /// A connected port: a part, and which of its connections.
    struct PortPlace {
        std::size_t part;
        std::size_t connection;
    };
    /// What a node connects.
    struct Net {
        std::vector<PortPlace> ports;  ///< by part and port
    };
    /// The boundary lists, in this order everywhere.
    enum Boundary { kInputs, kOutputs, kDcs, kBoundaries };

    std::vector<Part> parts;  ///< as the elements of the circuit; after them the bare names
    std::vector<Net> nets;
    std::array<std::vector<std::size_t>, kBoundaries> boundary;  ///< nets
    std::vector<std::vector<std::string>> outerNames;  ///< of each net, as another tool named it at the boundary

    /// The net on which a part has a port, or kNone.
    std::size_t netOf(std::size_t part, std::string const& port) const;
};

/// The wiring of a circuit and of the netlist that it shows, both of which outlive it.
Wiring wiringOf(Circuit const& circuit, vrl::Netlist const& netlist, OuterNames const& outerNames = {});

}  // namespace vrltool::diff
