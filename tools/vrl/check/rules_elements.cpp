#include <map>
#include <numeric>
#include <set>
#include <unordered_map>

#include "check/findings.h"
#include "text/phrases.h"

// Rules that look at elements as such: their names, their blocks and what they are connected to.

namespace vrltool::check {

namespace {

void unknownKind(Scope const& scope, Findings& findings) {
    std::string const hint = "load the plug-in that brings it; 'vrl plugins' shows what is loaded";
    auto const add = [&](std::string const& path, std::string const& kind) {
        findings.add({path, "", "", 0}, "no loaded plug-in has the kind " + inQuotes(kind), hint);
    };
    if (scope.top)
        for (MissingKind const& missing : scope.design->missing)
            if (missing.what == MissingKind::What::kNetlist) add("", missing.name);
    for (CheckedElement const& checked : scope.checkedElements)
        if (checked.standIn) add(checked.path, checked.element->kind);
}

void missingBlock(Scope const& scope, Findings& findings) {
    for (CheckedElement const& checked : scope.checkedElements)
        if (!checked.element->block)
            findings.add({checked.path, "", "", 0},
                         "the name is that of element number " + std::to_string(checked.element->number) +
                             ", and there is no such block",
                         "build the netlist anew, with a block under this name or without the name");
}

void lostName(Scope const& scope, Findings& findings) {
    for (CheckedElement const& checked : scope.checkedElements)
        if (checked.element->name.empty())
            findings.add({checked.path, "", "", 0},
                         "the block (" + checked.element->kind + ") has no name, so nothing can be connected to it",
                         "give each element a name of its own when it is added: a taken name stays with the first");
}

void doubledName(Scope const& scope, Findings& findings) {
    auto const& elements = scope.circuit->elements;
    if (std::none_of(elements.begin(), elements.end(), [](Element const& element) { return element.isSecondName; }))
        return;
    std::unordered_map<unsigned, CheckedElement const*> first;
    for (CheckedElement const& checked : scope.checkedElements) {
        if (!checked.element->block || checked.element->name.empty()) continue;
        auto const known = first.emplace(checked.element->number, &checked);
        if (known.second) continue;
        findings.add({checked.path, "", "", 0}, "leads to the same block as " + inQuotes(known.first->second->path),
                     "add a block of its own with a free number: one that comes with a taken number is dropped");
    }
}

/// What to say of names that no element has. Many of them are one mistake, and looking for near names takes its time.
class NameHints {
public:
    explicit NameHints(Circuit const& circuit) {
        for (Element const& element : circuit.elements) names.push_back(element.name);
    }
    std::string of(std::string const& wrong) {
        constexpr std::size_t kMost = 100;
        auto const known = hints.find(wrong);
        if (known != hints.end()) return known->second;
        if (hints.size() == kMost) return "correct the name, or add the element";
        return hints.emplace(wrong, namesHint(wrong, names, "elements")).first->second;
    }

private:
    std::vector<std::string> names;
    std::map<std::string, std::string> hints;
};

void danglingConnection(Scope const& scope, Findings& findings) {
    if (scope.circuit->danglingConnections.empty()) return;
    NameHints hints(*scope.circuit);
    std::string const prefix = scope.path.empty() ? "" : scope.path + "/";
    for (auto const& connection : scope.circuit->danglingConnections)
        findings.add({prefix + connection.first, connection.second, "", 0},
                     "is connected, but there is no element of this name", hints.of(connection.first));
}

/// Groups of elements that nodes connect.
class Groups {
public:
    explicit Groups(Circuit const& circuit) : parent(circuit.elements.size()) {
        std::iota(parent.begin(), parent.end(), std::size_t{0});
        for (auto const& node : circuit.nodes)
            for (PortPlace const& port : node.second) parent[find(port.element)] = find(node.second.front().element);
    }
    /// The same element for all of a group.
    std::size_t find(std::size_t element) {
        while (parent[element] != element) element = parent[element] = parent[parent[element]];
        return element;
    }

private:
    std::vector<std::size_t> parent;
};

void island(Scope const& scope, Findings& findings) {
    if (scope.boundary.empty()) return;
    Groups groups(*scope.circuit);
    std::set<std::size_t> reached;
    for (auto const& node : scope.circuit->nodes)
        if (scope.onBoundary(node.first)) reached.insert(groups.find(node.second.front().element));
    std::map<std::size_t, std::vector<std::string>> islands;  // by the first element
    std::map<std::size_t, std::size_t> firstOf;
    for (std::size_t e = 0; e < scope.checkedElements.size(); ++e) {
        std::size_t const group = groups.find(e);
        if (!scope.checkedElements[e].element->block || reached.count(group)) continue;
        islands[firstOf.emplace(group, e).first->second].push_back(scope.checkedElements[e].path);
    }
    for (auto const& entry : islands) {
        std::vector<std::string> const others(entry.second.begin() + 1, entry.second.end());
        findings.add(
            {entry.second.front(), "", "", 0},
            "no path leads from here to the boundary" +
                (others.empty() ? "" : ", and none from " + listText(others, 4) + ", which are connected to it"),
            "connect it to the rest of the circuit, or put one of its nodes on the boundary");
    }
}

void emptyCircuit(Scope const& scope, Findings& findings) {
    if (scope.checkedElements.empty())
        findings.add({scope.path, "", "", 0}, "there is no element in the circuit",
                     "add blocks, or take the right file");
}

}  // namespace

Rules const& elementRules() {
    static Rules const rules{
        {"unknown-kind",
         "an element is of a kind that no loaded plug-in has",
         Severity::kError,
         kNothing,
         unknownKind,
         {"The file names the kind of every block, and the plug-in that brings a kind makes the block. No plug-in that "
          "is loaded has this one, so that a stand-in with the content of the file represents it.",
          "Without its kind, a block has no ranges, no domains of its ports and no layout: nobody can simulate or "
          "fabricate the design, and the rules that need the kind cannot look at the element.",
          "ring: no loaded plug-in has the kind 'sfRing' [unknown-kind]",
          "Install and configure the plug-in. 'vrl plugins' shows which files were tried and why one failed."}},
        {"missing-block",
         "a name without a block",
         Severity::kError,
         kNothing,
         missingBlock,
         {"The netlist has a name whose element number leads to no block.",
          "A designer sees a component in lists of names that is on no mask and in no simulation. The light that is to "
          "pass it ends there.",
          "tap: the name is that of element number 7, and there is no such block [missing-block]",
          "Netlists keep every name, so build the netlist anew: with a block under this name or without the name."}},
        {"lost-name",
         "an element has no name",
         Severity::kWarning,
         kNothing,
         lostName,
         {"A block was added under a name that another element had already. The name stays with the first, and the "
          "newcomer is found by its number only: '#7' is the element number 7.",
          "Ports are connected by the names of elements: nothing can be connected to a block without one. What was "
          "intended for it went to the block that has the name, which then has the wires of two.",
          "#7: the block (sfBend) has no name, so nothing can be connected to it [lost-name]",
          "Give each element a name of its own, or an empty one, for which the netlist makes a name."}},
        {"doubled-name",
         "two names lead to one block",
         Severity::kWarning,
         kNothing,
         doubledName,
         {"Two names of the netlist have the same element number. This happens when a block is added with a number "
          "that is taken: its block is dropped, and its name leads to the old one.",
          "One component is missing on the mask, and the other one is used for both: its ports are connected twice, "
          "under either name.",
          "tap2: leads to the same block as 'tap' [doubled-name]",
          "Add the block with the number 0, which takes the next free number."}},
        {"dangling-connection",
         "a port of a missing element is connected",
         Severity::kError,
         kCircuit,
         danglingConnection,
         {"The table of connected ports names an element that the netlist does not have.",
          "The wire ends in nothing: what is at its other end sees an open port, though the design seems to connect "
          "it.",
          "uper,in0: is connected, but there is no element of this name; did you mean 'upper'? [dangling-connection]",
          "Correct the name where the netlist is written, or add the element."}},
        {"island",
         "elements that no path connects to the boundary",
         Severity::kNote,
         kCircuit,
         island,
         {"The circuit has a boundary, and from this element no chain of blocks and nodes leads to it. Each group of "
          "such elements is reported once, at its first element.",
          "No light and no signal from outside gets there. That may be intended, as for a test structure with couplers "
          "of its own; more often a wire was forgotten.",
          "ring: no path leads from here to the boundary, and none from bus, which are connected to it [island]",
          "Connect the group to the rest, or put the nodes where light enters and leaves on the boundary."}},
        {"empty-circuit",
         "a circuit without elements",
         Severity::kNote,
         kCircuit,
         emptyCircuit,
         {"The netlist, or the inside of a composite, has no element.",
          "An empty circuit passes nothing on. Often the wrong file was taken, or an import dropped everything.",
          "the design: there is no element in the circuit [empty-circuit]",
          "Add blocks, or take the right file. Of a composite, its plug-in has to fill the inside."}},
    };
    return rules;
}

}  // namespace vrltool::check
