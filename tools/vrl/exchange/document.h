#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "exchange/findings.h"
#include "exchange/node.h"

namespace vrltool::exchange {

/// A thing under a name in a netlist, or a rectangular array of equal ones.
struct Instance {
    Node name;
    Node given;      ///< the component alone, or a map
    Node component;  ///< a text
    Node settings;   ///< a map
    Node extension;  ///< the members of "vrl" that are known and well formed
    Node others;     ///< the members that mean nothing here
    Node placement;
    std::size_t columns = 1, rows = 1;

    bool isArray() const { return !isNull(member(given, "array")) || columns * rows > 1; }
};

/// The names of the elements of an array: "NAME<COLUMN.ROW>", column by column; the plain name for a single one.
std::vector<std::string> elementNames(std::string const& name, std::size_t columns, std::size_t rows);

/// Two ports or more, each a text "instance,port", that are connected.
struct Net {
    Node given;
    std::vector<Node> ports;
    Node others;  ///< the further members
};

/// A netlist of another tool as it was read: its shape is checked, its names are not.
struct Document {
    std::string path;
    Node root;
    std::string name;  ///< empty without one
    std::vector<Instance> instances;
    std::vector<Net> nets;
    bool asConnections = false;  ///< whether all nets came as "connections"
    Node ports;                  ///< a map from outer names to "instance,port"
    Node placements;             ///< those of no instance
    Node extension;              ///< the members of "vrl" that are known and well formed
    Node others;                 ///< the members that mean nothing here
    Node oddInstances, oddNets;  ///< what has not the shape, which is an error, as it was given
};

/// Reads a netlist from a file. A Failure says what is no netlist at all: without a map of instances.
Document readDocument(std::string const& path, Findings& findings);

}  // namespace vrltool::exchange
