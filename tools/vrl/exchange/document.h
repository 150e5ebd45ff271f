#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "exchange/findings.h"
#include "exchange/tree.h"

namespace vrltool::exchange {

/// A rectangular array of equal instances. Its elements are named "NAME<COLUMN.ROW>", from 0; one of a single element
/// has the plain name.
struct ArraySize {
    std::size_t columns = 1;
    std::size_t rows = 1;

    std::size_t count() const { return columns * rows; }
};

/// A thing under a name in the netlist: what it is made of, and what was told of it.
struct Instance {
    std::string name;
    Mark mark;
    std::string component;
    Mark componentMark;
    Tree settings = Tree::map();   ///< always a map
    Tree info;                     ///< null without one
    Tree array;                    ///< the array as it was told; null without one
    Tree placement;                ///< null without one
    Tree extension = Tree::map();  ///< what "vrl" holds; always a map
    Tree others = Tree::map();     ///< the members that mean nothing here
    ArraySize size;
};

/// An end as the netlist tells it: "instance,port".
struct EndName {
    std::string text;
    Mark mark;
};

/// Ends that are joined; at least two.
struct Net {
    std::vector<EndName> ends;
    Tree others = Tree::map();  ///< further members
};

/// An outer port: its name, and the end that it is.
struct OuterPort {
    std::string name;
    Mark mark;
    EndName end;
};

/// A netlist in the shape that open photonic tools write, with nothing of it decided yet.
struct Document {
    std::string path;
    std::string name;  ///< empty without one
    std::vector<Instance> instances;
    std::vector<Net> nets;
    bool asConnections = false;  ///< whether all joints came as "connections"
    std::vector<OuterPort> ports;
    Tree strayPlacements = Tree::map();  ///< of names that are no instances
    Tree oddInstances = Tree::map();     ///< those that have not the shape, as they were told
    Tree oddNets = Tree::list();         ///< likewise
    Tree extension = Tree::map();        ///< what "vrl" holds; always a map
    Tree others = Tree::map();           ///< the members that mean nothing here
};

/// The document of a tree. Single parts that have not the shape become errors in `findings`; a Failure tells a whole
/// that has not: without a map of instances.
Document documentFrom(Tree const& tree, std::string const& path, Findings& findings);

/// The tree of a document: name, instances, connections or nets, placements, ports, then the rest, "vrl" last.
Tree treeFrom(Document const& document);

/// The tree of one instance, without its placement, and of a net of two ends.
Tree treeFrom(Instance const& instance);
Tree treeFrom(Net const& net);

/// "NAME<COLUMN.ROW>", or the bare name in an array of one.
std::string arrayName(Instance const& instance, std::size_t column, std::size_t row);

}  // namespace vrltool::exchange
