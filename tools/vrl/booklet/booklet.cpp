#include "booklet/booklet.h"

#include <algorithm>
#include <set>

#include "booklet/picture.h"
#include "booklet/preamble.h"
#include "booklet/tex_table.h"
#include "booklet/tex_text.h"
#include "system/temporary_folder.h"
#include "text/failure.h"
#include "text/number.h"
#include "text/table.h"
#include "vrllib/vrllib.h"

namespace vrltool::booklet {

namespace {

// The headings of a booklet; those of texstream begin with chapters as well.
constexpr int kChapter = 0;
constexpr int kSection = 1;
constexpr int kPart = 2;

/// Writes a booklet to a texstream. What comes from a plug-in goes through texText or texName.
class Writer {
public:
    Writer(texstream& target, FoundryFacts const& known) : tex(target), facts(known) {
        for (BlockFacts const& block : facts.blocks) kinds.insert(block.kind);
    }

    void writeTechnology();
    void writeOverview();
    void writeBlock(BlockFacts const& block);

private:
    std::ostream& os() { return tex.os(); }
    void heading(std::string const& title, int level, char const* need) {
        os() << "\n\\vrlneed{" << need << "}";
        tex.docHeader(title, level);
    }
    void chapter(std::string const& title) { tex.docHeader(title, kChapter); }
    void section(std::string const& title, char const* need) { heading(title, kSection, need); }
    void part(std::string const& title) { heading(title, kPart, "28mm"); }
    std::string linked(std::string const& kind) const;
    std::string width(std::optional<double> const& value) const;
    void writeFlows();
    void writeSections();
    void writeParameters(std::vector<ParameterFacts> const& parameters);
    void writeChoice(BlockFacts const& block);
    void writePorts(BlockFacts const& block);
    void writeInside(BlockFacts const& block);
    void writeViews(BlockFacts const& block);

