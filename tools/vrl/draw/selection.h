#pragma once

#include <set>
#include <string>
#include <vector>

#include "circuit/circuit.h"
#include "draw/picture.h"

namespace vrltool::draw {

/// Which part of a circuit is drawn.
struct Selection {
    std::vector<bool> shown;         ///< for each element of the circuit
    std::set<Circuit const*> open;   ///< the insides of composites that are drawn
    std::vector<std::string> notes;  ///< what is hidden, a line each
};

/// Chooses what a picture shows: the neighbourhood that it asks for, and of that at most its limit, from the element or
/// from the inputs of the circuit outwards. What room is left goes to the insides of composites, each whole or not at
/// all. A Failure reports a neighbourhood of a missing element.
Selection selectionOf(Circuit const& circuit, Picture const& picture);

}  // namespace vrltool::draw
