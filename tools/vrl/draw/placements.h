#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "circuit/circuit.h"

namespace vrltool::draw {

/// Where the origin of an instance is on the chip, in um with y upwards, and how it lies there: mirrored top to bottom,
/// then turned counterclockwise.
struct Place {
    double x = 0;
    double y = 0;
    double rotation = 0;  ///< degrees
    bool mirrored = false;
};

/// An instance with its place. An array or a composite that was expanded by an import is one instance of many elements.
struct PlacedInstance {
    std::string name;
    Place place;
    std::vector<std::size_t> elements;
};

/// The places that an import kept, of some elements of a circuit.
struct Placements {
    std::vector<PlacedInstance> instances;
    std::vector<std::size_t> unplaced;  ///< elements without a place
    std::vector<std::string> notes;     ///< why, a line each, for the notes of the selection
};

/// Reads the places of the elements that are `shown`. Only plain numbers count: places that refer to ports or to other
/// instances are not resolved, and what is very far from most others is left out. A Failure, about `file`, if there is
/// no place at all.
Placements placementsOf(vrl::Netlist const& netlist, Circuit const& circuit, std::vector<bool> const& shown,
                        std::string const& file);

}  // namespace vrltool::draw
