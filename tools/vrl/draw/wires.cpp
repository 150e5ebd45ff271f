#include "draw/wires.h"

#include <algorithm>
#include <ostream>
#include <utility>

#include "draw/domain_style.h"
#include "draw/dot_text.h"

namespace vrltool::draw {

namespace {

using Domain = vrl::EnumList::Domain;

/// The domain of a line between two ends: the known one, if the other is not known.
Domain domainOf(Attachment const& a, Attachment const& b) {
    return a.domain == vrl::EnumList::Unknown ? b.domain : a.domain;
}

bool differ(Attachment const& a, Attachment const& b) {
    return a.domain != b.domain && a.domain != vrl::EnumList::Unknown && b.domain != vrl::EnumList::Unknown;
}

bool isElectrical(Attachment const& end) { return end.flow == Flow::kNone; }

// Wires without a flow hang below their block: their far end stays in the column of the block, and two blocks that have
// their places already are not moved.
std::string placing(Attachment const& from, Attachment const& to) {
    if (!isElectrical(from) || !isElectrical(to)) return "";
    return from.layer == 0 && to.layer == 0 ? ", constraint=false" : ", minlen=0";
}

void writeLine(std::ostream& os, std::string const& indent, Attachment const& a, Attachment const& b) {
    bool const turned = std::pair(a.flow, a.layer) > std::pair(b.flow, b.layer);
    Attachment const& from = turned ? b : a;
    Attachment const& to = turned ? a : b;
    os << indent << from.place << " -> " << to.place << " [" << lineAttributes(styleOf(domainOf(a, b)))
       << placing(from, to) << ", tooltip=" << tooltipText(from.text + " - " + to.text) << "];\n";
}

/// The point at which the lines of a node meet: where the wires with a flow pass through, or below.
Attachment writeHub(std::ostream& os, std::string const& indent, std::string const& id,
                    std::vector<Attachment> const& ends) {
    Attachment hub;
    hub.place = id;
    hub.layer = ends[0].layer + 1;
    for (Attachment const& end : ends) hub.layer = std::min(hub.layer, end.layer + 1);
    for (Attachment const& end : ends) hub.text += (hub.text.empty() ? "" : ", ") + end.text;
    bool const mixed = std::any_of(ends.begin(), ends.end(), [&](Attachment const& e) { return differ(ends[0], e); });
    os << indent << id << " [id=\"" << id
       << "\", class=\"junction\", shape=" << (mixed ? "diamond, width=0.16, height=0.16" : "point, width=0.08")
       << ", label=\"\", style=filled"
       << ", fillcolor=\"" << (mixed ? "#FFFFFF" : styleOf(ends[0].domain).colour) << "\", color=\""
       << (mixed ? "#000000" : styleOf(ends[0].domain).colour) << "\", tooltip=" << tooltipText(hub.text) << "];\n";
    return hub;
}

}  // namespace

void writeWires(std::ostream& os, std::string const& indent, std::string const& hub,
                std::vector<Attachment> const& ends) {
    if (ends.size() < 2) return;
    auto const isBoundary = [](Attachment const& end) { return end.boundary; };
    auto const boundary = std::find_if(ends.begin(), ends.end(), isBoundary);
    bool const star = std::count_if(ends.begin(), ends.end(), isBoundary) == 1;
    bool const same = std::none_of(ends.begin(), ends.end(), [&](Attachment const& e) { return differ(ends[0], e); });
    if (ends.size() == 2 && same) {
        writeLine(os, indent, ends[0], ends[1]);
    } else if (star && same) {
        for (Attachment const& end : ends)
            if (!end.boundary) writeLine(os, indent, end, *boundary);
    } else {
        Attachment const point = writeHub(os, indent, hub, ends);
        for (Attachment const& end : ends) writeLine(os, indent, end, point);
    }
}

}  // namespace vrltool::draw
