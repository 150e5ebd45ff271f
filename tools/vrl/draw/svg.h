#pragma once

#include <string>

#include "draw/scene.h"

namespace vrltool::draw {

/// A picture as SVG, with its style sheet; the same bytes for the same scene. Wires name what they connect in the
/// attribute data-ends.
std::string svgText(Scene const& scene);

/**@{*/
/// Its parts, for documents that have pictures in them: the style sheet, and the paper with the items on it.
std::string svgSheet();
std::string svgItems(Scene const& scene);
/**@}*/

}  // namespace vrltool::draw
