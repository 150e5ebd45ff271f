#pragma once

#include <string>
#include <vector>

#include "check/runner.h"
#include "circuit/circuit.h"
#include "design/design.h"
#include "draw/picture.h"
#include "draw/scene.h"

// A page is one file of HTML with a picture of a design and with what is to be said of its elements. It needs no other
// file and no network, which its own policy forbids. Its script, style sheet and frame are files of the folder
// template/, compiled in together with d3-zoom.

namespace vrltool::page {

/// The page of a design that holds a netlist, with all its elements, what was found in it, and a picture of it with
/// notes on what that leaves out. The page finds elements in the picture by their ids there, which are their places.
std::string pageText(Design const& design, check::FileReport const& report, draw::Picture const& picture,
                     std::vector<std::string> const& notes, draw::Scene const& scene);

/// How wide a picture of a circuit is folded so that it has about the shape of a screen.
int widthForScreen(Circuit const& circuit);

}  // namespace vrltool::page
