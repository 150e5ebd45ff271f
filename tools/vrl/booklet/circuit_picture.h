#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>
#include <vector>

#include "circuit/circuit.h"
#include "circuit/outer_names.h"
#include "draw/scene.h"

namespace vrltool::booklet {

constexpr std::size_t kMostElements = 200;  // in a picture, as 'vrl draw' has it

/// The picture of a circuit as 'vrl draw' draws it, on sheets that fit on pages of a booklet. `names` are those of the
/// boundary. The picture shows at most `most` elements, 0: all, and notes what it leaves out.
std::vector<draw::Scene> sheetsOf(Circuit const& circuit, OuterNames const& names, std::size_t most = kMostElements);

constexpr double kLargestScale = 0.75;  // names are a little smaller than the text around the picture

/// Writes sheets for TikZ, all at the same scale, each as a paragraph of its own.
void writeSheets(std::ostream& os, std::vector<draw::Scene> const& sheets, double largest = kLargestScale);

/// The colours and the lines of the domains as definitions for TikZ: the colour "vrlDC", the style "vrl line DC".
std::string domainDefinitions();

}  // namespace vrltool::booklet
