#include "draw/legend.h"

#include "draw/domain_style.h"
#include "draw/dot_text.h"

namespace vrltool::draw {

namespace {

constexpr std::size_t kTitleCharacters = 100;
constexpr std::size_t kNoteCharacters = 120;

// A border drawn at one side of a cell is the only line that a table can hold; a second cell below puts it at half
// height.
std::string lineSample(DomainStyle const& style) {
    std::string const sides = style.twofold ? "TB" : "B";
    return tableStart(0, 0) +
           "<TR><TD FIXEDSIZE=\"TRUE\" "
           "WIDTH=\"28\" HEIGHT=\"6\" BORDER=\"" +
           borderOf(style) + "\" SIDES=\"" + sides + "\" COLOR=\"" + style.colour + "\" STYLE=\"" + style.line +
           "\"></TD></TR><TR><TD FIXEDSIZE=\"TRUE\" WIDTH=\"28\" HEIGHT=\"4\"></TD></TR></TABLE>";
}

std::string boxSample(std::string const& look, char const* size) {
    return tableStart(0, 0, look + " COLOR=\"#444444\"") + "<TR><TD FIXEDSIZE=\"TRUE\" " + size + "></TD></TR></TABLE>";
}

/// The entries of a legend in one row, whose width is computed from its strings: left to itself it would spread over
/// the width of the notes below it.
class Entries {
public:
    void add(std::string const& sample, std::string const& text) {
        cells += "<TD>" + sample + "</TD><TD ALIGN=\"LEFT\">" + text + "</TD><TD WIDTH=\"6\"></TD>";
        width += 58 + 6 * text.size();
    }

    std::string table() const {
        if (cells.empty()) return cells;
        return tableStart(4, 0,
                          "ALIGN=\"LEFT\" BORDER=\"0\" FIXEDSIZE=\"TRUE\" WIDTH=\"" + std::to_string(width) +
                              "\" HEIGHT=\"26\"") +
               "<TR>" + cells + "</TR></TABLE>";
    }

private:
    std::string cells;
    std::size_t width = 8;
};

std::string legend(Occurring const& occurring) {
    Entries entries;
    for (auto const domain : occurring.domains) entries.add(lineSample(styleOf(domain)), styleOf(domain).name);
    char const* const wide = "WIDTH=\"20\" HEIGHT=\"8\"";
    if (occurring.openPort) entries.add(boxSample("BORDER=\"1\"", "WIDTH=\"5\" HEIGHT=\"9\""), "open port");
    if (occurring.foreignPort) entries.add("<I>name?</I>", "port that the block does not have");
    if (occurring.closedComposite) entries.add(boxSample("BORDER=\"2\" STYLE=\"ROUNDED\"", wide), "composite, closed");
    if (occurring.unknownKind)
        entries.add(boxSample("BORDER=\"1\" STYLE=\"ROUNDED,DASHED\"", wide), "stand-in: its kind is not loaded");
    return entries.table();
}

}  // namespace

std::string caption(Picture const& picture, Occurring const& occurring, std::vector<std::string> const& notes) {
    std::string rows;
    if (!picture.title.empty())
        rows += "<TR><TD ALIGN=\"LEFT\"><B>" + htmlText(picture.title, kTitleCharacters) + "</B></TD></TR>";
    std::string const entries = picture.legend ? legend(occurring) : "";
    if (!entries.empty()) rows += "<TR><TD ALIGN=\"LEFT\">" + entries + "</TD></TR>";
    for (std::string const& note : notes)
        rows += "<TR><TD ALIGN=\"LEFT\"><I>" + htmlText(note, kNoteCharacters) + "</I></TD></TR>";
    if (rows.empty()) return rows;
    return tableStart(2, 1) + rows + "</TABLE>";
}

}  // namespace vrltool::draw
