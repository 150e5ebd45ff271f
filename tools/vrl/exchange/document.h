#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "values/findings.h"
#include "values/node.h"

namespace vrltool::exchange {

using namespace values;

/// How many elements an instance is, in columns and rows.
struct ArraySize {
    std::size_t columns = 1, rows = 1;

    std::size_t count() const { return columns * rows; }
};

/// The size of an array, under one of the pairs of names that are in use; 1 by 1 for what is no array, and 0 for a
/// count that is no whole number from 1.
ArraySize arraySizeOf(Node const& instance);
bool isArray(Node const& instance);

/// The names of the elements of an array: "NAME<COLUMN.ROW>", column by column; the plain name for a single one.
std::vector<std::string> elementNames(std::string const& name, ArraySize const& size);

/// The same for an instance as a note has it; none for an array of more than a million, since anybody may write notes.
std::vector<std::string> elementNames(std::string const& name, Node const& instance);

/// The name of the array that has an element of that name; the name itself if it is none.
inline std::string arrayOf(std::string const& element) { return element.substr(0, element.rfind('<')); }

/// The text of the note about settings that no parameter has; their names follow.
inline std::string keptSettings(std::string const& component) {
    return inQuotes(component) + ": settings without a parameter, kept as notes";
}

constexpr char kKeptMembers[] = "kept as notes of instances";  ///< likewise, of members of instances

/// What the members of an instance are to us: read, the size of an array, or kept as they are.
enum class InstancePart { kOwn, kArray, kKept };
InstancePart instancePart(std::string const& name);

/// A thing under a name in a netlist, or a rectangular array of equal ones.
struct Instance {
    Node name;
    Node given;  ///< the component alone, or a map
    ArraySize size = {};
    bool good = false;    ///< whether it has the shape; if not, that is an error
    bool inside = false;  ///< whether it is one of those that a composite was expanded to
};

/// The component of an instance, a string.
inline Node componentOf(Node const& instance) { return isMap(instance) ? member(instance, "component") : instance; }

/// Two ports or more, each a string "instance,port", that are connected. One without ports has not the shape.
struct Net {
    Node given;  ///< an entry of "connections" is a map of "p1" and "p2", too
    std::vector<Node> ports = {};
};

/// The ports of a net as it was given: those of a list, or the two of a map.
std::vector<std::string> portsOf(Node const& net);

/// A netlist of another tool as it was read: its shape is checked, its names are not.
struct Document {
    std::string path;
    Node root;
    std::vector<Instance> instances;
    std::vector<Net> nets;
    std::vector<std::pair<Node, Node>> ports;  ///< outer names with "instance,port"
    Node extension = {};                       ///< the member "vrl", if it has the shape

    std::string name() const { return member(root, "name").text; }
};

/// What a netlist may ask for.
struct DocumentLimits {
    std::size_t elements = 100000;  ///< of all arrays; one with a long instance counts for several
    Limits values = {};
};

/// Reads a netlist from a file. A Failure says what is no netlist at all: without a map of instances.
Document readDocument(std::string const& path, Findings& findings, DocumentLimits const& limits = {});

}  // namespace vrltool::exchange
