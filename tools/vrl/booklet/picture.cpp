#include "booklet/picture.h"

#include <algorithm>
#include <map>
#include <ostream>

#include "booklet/tex_text.h"
#include "draw/domain_style.h"

namespace vrltool::booklet {

namespace {

// All lengths are in mm.
constexpr int kStub = 10;  // from the box to the name of a port
constexpr int kPitch = 6;  // between ports on the left or on the right
constexpr int kLeastWidth = 40;
constexpr int kLeastHeight = 16;
constexpr int kWidestRow = 72;  // of names beside each other
constexpr std::size_t kMostInRow = 14;
constexpr std::size_t kMostLetters = 18;

/// The ports on one side: their names as they are drawn, and their styles. Too many end in a note.
struct Row {
    struct Entry {
        std::string name;
        std::string style;
    };
    std::vector<Entry> entries;
    int pitch = kPitch;

    int length() const { return static_cast<int>(entries.size()) * pitch; }
};

std::string styleOf(vrl::EnumList::Domain domain) { return "vrl line " + draw::className(domain); }

Row rowOf(BlockFacts const& block, Side side) {
    Row row;
    std::size_t count = 0;
    std::size_t longest = 0;
    for (PortFacts const& port : block.ports) {
        if (port.side != side || ++count > kMostInRow) continue;
        std::string const name = shortened(port.name, kMostLetters);
        longest = std::max(longest, name.size());
        row.entries.push_back({texText(name), styleOf(port.domain)});
    }
    if (count > kMostInRow) row.entries.back() = {std::to_string(count - kMostInRow + 1) + " more", "hidden"};
    bool const upright = side == Side::kLeft || side == Side::kRight;
    int const pitch = std::max(12, static_cast<int>(2 * longest) + 4);
    if (!upright && pitch * static_cast<int>(row.entries.size()) <= kWidestRow) row.pitch = pitch;
    return row;
}

/// The middle of the entry at a place, from the middle of the row. Pitches are even.
int middle(Row const& row, std::size_t place) {
    return (static_cast<int>(place) * 2 + 1 - static_cast<int>(row.entries.size())) * row.pitch / 2;
}

/// `x` is where the box ends; to the left if it is negative.
void writeSide(std::ostream& os, Row const& row, int x) {
    int const end = x < 0 ? x - kStub : x + kStub;
    for (std::size_t i = 0; i < row.entries.size(); ++i) {
        int const y = -middle(row, i);
        os << "\\path[" << row.entries[i].style << "] (" << x << ',' << y << ") -- (" << end << ',' << y
           << ") node[port, anchor=" << (x < 0 ? "east" : "west") << "] {" << row.entries[i].name << "};\n";
    }
}

/// `y` is where the box ends; below if it is negative. Names that do not fit beside each other are turned.
void writeLevel(std::ostream& os, Row const& row, int y) {
    int const end = y < 0 ? y - kStub / 2 : y + kStub / 2;
    char const* const level = y < 0 ? "north" : "south";
    char const* const turned = y < 0 ? "east, rotate=90" : "west, rotate=90";
    for (std::size_t i = 0; i < row.entries.size(); ++i) {
        int const x = middle(row, i);
        os << "\\path[" << row.entries[i].style << "] (" << x << ',' << y << ") -- (" << x << ',' << end
           << ") node[port, anchor=" << (row.pitch == kPitch ? turned : level) << "] {" << row.entries[i].name
           << "};\n";
    }
}

}  // namespace

void writePicture(std::ostream& os, BlockFacts const& block) {
    Row const left = rowOf(block, Side::kLeft), right = rowOf(block, Side::kRight);
    Row const below = rowOf(block, Side::kBelow), above = rowOf(block, Side::kAbove);
    int const width = std::max({kLeastWidth, below.length() + 6, above.length() + 6});
    int const height = std::max({kLeastHeight, left.length() + 4, right.length() + 4});
    os << "\\begin{vrlpicture}\n"
       << "\\node[" << (block.composite ? "composite" : "block") << ", minimum width=" << width
       << "mm, minimum height=" << height << "mm, text width=" << width - 6 << "mm] {"
       << texName(shortened(block.kind, 48)) << "};\n";
    writeSide(os, left, -width / 2);
    writeSide(os, right, width / 2);
    writeLevel(os, below, -height / 2);
    writeLevel(os, above, height / 2);
    os << "\\end{vrlpicture}\n";
}

void writeLineKey(std::ostream& os, std::vector<BlockFacts> const& blocks) {
    std::map<vrl::EnumList::Domain, std::string> names;
    bool composite = false;
    for (BlockFacts const& block : blocks) {
        composite = composite || block.composite;
        for (PortFacts const& port : block.ports)
            names[draw::styleOf(port.domain).domain] = draw::styleOf(port.domain).name;
    }
    for (auto const& [domain, name] : names)
        os << "\\tikz[baseline=-0.6ex]{\\path[" << styleOf(domain) << "] (0,0) -- (9mm,0);}~" << name << "\\quad\n";
    if (composite)
        os << "\\tikz[baseline=-0.6ex]{\\node[composite, minimum width=9mm, minimum height=4mm] {};}~composite\n";
    os << '\n';
}

}  // namespace vrltool::booklet
