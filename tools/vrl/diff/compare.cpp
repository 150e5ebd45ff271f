#include "diff/compare.h"

#include <algorithm>
#include <set>

#include "diff/boundary.h"
#include "diff/connections.h"
#include "diff/imported_notes.h"
#include "diff/matching.h"
#include "diff/properties.h"
#include "diff/wiring.h"
#include "text/natural_order.h"
#include "text/progress.h"
#include "values/note.h"

namespace vrltool::diff {

namespace {

/// A part of A, a part of B, or both.
struct Entry {
    std::string const* label;
    Wiring::Part const* inA;
    Wiring::Part const* inB;
};

std::vector<Entry> entriesOf(Wiring const& a, Wiring const& b, Matching const& matching) {
    std::vector<Entry> entries;
    entries.reserve(a.parts.size());
    for (std::size_t part = 0; part < a.parts.size(); ++part) {
        Wiring::Part const* const other = matching.toB[part] == kNone ? nullptr : &b.parts[matching.toB[part]];
        entries.push_back({&(other ? other : &a.parts[part])->label, &a.parts[part], other});
    }
    for (std::size_t part = 0; part < b.parts.size(); ++part)
        if (matching.toA[part] == kNone) entries.push_back({&b.parts[part].label, nullptr, &b.parts[part]});
    auto const isLess = [](Entry const& x, Entry const& y) {
        return *x.label == *y.label ? x.inA && !y.inA : naturallyLess(*x.label, *y.label);
    };
    if (!std::is_sorted(entries.begin(), entries.end(), isLess))
        std::stable_sort(entries.begin(), entries.end(), isLess);
    return entries;
}

Element const* elementOf(Wiring::Part const* part) { return part ? part->element : nullptr; }

/// A circuit with the netlist that it shows; both empty if a design has none.
struct Sheet {
    Circuit const& circuit;
    vrl::Netlist const& netlist;
    OuterNames const names = {};
};

/// The note of an import without the names that are compared at the boundary.
values::Node namelessNote(Sheet const& sheet) {
    std::set<std::string> compared;
    for (auto const* const list : {&sheet.circuit.inputs, &sheet.circuit.outputs, &sheet.circuit.dc})
        for (unsigned const node : *list)
            if (auto const names = sheet.names.find(node); names != sheet.names.end())
                compared.insert(names->second.begin(), names->second.end());
    return withoutPorts(values::note(sheet.netlist), compared);
}

class DesignComparison {
public:
    explicit DesignComparison(DiffSettings const& s)
        : settings(s), properties(s, result.differences), progress("comparing", "elements") {}

    Comparison compare(Design const& a, Design const& b) {
        properties.compareTexts(Topic::kType, a.type, b.type, "");
        compareObjects(a.object, b.object, a.type == b.type);
        result.parameters = properties.met();
        return std::move(result);
    }

private:
    void compareObjects(SavedObject const& a, SavedObject const& b, bool sameType) {
        if (a.parameter() && b.parameter())
            properties.compareSingle(*a.parameter(), *b.parameter());
        else
            properties.compareNotesOfObjects(a, b);
        if (a.list() || b.list()) properties.compareParameters(a.list(), b.list(), "", sameType);
        properties.compareBlocks(a.block(), b.block(), "");
        if (a.choice() && b.choice()) properties.compareChoices(*a.choice(), *b.choice(), "");
        if (a.port() && b.port()) properties.compareChoices(a.port()->getCS(), b.port()->getCS(), "");
        if (a.netlist() || b.netlist()) compareNetlists(a.netlist(), b.netlist());
    }

    void compareNetlists(vrl::Netlist* a, vrl::Netlist* b) {
        std::unique_ptr<vrl::Netlist, void (*)(vrl::Netlist*)> const none(vrl::Netlist::create(""),
                                                                          vrl::Netlist::destroy);
        vrl::Netlist& netlistA = a ? *a : *none;
        vrl::Netlist& netlistB = b ? *b : *none;
        Circuit const circuitA = circuitFrom(netlistA);
        Circuit const circuitB = circuitFrom(netlistB);
        Sheet const sheetA{circuitA, netlistA, outerNames(netlistA, circuitA)};
        Sheet const sheetB{circuitB, netlistB, outerNames(netlistB, circuitB)};
        if (a && b) properties.compareImports(namelessNote(sheetA), namelessNote(sheetB), "");
        compareSheets(sheetA, sheetB, "");
    }

    void compareSheets(Sheet const& sheetA, Sheet const& sheetB, std::string const& path) {
        Wiring const a = wiringOf(sheetA.circuit, sheetA.netlist, sheetA.names);
        Wiring const b = wiringOf(sheetB.circuit, sheetB.netlist, sheetB.names);
        Matching const matching = matchParts(a, b, settings.renames);
        for (Entry const& entry : entriesOf(a, b, matching)) compareEntry(entry, path);
        CommonPorts ports(a, b, matching);
        compareBoundaries(a, b, ports, path, result.differences.changes);
        compareConnections(ports, path, result.differences.changes);
    }

    void compareEntry(Entry const& entry, std::string const& path) {
        progress.step();
        Element const* const inA = elementOf(entry.inA);
        Element const* const inB = elementOf(entry.inB);
        std::string const below = pathBelow(path, *entry.label);
        if (inA && inB)
            compareElements(*inA, *inB, below);
        else if (inB)
            add({Topic::kElement, Verb::kAdded, below, "", "", {}, inB->kind, {}});
        else if (inA)
            add({Topic::kElement, Verb::kRemoved, below, "", "", inA->kind, {}, {}});
    }

    void compareElements(Element const& a, Element const& b, std::string const& path) {
        if (a.name != b.name) add({Topic::kElement, Verb::kRenamed, path, a.label(), "", a.kind, b.kind, {}});
        properties.compareTexts(Topic::kKind, a.kind, b.kind, path);
        properties.compareParameters(a.block, b.block, path, a.kind == b.kind);
        properties.compareNotesOfBlocks(a.block, b.block, path);
        properties.compareBlocks(a.block, b.block, path);
        if (a.inside && b.inside) compareSheets({*a.inside, inner(a)}, {*b.inside, inner(b)}, path);
    }

    static vrl::Netlist const& inner(Element const& element) {
        return *dynamic_cast<vrl::CBB const*>(element.block)->getAsNetlist();
    }

    void add(Change change) { result.differences.changes.push_back(std::move(change)); }

    DiffSettings const& settings;
    Comparison result;
    PropertyComparison properties;
    Progress progress;
};

}  // namespace

Comparison compareDesigns(Design const& a, Design const& b, DiffSettings const& settings) {
    return DesignComparison(settings).compare(a, b);
}

}  // namespace vrltool::diff
