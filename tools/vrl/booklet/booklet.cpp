#include "booklet/booklet.h"

#include <algorithm>
#include <set>

#include "booklet/circuit_picture.h"
#include "booklet/picture.h"
#include "booklet/sections.h"
#include "booklet/tex_text.h"
#include "text/number.h"
#include "text/table.h"
#include "vrllib/vrllib.h"

namespace vrltool::booklet {

namespace {

constexpr std::size_t kMostBeside = 10;  // ports
constexpr double kInsideScale = 0.6;     // of pictures; a block with a small inside fits on a page

/// Writes the booklet of a foundry. What comes from a plug-in goes through texText or texName.
class Writer : private Sections {
public:
    Writer(texstream& target, FoundryFacts const& known) : Sections(target), facts(known) {
        for (BlockFacts const& block : facts.blocks) kinds.insert(block.kind);
    }

    void writeTechnology();
    void writeOverview();
    void writeBlock(BlockFacts const& block);

private:
    std::string linked(std::string const& kind) const;
    std::string width(std::optional<double> const& value) const;
    void writeFlows();
    void writeSections();
    void writeParameters(std::vector<ParameterFacts> const& parameters);
    void writeChoice(BlockFacts const& block);
    void writePorts(BlockFacts const& block);
    void writeInside(BlockFacts const& block);
    void writeViews(BlockFacts const& block);

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
    write(table);
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
    write(table);
    for (FlowFacts const& flow : facts.flows)
        whole(flow.parameters.size(), [&] {
            part("Process flow " + texName(flow.kind));
            writeParameters(flow.parameters);
        });
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
    write(table);
    for (SectionFacts const& section : facts.sections)
        whole(section.parameters.size(), [&] {
            part("Cross section " + texName(section.kind));
            writeParameters(section.parameters);
        });
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
    write(table);
    os() << "\nThe pictures show inputs on the left, outputs on the right, and electrical ports below. The lines show "
            "the domains:\\par\n\\smallskip\n";
    writeLineKey(os(), facts.blocks);
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

TexTable portTable(BlockFacts const& block) {
    TexTable table({{'N', 0.4, "Port"}, {'P', 0.3, "Domain"}, {'P', 0.3, "Direction"}});
    for (PortFacts const& port : block.ports)
        table.add({texName(port.name), texText(vrl::EnumList::getName(port.domain)), directionOf(port.side)});
    return table;
}

/// The picture, and its ports: beside it if they are few.
void Writer::writePorts(BlockFacts const& block) {
    bool const beside = !block.ports.empty() && block.ports.size() <= kMostBeside;
    if (beside) os() << "\\vrlbeside{%\n";
    writePicture(os(), block);
    if (beside) {
        os() << "}{%\n";
        write(portTable(block));
        os() << "}\n";
        return;
    }
    part("Ports");
    if (block.ports.empty())
        os() << "It has no ports.\n\n";
    else
        write(portTable(block));
}

void Writer::writeInside(BlockFacts const& block) {
    if (!block.composite) return;
    part("Inside");
    writeSheets(os(), block.inside, kInsideScale);
    TexTable elements({{'N', 0.5, "Element inside"}, {'N', 0.5, "Kind"}});
    for (ElementFacts const& element : block.elements) elements.add({texName(element.name), linked(element.kind)});
    write(elements);
    TexTable nodes({{'N', 0.65, "Connected ports inside, each as element and port"}, {'P', 0.35, "Boundary"}});
    for (NodeFacts const& node : block.nodes) {
        std::string ports;
        for (std::string const& port : node.ports) ports += (ports.empty() ? "" : " \\textemdash{} ") + texName(port);
        nodes.add({ports, node.outside});
    }
    write(nodes);
}

void Writer::writeViews(BlockFacts const& block) {
    if (block.views.empty()) return;
    part("Views");
    TexTable table({{'N', 0.4, "View"}, {'P', 0.6, "As the block is made"}});
    for (ViewFacts const& view : block.views) table.add({texName(view.key), texText(view.description)});
    write(table);
}

std::size_t rowsOf(BlockFacts const& block) {
    return block.ports.size() + block.parameters.size() + block.elements.size() + block.nodes.size() +
           block.views.size();
}

void Writer::writeBlock(BlockFacts const& block) {
    whole(rowsOf(block), [&] {
        section(texName(block.kind), "90mm");
        label("bb:", texLabel(block.kind));
        writeChoice(block);
        writePorts(block);
        part("Parameters");
        writeParameters(block.parameters);
        writeInside(block);
        writeViews(block);
    });
}

}  // namespace

std::string bookletTex(FoundryFacts const& facts) {
    TitlePage const title{facts.name,
                          facts.description,
                          "Building blocks, process flows and cross sections",
                          {counted(facts.blocks.size(), "building block"), counted(facts.flows.size(), "process flow"),
                           counted(facts.sections.size(), "cross section")},
                          true};
    return bookletText(title, [&](texstream& tex) {
        Writer writer(tex, facts);
        writer.writeTechnology();
        writer.writeOverview();
        for (BlockFacts const& block : facts.blocks) writer.writeBlock(block);
    });
}

}  // namespace vrltool::booklet
