#include "draw/domain_style.h"

#include <algorithm>
#include <iterator>

#include "text/number.h"

namespace vrltool::draw {

namespace {

using Domains = vrl::EnumList;

constexpr DomainStyle kStyles[] = {
    {Domains::Unknown, "unknown domain", "#6B6B6B", "", 1.0, false},
    {Domains::Signal, "signal", "#7A3B8F", "5,2", 1.0, true},
    {Domains::Optics, "optics", "#0072B2", "", 1.8, false},
    {Domains::DC, "DC", "#D55E00", "5,2", 1.5, false},
    {Domains::RF, "RF", "#00795A", "1,5", 2.2, false},
    {Domains::Acoustic, "acoustic", "#A6761D", "", 1.0, true},
    {Domains::Mechanic, "mechanic", "#000000", "1,5", 1.2, true},
    {Domains::Fluidics, "fluidics", "#B3477D", "", 3.0, false},
};

}  // namespace

DomainStyle const& styleOf(vrl::EnumList::Domain domain) {
    auto const found = std::find_if(std::begin(kStyles), std::end(kStyles),
                                    [&](DomainStyle const& style) { return style.domain == domain; });
    return found == std::end(kStyles) ? kStyles[0] : *found;
}

std::string className(vrl::EnumList::Domain domain) {
    std::string const name = styleOf(domain).name;
    return name.substr(0, name.find(' '));
}

// A line of two is a wide one with a white one on it.
std::string domainSheet() {
    std::string sheet;
    for (DomainStyle const& style : kStyles) {
        std::string const name = className(style.domain);
        double const width = style.twofold ? 3 * style.width : style.width;
        sheet += ".line." + name + "{stroke:" + style.colour + ";stroke-width:" + numberText(width);
        if (*style.dashes) sheet += std::string(";stroke-dasharray:") + style.dashes;
        sheet += "}\n.port." + name + "{fill:" + style.colour + "}\n.port." + name + ",.outline." + name + ",.tag." +
                 name + "{stroke:" + style.colour + "}\n.dot." + name + "{fill:" + style.colour + "}\n";
    }
    return sheet;
}

}  // namespace vrltool::draw
