#include "booklet/picture.h"

#include <algorithm>
#include <ostream>

#include "booklet/tex_text.h"

namespace vrltool {

namespace {

// All lengths are in mm.
constexpr int kStub = 9;   // from the box to the name of a port
constexpr int kPitch = 6;  // between ports on the left or on the right
constexpr int kLeastWidth = 40;
constexpr int kLeastHeight = 16;
constexpr std::size_t kMostInRow = 14;
constexpr std::size_t kMostLetters = 18;

/// The ports on one side: their names as they are drawn, and their styles. Too many end in a note.
struct Row {
    struct Entry {
        std::string name;
        char const* style;
    };
    std::vector<Entry> entries;
    int pitch = kPitch;

    int length() const { return static_cast<int>(entries.size()) * pitch; }
};

char const* styleOf(vrl::EnumList::Domain domain) {
    switch (domain) {
    case vrl::EnumList::Optics:
        return "optical";
    case vrl::EnumList::DC:
        return "direct";
    case vrl::EnumList::RF:
        return "radio";
    default:
        return "other";
    }
}

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
    if (!upright && row.entries.size() <= 5) row.pitch = std::max(12, static_cast<int>(2 * longest) + 4);
    return row;
}

/// The middle of the entry at a place, counted from the middle of the row; in half millimetres to stay whole.
std::string middle(Row const& row, std::size_t place, bool downwards) {
    int const halves = (2 * static_cast<int>(place) + 1) * row.pitch - row.length();
    int const turned = downwards ? -halves : halves;
    return std::to_string(turned / 2) + (turned % 2 == 0 ? "" : ".5");
}

std::string tenth(int halves) { return std::to_string(halves / 2) + (halves % 2 == 0 ? "" : ".5"); }

void writeSide(std::ostream& os, Row const& row, int width, int sign) {
    for (std::size_t i = 0; i < row.entries.size(); ++i) {
        Row::Entry const& entry = row.entries[i];
        std::string const minus = sign < 0 ? "-" : "";
        std::string const y = middle(row, i, true);
        os << "\\draw[" << entry.style << "] (" << minus << tenth(width) << ',' << y << ") -- (" << minus
           << tenth(width + 2 * kStub) << ',' << y << ") node[port, anchor=" << (sign < 0 ? "east" : "west") << "] {"
           << entry.name << "};\n";
    }
}

/// Names that do not fit beside each other are turned.
void writeLevel(std::ostream& os, Row const& row, int height, int sign) {
    bool const turned = row.pitch == kPitch;
    char const* const anchor = turned     ? (sign < 0 ? "east, rotate=90" : "west, rotate=90")
                               : sign < 0 ? "north"
                                          : "south";
    for (std::size_t i = 0; i < row.entries.size(); ++i) {
        Row::Entry const& entry = row.entries[i];
        std::string const minus = sign < 0 ? "-" : "";
        std::string const x = middle(row, i, false);
        os << "\\draw[" << entry.style << "] (" << x << ',' << minus << tenth(height) << ") -- (" << x << ',' << minus
           << tenth(height + kStub) << ") node[port, anchor=" << anchor << "] {" << entry.name << "};\n";
    }
}

}  // namespace

void writePicture(std::ostream& os, BlockFacts const& block) {
    Row const left = rowOf(block, Side::kLeft), right = rowOf(block, Side::kRight);
    Row const below = rowOf(block, Side::kBelow), above = rowOf(block, Side::kAbove);
    int const width = std::max({kLeastWidth, below.length() + 6, above.length() + 6});
    int const height = std::max({kLeastHeight, left.length() + 4, right.length() + 4});
    os << "\\begin{center}\n\\begin{tikzpicture}[x=1mm, y=1mm]\n"
       << "\\node[" << (block.composite ? "composite" : "block") << ", minimum width=" << width
       << "mm, minimum height=" << height << "mm, text width=" << width - 6 << "mm] {"
       << texName(shortened(block.kind, 48)) << "};\n";
    writeSide(os, left, width, -1);
    writeSide(os, right, width, 1);
    writeLevel(os, below, height, -1);
    writeLevel(os, above, height, 1);
    os << "\\end{tikzpicture}\n\\end{center}\n";
}

void writeLineKey(std::ostream& os) {
    struct Line {
        char const* style;
        char const* meaning;
    };
    constexpr Line kLines[] = {{"optical", "optical"}, {"direct", "DC"}, {"radio", "RF"}, {"other", "other"}};
    for (Line const& line : kLines)
        os << "\\tikz[baseline=-0.6ex]{\\draw[" << line.style << "] (0,0) -- (9mm,0);}~" << line.meaning << "\\quad\n";
    os << "\\tikz[baseline=-0.6ex]{\\node[composite, minimum width=9mm, minimum height=4mm] {};}~composite\n\n";
}

}  // namespace vrltool
