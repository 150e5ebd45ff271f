#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "circuit/circuit.h"
#include "draw/picture.h"
#include "draw/scene.h"

namespace vrltool::booklet {

/// The picture of a circuit as 'vrl draw' draws it, on sheets that fit on pages of a booklet.
std::vector<draw::Scene> sheetsOf(Circuit const& circuit, draw::Picture picture);

constexpr double kLargestScale = 0.75;  // names are a little smaller than the text around the picture

/// Writes sheets for TikZ, all at the same scale, each as a paragraph of its own.
void writeSheets(std::ostream& os, std::vector<draw::Scene> const& sheets, double largest = kLargestScale);

/// The colours and the lines of the domains as definitions for TikZ: the colour "vrlDC", the style "vrl line DC".
std::string domainDefinitions();

}  // namespace vrltool::booklet
