#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "exchange/findings.h"
#include "exchange/node.h"

namespace vrltool::exchange {

/// A thing under a name in a netlist, or a rectangular array of equal ones.
struct Instance {
    std::string name;
    Mark mark = Mark::null_mark();
    Node given;  ///< all that the netlist says of it, except its placement
    Node component, settings, info, array, placement;
    Node extension = newMap();  ///< the members of "vrl" that are known and well formed
    Node others = newMap();     ///< the members that mean nothing here
    std::size_t columns = 1, rows = 1;

    bool isArray() const { return !isNull(array) || columns * rows > 1; }
    /// The names of the elements: "NAME<COLUMN.ROW>", column by column; the plain name for a single one.
    std::vector<std::string> elementNames() const;
};

/// Two ports or more, each a text "instance,port", that are connected.
struct Net {
    Node given;
    std::vector<Node> ports;
    Node others;  ///< a map of further members
};

/// A netlist of another tool as it was read: its shape is checked, its names are not. Parts of the wrong shape are
/// errors, and are kept as they were given.
struct Document {
    std::string path;
    Node root;
    std::string name;  ///< empty without one
    std::vector<Instance> instances;
    std::vector<Net> nets;
    bool asConnections = false;  ///< whether all nets came as "connections"
    Node ports;                  ///< a map from outer names to "instance,port"
    Node extension;              ///< the members of "vrl" that are known and well formed
    Node others;                 ///< the members that mean nothing here
    Node placements;             ///< those of no instance
    Node oddInstances, oddNets;  ///< what has not the shape
};

/// Reads a netlist from a file. A Failure says what is no netlist at all: without a map of instances.
Document readDocument(std::string const& path, Findings& findings);

}  // namespace vrltool::exchange
