#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "diff/change.h"
#include "diff/matching.h"
#include "diff/wiring.h"

namespace vrltool::diff {

/// The ports of both circuits under common numbers: a port of a part and the same port of its match are one.
struct CommonPorts {
    /// A port with the nets on which A and B have it, kNone where it is not connected.
    struct Port {
        std::string const* part;  ///< its label; null for a place of a boundary list, which belongs to its net too
        std::string name;
        std::size_t netA = kNone;
        std::size_t netB = kNone;

        std::string text() const { return part ? *part + "," + name : name; }
    };
    std::vector<Port> ports;
    std::vector<std::vector<std::size_t>> ofA, ofB;  ///< by net

    /// Both wirings outlive the ports.
    CommonPorts(Wiring const& a, Wiring const& b, Matching const& matching);
    void add(Port port);
    /// The names of some ports, sorted, those of the boundary last.
    std::vector<std::string> texts(std::vector<std::size_t> const& some) const;

private:
    void add(Wiring::Part const* inA, Wiring::Part const* inB);
};

/// Compares what is connected. Each net of A whose ports B has on several nets is one change, and so is each net of B
/// whose ports A has on several.
void compareConnections(CommonPorts const& ports, std::string const& path, std::vector<Change>& changes);

}  // namespace vrltool::diff