    texstream& tex;
    FoundryFacts const& facts;
    std::set<std::string> kinds;
};

/// A kind, with a link to its section if it has one.
std::string Writer::linked(std::string const& kind) const {
    if (kinds.count(kind) == 0) return texName(kind);
    return "\\hyperref[bb:" + texLabel(kind) + "]{" + texName(kind) + "}";
}

std::string Writer::width(std::optional<double> const& value) const {
    return value ? texText(numberText(*value)) : "unknown";
}

void Writer::writeParameters(std::vector<ParameterFacts> const& parameters) {
    if (parameters.empty()) {
        os() << "It has no parameters.\n\n";
        return;
    }
    TexTable table({{'N', 0.20, "Parameter"},
                    {'N', 0.11, "Type"},
                    {'N', 0.14, "Default"},
                    {'N', 0.16, "Range"},
                    {'N', 0.10, "Unit"},
                    {'P', 0.29, "Description"}});
    for (ParameterFacts const& p : parameters) {
        std::string const spread = p.distribution.empty() ? "" : ", " + p.distribution;
        table.add({texName(p.name), texName(p.type), p.value.empty() ? "" : texText(p.value), texText(p.range + spread),
                   texText(p.unit), texText(p.description)});
    }
    table.write(os());
}

void Writer::writeFlows() {
    section("Process flows", "50mm");
    if (facts.flows.empty()) {
        os() << "The foundry names no process flow.\n\n";
        return;
    }
    os() << "The cross section that a flow makes depends on the width and the bend radius. The table has the one of a "
            "straight waveguide without an explicit width.\n\n";
    TexTable table({{'N', 0.3, "Process flow"}, {'N', 0.4, "Standard cross section"}, {'P', 0.3, "Standard width"}});
    for (FlowFacts const& flow : facts.flows)
        table.add({texName(flow.kind), texName(flow.section), flow.section.empty() ? "" : width(flow.width)});
    table.write(os());
    for (FlowFacts const& flow : facts.flows) {
        part("Process flow " + texName(flow.kind));
        writeParameters(flow.parameters);
    }
}

void Writer::writeSections() {
    section("Cross sections", "50mm");
    if (facts.sections.empty()) {
        os() << "The foundry names no cross section.\n\n";
        return;
    }
    TexTable table({{'N', 0.25, "Cross section"}, {'P', 0.2, "Standard width"}, {'P', 0.55, "Description"}});
    for (SectionFacts const& section : facts.sections)
        table.add({texName(section.kind), width(section.width), texText(section.description)});
    table.write(os());
    for (SectionFacts const& section : facts.sections) {
        part("Cross section " + texName(section.kind));
        writeParameters(section.parameters);
    }
}

void Writer::writeTechnology() {
    chapter("Technology");
    std::string const flow = facts.flow.empty() ? "" : " in the process flow \\textbf{" + texName(facts.flow) + "}";
    if (!facts.section.empty())
        os() << "Building blocks are made with the cross section \\textbf{" << texName(facts.section) << "}" << flow
             << " unless they say otherwise. ";
    os() << "Lengths are in the units of the parameters.\n\n";
    writeFlows();
    writeSections();
}

/// The names of the ports on some sides, in their order.
std::string portNames(BlockFacts const& block, std::initializer_list<Side> sides) {
    std::string text;
    std::size_t count = 0;
    constexpr std::size_t kMost = 8;
    for (PortFacts const& port : block.ports)
        if (std::find(sides.begin(), sides.end(), port.side) != sides.end() && ++count <= kMost)
            text += (text.empty() ? "" : ", ") + texName(port.name);
    return count > kMost ? text + ", " + std::to_string(count - kMost) + " more" : text;
}

void Writer::writeOverview() {
    chapter("Building blocks");
    if (facts.blocks.empty()) {
        os() << "The plug-in of the foundry has no building blocks.\n\n";
        return;
    }
    TexTable table({{'N', 0.28, "Building block"},
                    {'N', 0.19, "Inputs"},
                    {'N', 0.19, "Outputs"},
                    {'N', 0.26, "Electrical and other"},
                    {'P', 0.08, "Page"}});
    for (BlockFacts const& block : facts.blocks)
        table.add({linked(block.kind), portNames(block, {Side::kLeft}), portNames(block, {Side::kRight}),
                   portNames(block, {Side::kBelow, Side::kAbove}), "\\pageref{bb:" + texLabel(block.kind) + "}"});
    table.write(os());
    os() << "\nThe pictures show inputs on the left, outputs on the right, and electrical ports below. The lines show "
            "the domains:\\par\n\\smallskip\n";
    writeLineKey(os());
}

void Writer::writeChoice(BlockFacts const& block) {
    if (!block.description.empty()) os() << texText(block.description) << "\n\n";
    std::string text;
    if (block.composite) text = "A composite of " + counted(block.elements.size(), "element") + ".";
    if (!block.section.empty())
        text += (text.empty() ? "" : " ") + ("Cross section: \\textbf{" + texName(block.section) + "}.");
    if (!block.flow.empty())
        text += (text.empty() ? "" : " ") + ("Process flow: \\textbf{" + texName(block.flow) + "}.");
    if (!text.empty()) os() << text << "\n\n";
}

char const* directionOf(Side side) {
    switch (side) {
    case Side::kLeft:
        return "input";
    case Side::kRight:
        return "output";
    default:
        return "\\textendash{}";
    }
}

void Writer::writePorts(BlockFacts const& block) {
    part("Ports");
    if (block.ports.empty()) {
        os() << "It has no ports.\n\n";
        return;
    }
    TexTable table({{'N', 0.4, "Port"}, {'P', 0.3, "Domain"}, {'P', 0.3, "Direction"}});
    for (PortFacts const& port : block.ports)
        table.add({texName(port.name), texText(vrl::EnumList::getName(port.domain)), directionOf(port.side)});
    table.write(os());
}

void Writer::writeInside(BlockFacts const& block) {
    if (!block.composite) return;
    part("Elements inside");
    TexTable elements({{'N', 0.5, "Element"}, {'N', 0.5, "Kind"}});
    for (ElementFacts const& element : block.elements) elements.add({texName(element.name), linked(element.kind)});
    elements.write(os());
    part("Connections inside");
    TexTable nodes({{'N', 0.65, "Connected ports, each as element and port"}, {'P', 0.35, "Boundary"}});
    for (NodeFacts const& node : block.nodes) {
        std::string ports;
        for (std::string const& port : node.ports) ports += (ports.empty() ? "" : " \\textemdash{} ") + texName(port);
        nodes.add({ports, node.outside});
    }
    nodes.write(os());
}

void Writer::writeViews(BlockFacts const& block) {
    if (block.views.empty()) return;
    part("Views");
    TexTable table({{'N', 0.4, "View"}, {'P', 0.6, "As the block is made"}});
    for (ViewFacts const& view : block.views) table.add({texName(view.key), texText(view.description)});
    table.write(os());
}

void Writer::writeBlock(BlockFacts const& block) {
    section(texName(block.kind), "90mm");
    tex.label("bb:", texLabel(block.kind)).os() << "%\n";
    writeChoice(block);
    writePicture(os(), block);
    writePorts(block);
    part("Parameters");
    writeParameters(block.parameters);
    writeInside(block);
    writeViews(block);
}

}  // namespace

std::string bookletTex(FoundryFacts const& facts) {
    TemporaryFolder const folder;
    texstream tex((folder / "booklet.tex").c_str(), false);
    writePreamble(tex.os(), facts);
    Writer writer(tex, facts);
    writer.writeTechnology();
    writer.writeOverview();
    for (BlockFacts const& block : facts.blocks) writer.writeBlock(block);
    tex.close(true);
    if (!tex.os()) throw Failure(folder.path(), "cannot be written", "set TMPDIR to a folder with room");
    return folder.read("booklet.tex");
}

}  // namespace vrltool::booklet
