#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "circuit/circuit.h"

namespace vrltool {

/// The declared ports of a composite by the lists of the boundary inside that they belong to, in their order: optical
/// ones by the letters that their names begin with, electrical ones to DC.
struct CompositePorts {
    std::vector<std::string> inputs, outputs, dc;
    bool complete = true;  ///< false if there is a port that belongs to none
};

CompositePorts compositePorts(Element const& element);

/// The node inside of a composite that each of its ports leads to: one of each list after the other. Nothing without an
/// inside, and if ports and lists are not as many.
std::optional<std::map<std::string, unsigned>> nodesInside(Element const& element);

}  // namespace vrltool
