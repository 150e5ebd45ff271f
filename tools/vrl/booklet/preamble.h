#pragma once

#include <iosfwd>

#include "booklet/contents.h"

namespace vrltool::booklet {

/// Writes what comes before the text of a booklet, its title page and its table of contents included.
///
/// The preamble of texstream serves documents that others put together: it loads neither what pictures need nor fonts
/// for all letters, has no title, and asks for packages that are no part of a basic LaTeX system.
void writePreamble(std::ostream& os, FoundryFacts const& facts);

}  // namespace vrltool::booklet
