#pragma once

#include "draw/drawing.h"
#include "draw/placements.h"

namespace vrltool::draw {

/// Draws instances where they are on the chip, on one sheet, with a bar that shows the scale.
///
/// The size of an instance is not known, nor where its ports are: it is a box of one size for all, from its origin on,
/// with a corner cut off that shows how it is turned and mirrored. Connections are straight lines. What has no place is
/// in a row below.
Drawing placedDrawing(Circuit const& circuit, Placements const& placements, Picture const& picture,
                      Selection const& selection);

}  // namespace vrltool::draw
