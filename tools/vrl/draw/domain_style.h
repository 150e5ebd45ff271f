#pragma once

#include <string>

#include "vrllib/vrllib.h"

namespace vrltool::draw {

/// How a domain looks. Colours that the colour-blind can distinguish, and lines that differ on a print without colour.
struct DomainStyle {
    vrl::EnumList::Domain domain;
    char const* name;    ///< in the legend; its first word is the class in the picture
    char const* colour;  ///< "#rrggbb"
    char const* dashes;  ///< empty: a solid line
    double width;
    bool twofold;  ///< drawn as two lines side by side
};

/// The look of a domain; what is no domain of ports looks as an unknown one.
DomainStyle const& styleOf(vrl::EnumList::Domain domain);

/// "optics", "DC", ...
std::string className(vrl::EnumList::Domain domain);

/// The styles of all domains, as a style sheet.
std::string domainSheet();

}  // namespace vrltool::draw
