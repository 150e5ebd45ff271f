#pragma once

#include <iosfwd>

#include "booklet/contents.h"

namespace vrltool::booklet {

/// Draws a block for TikZ: a box with its ports, inputs left, outputs right, electrical below, what is none of these
/// above. The line shows the domain. Many ports on one side are drawn in part, with the number of the others.
void writePicture(std::ostream& os, BlockFacts const& block);

/// The key to the lines of some blocks, as one line of text.
void writeLineKey(std::ostream& os, std::vector<BlockFacts> const& blocks);

}  // namespace vrltool::booklet
