#pragma once

#include <string>

#include "vrllib/vrllib.h"

namespace vrltool::draw {

/// How a domain looks. Colours that the colour-blind can distinguish, and lines that differ on a print without colour.
struct DomainStyle {
    vrl::EnumList::Domain domain;
    char const* name;    ///< in the legend, and as a class of SVG
    char const* colour;  ///< "#rrggbb"
    char const* line;    ///< "solid", "dashed" or "dotted"
    double width;
    bool twofold;  ///< drawn as two lines side by side
};

/// The look of a domain; what is no domain of ports looks as an unknown one.
DomainStyle const& styleOf(vrl::EnumList::Domain domain);

/// "color=..., style=..., penwidth=..., class=..." of a line.
std::string lineAttributes(DomainStyle const& style);

/// The width of a line as the border of a cell, in whole points.
std::string borderOf(DomainStyle const& style);

}  // namespace vrltool::draw
