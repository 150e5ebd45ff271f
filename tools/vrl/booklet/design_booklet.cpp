#include "booklet/design_booklet.h"

#include <algorithm>

#include "booklet/circuit_picture.h"
#include "booklet/findings_tables.h"
#include "booklet/sections.h"
#include "booklet/tex_text.h"
#include "text/phrases.h"
#include "text/table.h"

namespace vrltool::booklet {

namespace {

constexpr std::size_t kMostPaths = 12;
constexpr std::size_t kMostPorts = 40;    // of a net
constexpr std::size_t kMostLetters = 80;  // of a port, and of a path

/// Writes the booklet of a design. What comes from the file goes through texText or texName.
class Writer : private Sections {
public:
    Writer(texstream& target, DesignFacts const& known) : Sections(target), facts(known) {}

    void writeAll();

private:
    void top(char const* title, std::size_t rows, std::function<void()> const& write);
    void writePicture(CircuitFacts const& circuit);
    void writeParameters();
    void writeElements(CircuitFacts const& circuit);
    void writeNets(CircuitFacts const& circuit);
    void writeBoundary(CircuitFacts const& circuit);
    void writeKinds();
    void writeInside(InsideFacts const& inside);

    DesignFacts const& facts;
};

std::string kindText(PlacedFacts const& element) {
    if (element.kind.empty()) return "(no block)";
    return cellName(element.kind) + (element.standIn ? " (not loaded)" : "");
}

/// A value, and nothing as a word.
std::string valueText(std::string const& value) { return value.empty() ? "none" : cellText(value); }

/// Ports in a row, the first ones of many: a cell is not higher than a page.
std::string portsText(std::vector<std::string> const& ports) {
    std::string text;
    for (std::size_t i = 0; i < std::min(ports.size(), kMostPorts); ++i)
        text += (text.empty() ? "" : " \\textemdash{} ") + texName(shortened(ports[i], kMostLetters));
    if (ports.size() > kMostPorts) text += " and " + std::to_string(ports.size() - kMostPorts) + " more";
    return text.empty() ? "nothing" : text;
}

TexTable elementTable(CircuitFacts const& circuit) {
    TexTable table({{'N', 0.22, "Element"},
                    {'N', 0.22, "Kind"},
                    {'N', 0.22, "Parameter"},
                    {'P', 0.19, "Value"},
                    {'P', 0.15, "Default"}});
    for (PlacedFacts const& element : circuit.elements) {
        std::string name = cellName(element.name), kind = kindText(element);
        table.beginGroup();
        if (element.settings.empty()) table.add({name, kind, "", "", ""});
        for (SettingFacts const& setting : element.settings) {
            std::string const value = valueText(setting.value);
            table.add({name, kind, cellName(setting.name), setting.differs ? "\\textbf{" + value + "}" : value,
                       setting.differs ? valueText(setting.usual) : ""});
            name.clear();
            kind.clear();
        }
    }
    return table;
}

/// A section about the whole design, with that many rows of tables.
void Writer::top(char const* title, std::size_t rows, std::function<void()> const& write) {
    whole(rows, [&] {
        section(title, "40mm");
        write();
    });
}

void Writer::writePicture(CircuitFacts const& circuit) {
    if (circuit.sheets.empty())
        os() << "This inside is not drawn, since the pictures before it have many elements; "
                "\\texttt{vrl draw} draws it.\n\n";
    writeSheets(os(), circuit.sheets);
}

void Writer::writeParameters() {
    TexTable table({{'N', 0.4, "Parameter"}, {'P', 0.6, "Value"}});
    for (auto const& parameter : facts.parameters) table.add({cellName(parameter.name), cellText(parameter.value)});
    write(table);
}

void Writer::writeElements(CircuitFacts const& circuit) {
    if (circuit.elements.empty()) {
        os() << "There are no elements.\n\n";
        return;
    }
    os() << "A value in bold is not the one that a new element of its kind has, which is beside it.\n\n";
    write(elementTable(circuit));
}

void Writer::writeNets(CircuitFacts const& circuit) {
    if (circuit.nets.empty() && circuit.dangling.empty()) {
        os() << "No ports are connected.\n\n";
        return;
    }
    TexTable table({{'P', 0.08, "Net"}, {'N', 0.92, "Connected ports, each as element and port"}});
    std::size_t number = 0;
    for (auto const& net : circuit.nets) table.add({std::to_string(++number), portsText(net)});
    for (std::string const& port : circuit.dangling)
        table.add({std::to_string(++number), cellName(port) + " (no such element)"});
    write(table);
}

void Writer::writeBoundary(CircuitFacts const& circuit) {
    bool const named = std::any_of(circuit.boundary.begin(), circuit.boundary.end(),
                                   [](BoundaryFacts const& place) { return !place.names.empty(); });
    std::vector<TexTable::Column> columns{{'P', 0.14, "List"}, {'P', 0.1, "Place"}, {'N', named ? 0.5 : 0.76, "Ports"}};
    if (named) columns.push_back({'N', 0.26, "Name outside"});
    TexTable table(columns);
    for (BoundaryFacts const& place : circuit.boundary) {
        std::vector<std::string> cells{place.list, std::to_string(place.place), portsText(place.ports)};
        std::string names;
        for (std::string const& name : place.names) names += (names.empty() ? "" : ", ") + cellName(name);
        if (named) cells.push_back(names);
        table.add(cells);
    }
    write(table);
}

void Writer::writeKinds() {
    TexTable table(
        {{'N', 0.35, "Kind"}, {'N', 0.3, "Foundry"}, {'P', 0.12, "Elements"}, {'P', 0.23, "Inside composites"}});
    for (KindFacts const& kind : facts.kinds)
        table.add({cellName(kind.kind), cellName(kind.foundry), std::to_string(kind.count),
                   kind.inside == 0 ? "" : std::to_string(kind.inside)});
    write(table);
}

std::size_t elementRows(CircuitFacts const& circuit) {
    std::size_t rows = 1;
    for (PlacedFacts const& element : circuit.elements) rows += std::max<std::size_t>(element.settings.size(), 1);
    return rows;
}

std::size_t rowsOf(CircuitFacts const& circuit) {
    return elementRows(circuit) + circuit.nets.size() + circuit.dangling.size() + circuit.boundary.size();
}

/// The paths after the first, the first ones of many.
std::string othersText(std::vector<std::string> const& paths) {
    std::vector<std::string> others;
    for (auto path = paths.begin() + 1; path != paths.end(); ++path) others.push_back(shortened(*path, kMostLetters));
    return texText(listText(others, kMostPaths));
}

void Writer::writeInside(InsideFacts const& inside) {
    whole(rowsOf(inside.circuit), [&] {
        std::string const first = shortened(inside.paths.front(), kMostLetters);
        section("Inside " + texName(first) + ", " + cellName(inside.kind), "60mm");
        if (inside.paths.size() > 1) os() << "The same is inside " << othersText(inside.paths) << ".\n\n";
        writePicture(inside.circuit);
        part("Elements");
        writeElements(inside.circuit);
        part("Nets");
        writeNets(inside.circuit);
        if (inside.circuit.boundary.empty()) return;
        part("Boundary");
        writeBoundary(inside.circuit);
    });
}

void Writer::writeAll() {
    CircuitFacts const& circuit = facts.circuit;
    top("Circuit", 0, [&] { writePicture(circuit); });
    if (!facts.parameters.empty()) top("Parameters of the design", facts.parameters.size(), [&] { writeParameters(); });
    section("Elements", "60mm");
    writeElements(circuit);
    top("Nets", circuit.nets.size() + circuit.dangling.size(), [&] { writeNets(circuit); });
    if (!circuit.boundary.empty()) top("Boundary", circuit.boundary.size(), [&] { writeBoundary(circuit); });
    if (!facts.kinds.empty()) top("Kinds", facts.kinds.size(), [&] { writeKinds(); });
    top("Findings", 2 * facts.report.findings.size() + 1, [&] { writeFindings(os(), facts.report); });
    for (InsideFacts const& inside : facts.insides) writeInside(inside);
    if (facts.leftOut > 0)
        os() << "The insides of " << counted(facts.leftOut, "more composite") << " are left out.\n\n";
}

/// "Netlist of 10 elements, 8 nets and 6 places at the boundary".
std::string subtitleOf(DesignFacts const& facts) {
    if (facts.type != "Netlist" && facts.circuit.elements.size() == 1) return "block of the kind " + facts.type;
    return facts.type + " of " +
           listText({counted(facts.circuit.elements.size(), "element"), counted(facts.circuit.nets.size(), "net"),
                     counted(facts.circuit.boundary.size(), "place") + " at the boundary"});
}

std::vector<std::string> linesOf(DesignFacts const& facts) {
    std::vector<std::string> lines{counted(facts.report.count(Severity::kError), "error"),
                                   counted(facts.report.count(Severity::kWarning), "warning"),
                                   counted(facts.report.count(Severity::kNote), "note")};
    if (!facts.report.excepted.empty()) lines.push_back(counted(facts.report.excepted.size(), "excepted finding"));
    return lines;
}

}  // namespace

std::string bookletTex(DesignFacts const& facts) {
    TitlePage const title{facts.title, subtitleOf(facts), "Circuit, elements, nets and findings", linesOf(facts),
                          false};
    return bookletText(title, [&](texstream& tex) { Writer(tex, facts).writeAll(); });
}

}  // namespace vrltool::booklet
