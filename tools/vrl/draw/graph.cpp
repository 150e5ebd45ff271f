#include "draw/graph.h"

#include <algorithm>
#include <ostream>
#include <sstream>

#include "draw/domain_style.h"
#include "draw/dot_text.h"
#include "draw/legend.h"
#include "draw/level.h"

namespace vrltool::draw {

namespace {

// Past these numbers Graphviz would take minutes for curves, and for lines with bends.
constexpr std::size_t kManyElements = 300;
constexpr std::size_t kVeryManyElements = 2000;
constexpr std::size_t kEndCharacters = 30;

constexpr char kFonts[] = "    node [shape=plain, fontname=\"Helvetica,Arial,sans-serif\", fontsize=10];\n"
                          "    edge [dir=none, arrowhead=none, arrowtail=none];\n";

constexpr char kArrow[] = "shape=cds, height=0.25, margin=\"0.08,0.03\"";
constexpr char kBox[] = "shape=box, style=rounded, height=0.25, margin=\"0.08,0.03\"";

/// What makes Graphviz quicker and a little less careful with a large picture.
std::string haste(std::size_t elements) {
    if (elements <= kManyElements) return {};
    return std::string(", splines=") + (elements > kVeryManyElements ? "line" : "polyline") +
           ", nslimit=2, nslimit1=2, mclimit=0.5";
}

/// Writes one picture.
class Drawing {
public:
    Drawing(Picture const& p, Selection const& s) : picture(p), selection(s) {}

    DotPicture of(Circuit const& circuit);

private:
    void writeLevel(Level const& level);
    void writeBlock(Level const& level, std::size_t element, Connected const& connected);
    void writeFrame(Level const& level, std::size_t element, Connected const& connected);
    void writeRails(Level const& inside, Connected const& connected);
    void writeOrder(Level const& inside);
    void writeEnds(std::vector<EndLabel> const& labels, std::string const& look);
    void writeRank(std::vector<EndLabel> const& labels, char const* rank);
    void openFrame(std::string const& id);
    void closeFrame();
    void writeCuts(Level const& level);
    void note(Level const& level, std::size_t element, Connected const& connected);
    std::ostream& line() { return os << indent; }

