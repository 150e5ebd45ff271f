#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "circuit/circuit.h"

namespace vrltool::overview {

/// A list of the boundary, and how people are reported of it.
struct BoundaryList {
    char const* word;
    std::vector<unsigned> Circuit::*nodes;
};

extern BoundaryList const kBoundaryLists[3];

/// A place of such a list, counted from 1, with the names that another tool gave to it.
struct BoundaryPlace {
    char const* list;
    std::size_t place;
    std::vector<std::string> names;
};

/// The words with a string between each two.
std::string joined(std::vector<std::string> const& words, char const* between);

/// The elements of a circuit by name as people count.
std::vector<Element const*> byName(Circuit const& circuit);

/// The ports at a node as "element,port".
std::vector<std::string> portsAt(Circuit const& circuit, unsigned node);

}  // namespace vrltool::overview
