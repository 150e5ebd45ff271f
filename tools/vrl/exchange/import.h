#pragma once

#include <array>
#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "exchange/document.h"
#include "exchange/library.h"
#include "exchange/name_map.h"
#include "vrllib/vrllib.h"

namespace vrltool::exchange {

/// Frees a netlist as the library does.
struct NetlistDeleter {
    void operator()(vrl::Netlist* netlist) const { vrl::Netlist::destroy(netlist); }
};

/// One import: what it reads, what it has made so far with the numbers of it, and what it has yet to report. All its
/// steps work on it.
struct Import {
    struct Element {
        std::string name;
        vrl::BB* block;  ///< owned by the netlist; null for a skipped or expanded instance
        ComponentRule const* rule;
    };

    /// A port of ours: an element, by its place, and the name of its port. Of a skipped instance it is one for all that
    /// it connects with each other.
    using Port = std::pair<std::size_t, std::string>;

    /// A port that the netlist uses. Ports that are connected form a tree, whose root is the first of them.
    struct UsedPort {
        Port port;
        std::size_t parent;
        std::size_t uses = 0;  ///< by nets and outer ports
        Mark secondUse = {};
        unsigned node = 0;
        std::size_t real = kNone;  ///< the place of a port of ours at its node, itself if it is one

        static constexpr std::size_t kNone = ~std::size_t{};
    };

    /// What does not become a part of the circuit, as it was given.
    struct Excluded {
        Node instances{Kind::kMap}, nets = Node{Kind::kList};
        std::size_t ports = 0;  ///< outer ones

        std::size_t count() const { return instances.size() + nets.size() + ports; }
        Node note() const { return newMap({{"instances", unlessEmpty(instances)}, {"nets", unlessEmpty(nets)}}); }
    };

    Document const& document;
    NameMap const& map;
    Kinds& kinds;
    Findings& findings;
    Node composites = {};  ///< instances that were expanded, as they were given

    std::unique_ptr<vrl::Netlist, NetlistDeleter> netlist = nullptr;
    std::size_t settings = 0;    ///< of all instances
    std::size_t parameters = 0;  ///< set by settings
    std::size_t portCount = 0;   ///< outer ports that were carried over

    std::map<std::string, ComponentRule> sameNames = {};  ///< rules of kinds that the map does not name
    std::set<ComponentRule const*> checkedRules = {};
    /// The components without a kind: the place where each is first named, and in how many instances.
    std::map<std::pair<std::string, ComponentRule const*>, std::pair<Mark, std::size_t>> missingKeys = {};
    /// Cross sections that the map does not name, by component: the first place, and in how many instances.
    std::map<std::pair<std::string, std::string>, std::pair<Mark, std::size_t>> unknownSections = {};
    std::map<std::string, Mark> keptSettings = {};  ///< the first of each component that is kept as a note only
    std::vector<Element> elements = {};
    std::unordered_map<std::string, std::size_t> byName = {};
    std::vector<UsedPort> ports = {};  ///< in order of mention
    std::map<Port, std::size_t> places = {};
    std::set<std::pair<std::size_t, std::size_t>> connections = {};
    std::map<std::string, std::optional<std::size_t>> outerPorts = {};  ///< the places of their ports, unless excluded
    std::optional<std::size_t> skippedPorts = {};  ///< the place of an element that has all skipped ports, if any
    std::array<std::vector<std::string>, 3> boundary = {};  ///< by outer ports, each node once
    std::set<unsigned> boundaryNodes = {};
    std::set<std::string> leftOutNames = {};
    Node members{Kind::kMap}, portNotes = Node{Kind::kMap},
                              netNotes = Node{Kind::kMap};  ///< parts of the note of the netlist
    Excluded leftOut = {}, skipped = {};

    /// How many nets were carried over.
    std::size_t nets() const { return document.nets.size() - leftOut.nets.size() - skipped.nets.size(); }

    /// Reports something about a part of the netlist, or about all of it. Returns false.
    bool report(Severity severity, Mark const& mark, std::string const& text, std::string const& hint = "") {
        findings.add(severity, document.path, mark, text, hint);
        return false;
    }
    /// Reports something that the circuit does not hold, and a note does.
    void keep(std::string const& sort, std::string const& name, Mark const& mark = {}) {
        findings.addName(Severity::kNote, document.path, mark, sort, name);
    }
    bool error(Node const& node, std::string const& text, std::string const& hint = "") {
        return report(Severity::kError, node.mark, text, hint);
    }
};

/// Makes the circuit of the document, with everything that it cannot hold as notes. What cannot be carried over is an
/// error in the findings, and is kept in the note of what was left out. The kinds outlive the netlist.
void importDocument(Import& import);

}  // namespace vrltool::exchange
