#include "draw/domain_style.h"

#include <algorithm>
#include <iterator>

#include "text/number.h"

namespace vrltool::draw {

namespace {

using Domains = vrl::EnumList;

constexpr DomainStyle kStyles[] = {
    {Domains::Unknown, "unknown domain", "#6B6B6B", "solid", 1.0, false},
    {Domains::Signal, "signal", "#7A3B8F", "dashed", 1.0, true},
    {Domains::Optics, "optics", "#0072B2", "solid", 1.8, false},
    {Domains::DC, "DC", "#D55E00", "dashed", 1.5, false},
    {Domains::RF, "RF", "#00795A", "dotted", 2.2, false},
    {Domains::Acoustic, "acoustic", "#A6761D", "solid", 1.0, true},
    {Domains::Mechanic, "mechanic", "#000000", "dotted", 1.2, true},
    {Domains::Fluidics, "fluidics", "#B3477D", "solid", 3.0, false},
};

}  // namespace

DomainStyle const& styleOf(vrl::EnumList::Domain domain) {
    auto const found = std::find_if(std::begin(kStyles), std::end(kStyles),
                                    [&](DomainStyle const& style) { return style.domain == domain; });
    return found == std::end(kStyles) ? kStyles[0] : *found;
}

std::string lineAttributes(DomainStyle const& style) {
    std::string const colour = style.colour;
    std::string const pens = style.twofold ? colour + ":transparent:" + colour : colour;
    std::string const word = std::string(style.name).substr(0, std::string(style.name).find(' '));
    return "class=\"" + word + "\", color=\"" + pens + "\", style=" + style.line +
           ", penwidth=" + numberText(style.width);
}

std::string borderOf(DomainStyle const& style) { return style.width < 1.4 ? "1" : style.width < 2.5 ? "2" : "3"; }

}  // namespace vrltool::draw