    Picture const& picture;
    Selection const& selection;
    Occurring occurring;
    std::size_t drawn = 0;
    std::string indent = "    ";
    std::ostringstream os;
};

void Drawing::note(Level const& level, std::size_t place, Connected const& connected) {
    Element const& element = level.circuit.elements[place];
    for (std::size_t i = 0; i < element.ports.size(); ++i) {
        occurring.domains.insert(styleOf(element.ports[i].domain).domain);
        occurring.openPort |= !connected[i];
        occurring.foreignPort |= !element.ports[i].declared;
    }
    occurring.unknownKind |= isUnknown(element);
    occurring.closedComposite |= !level.isOpen(place) && !isUnknown(element) && isComposite(element);
    ++drawn;
}

void Drawing::writeBlock(Level const& level, std::size_t place, Connected const& connected) {
    Element const& element = level.circuit.elements[place];
    std::string const id = level.elementId(place);
    line() << id << " [id=\"" << id << "\", class=\"element\", tooltip=" << tooltipText(fullText(element))
           << ", label=<" << blockTable(element, connected, level.tagsOf(place), picture.parameters) << ">];\n";
}

// A frame with electrical ports has them in its own title, at its lower edge; the title above is that of a second frame
// inside, which is not seen.
void Drawing::writeFrame(Level const& level, std::size_t place, Connected const& connected) {
    Element const& element = level.circuit.elements[place];
    std::string const id = level.elementId(place);
    std::string const foot = footTable(element, connected, level.tagsOf(place));
    std::string const top = ", labelloc=t, labeljust=l, label=<" + frameTitle(element, picture.parameters) + ">];\n";
    Level const inside(level, place);
    openFrame(id);
    line() << "graph [id=\"" << id << "\", class=\"frame\", style=\"rounded" << (isUnknown(element) ? ",dashed" : "")
           << "\", color=\"#444444\", bgcolor=\"" << (level.frame ? "#FFFFFF" : "#FAFAF7")
           << "\", peripheries=1, margin=6, tooltip=" << tooltipText(fullText(element))
           << (foot.empty() ? top : ", labelloc=b, labeljust=c, label=<" + foot + ">];\n");
    if (!foot.empty()) {
        openFrame(id + "_body");
        line() << "graph [id=\"" << id << "_body\", class=\"body\", peripheries=0, margin=6, tooltip=\" \"" << top;
    }
    writeRails(inside, connected);
    if (inside.circuit.elements.empty())
        line() << inside.prefix << "empty [class=\"empty\", fontcolor=\"#555555\", label=\"nothing inside\"];\n";
    writeLevel(inside);
    writeOrder(inside);
    if (!foot.empty()) closeFrame();
    closeFrame();
}

void Drawing::openFrame(std::string const& id) {
    line() << "subgraph cluster_" << id << " {\n";
    indent += "    ";
}

void Drawing::closeFrame() {
    indent.resize(indent.size() - 4);
    line() << "}\n";
}

// The ports of a frame at its left and right are a node of the picture for each side.
void Drawing::writeRails(Level const& inside, Connected const& connected) {
    for (Side const side : {Side::kLeft, Side::kRight}) {
        std::string const rail = railTable(*inside.frame, connected, side);
        std::string const id = inside.prefix + wordsOf(side).id;
        if (!rail.empty())
            line() << id << " [id=\"" << id << "\", class=\"ports\", tooltip=" << tooltipText(fullText(*inside.frame))
                   << ", label=<" << rail << ">];\n";
    }
}

// Where there are no wires, lines that nobody sees keep what is inside of a frame between its edges.
void Drawing::writeOrder(Level const& inside) {
    for (std::size_t i = 0; i < inside.circuit.elements.size(); ++i) {
        Element const& element = inside.circuit.elements[i];
        Connected const connected = connectedPorts(inside.circuit, element);
        for (Side const side : {Side::kLeft, Side::kRight}) {
            if (portsOn(*inside.frame, side).empty() || isConnectedAt(element, connected, side)) continue;
            std::string const edge = inside.prefix + wordsOf(side).id;
            std::string const thing = inside.handle(i, side);
            line() << (side == Side::kLeft ? edge + " -> " + thing : thing + " -> " + edge)
                   << " [style=invis, weight=0];\n";
        }
    }
}

void Drawing::writeEnds(std::vector<EndLabel> const& labels, std::string const& look) {
    for (EndLabel const& label : labels)
        line() << label.id << " [id=\"" << label.id << "\", class=\"boundary\", " << look << ", color=\""
               << styleOf(label.domain).colour << "\", tooltip=" << tooltipText(label.tooltip) << ", label=<"
               << htmlText(label.text, kEndCharacters) << ">];\n";
}

void Drawing::writeRank(std::vector<EndLabel> const& labels, char const* rank) {
    if (labels.empty()) return;
    line() << "{ rank=" << rank << ";";
    for (EndLabel const& label : labels) os << " " << label.id << ";";
    os << " }\n";
}

void Drawing::writeCuts(Level const& level) {
    for (EndLabel const& label : level.cuts)
        line() << label.id << " [id=\"" << label.id << "\", class=\"cut\", tooltip=" << tooltipText(label.tooltip)
               << ", label=<<FONT COLOR=\"#555555\" POINT-SIZE=\"9\"><I>" << htmlText(label.text, kEndCharacters)
               << "</I></FONT>>];\n";
}

void Drawing::writeLevel(Level const& level) {
    for (std::size_t i = 0; i < level.circuit.elements.size(); ++i) {
        if (!level.isShown(i)) continue;
        Connected const connected = connectedPorts(level.circuit, level.circuit.elements[i]);
        note(level, i, connected);
        if (level.isOpen(i))
            writeFrame(level, i, connected);
        else
            writeBlock(level, i, connected);
    }
    writeEnds(level.inputs, kArrow);
    writeEnds(level.outputs, kArrow);
    writeEnds(level.contacts, kBox);
    if (!level.frame) writeRank(level.inputs, "source");
    if (!level.frame) writeRank(level.outputs, "sink");
    writeCuts(level);
    for (auto const& [node, ends] : level.wires)
        writeWires(os, indent, level.prefix + "n" + std::to_string(node), ends);
}

DotPicture Drawing::of(Circuit const& circuit) {
    writeLevel(Level(circuit, selection));
    std::string const label = caption(picture, occurring, selection.notes);
    std::ostringstream whole;
    whole << "digraph circuit {\n    graph [rankdir=LR, nodesep=0.3, ranksep=0.45, "
             "fontname=\"Helvetica,Arial,sans-serif\""
          << ", fontsize=10, labelloc=b, labeljust=l, tooltip=\" \"" << haste(drawn);
    if (!label.empty()) whole << ", label=<" << label << ">";
    whole << "];\n" << kFonts << os.str() << "}\n";
    return {whole.str(), occurring.domains};
}

}  // namespace

DotPicture dotPicture(Circuit const& circuit, Picture const& picture, Selection const& selection) {
    return Drawing(picture, selection).of(circuit);
}

}  // namespace vrltool::draw
