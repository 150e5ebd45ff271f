#pragma once

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <utility>

#include "exchange/document.h"
#include "exchange/name_map.h"
#include "values/node.h"

// A component of another tool may be several blocks of ours. Its instance "a" becomes instances "a.split", "a.arm" and
// so on with their nets when it is imported, and one again when it is exported.

namespace vrltool::exchange {

/// The rule for an instance that is a composite, or null.
ComponentRule const* compositeRule(NameMap const& map, Node const& given);

/// The elements that are expanded: names of instances, or of elements of arrays, with their rules.
class ExpandedElements {
public:
    void add(std::string const& name, Node const& given, ComponentRule const& rule);
    /// The name of the instance that has an element, or empty.
    std::string nameOf(std::string const& element) const;
    /// The port inside that "element,port" leads to; the same for all other ports, and where the rule leads nowhere.
    std::string inside(std::string const& port) const;
    /// Whether the rule of its element says something of a port.
    bool knows(std::string const& port) const;
    /// Whether an element is inside of one.
    bool hasInside(std::string const& element) const { return insides.count(element) > 0; }

private:
    std::map<std::string, std::pair<std::string, ComponentRule const*>> elements;  ///< with the names of their arrays
    std::set<std::string> insides;
};

/// Puts the instances and nets of composites in the place of their instances. Nets and outer ports lead to the ports
/// inside. Returns the instances as they were, by name. At most `most` instances are made.
Node expandComposites(Document& document, NameMap const& map, Findings& findings, std::size_t most);

/// The elements that an import expanded, as far as the map still has composites for them.
ExpandedElements expandedElements(Node const& composites, NameMap const& map);

/// The parts of a netlist that is exported.
struct ExportedParts {
    std::map<std::string, Node>& instances;
    Node& nets;   ///< those of two ports are maps of "p1" and "p2"
    Node& ports;  ///< the outer ones
};

/// What could not become an instance again.
struct StillExpanded {
    std::set<std::string> composites;  ///< their names
    std::set<std::string> skipped;     ///< what leads to skipped ports of them, and is left out
};

/// Puts one instance each in the place of those that composites were expanded to. Composites that are not as the map
/// makes them stay expanded: an instance is missing or differs, or has other connections.
StillExpanded collapseComposites(ExportedParts parts, NameMap const& map, Node const& composites);

}  // namespace vrltool::exchange
