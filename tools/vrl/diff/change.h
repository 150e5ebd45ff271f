#pragma once

#include <string>
#include <variant>
#include <vector>

#include "circuit/parameters.h"

// Two designs compared, the words:
//
// A, B      the designs: A is the old one, B the new one
// path      where an element is: "arms/upper" is the element upper inside the composite arms; empty: the whole
//           design. What is in B is reported by its name there, what was removed by its name in A
// port      one of an element, "element,port"
// net       what a node connects: a set of ports. The number of the node does not count
// part      what has ports: an element, or a bare name of which only connections are left

namespace vrltool::diff {

/// What a change is about.
enum class Topic {
    kType,
    kElement,
    kKind,
    kParameter,
    kFoundry,
    kCrossSection,
    kFlow,
    kPort,
    kNote,
    kConnection,
    kInput,
    kOutput,
    kDc
};

/// What has become of it.
enum class Verb { kRemoved, kAdded, kChanged, kRenamed, kMoved, kDisconnected, kConnected };

/// What one side holds of a parameter.
struct ParameterState {
    std::string type;
    ParameterValue value;
    std::string text;
    std::string unit;
    std::string expression;
    bool calculated = false;
    bool autoChangeable = false;
};

/// A place of a boundary list, counted from 1, what its node connects, and how another tool named it.
struct BoundaryPlace {
    std::size_t position = 0;
    std::vector<std::string> ports;
    std::vector<std::string> names = {};
};

/// One side of a change; std::monostate if it is missing.
using ChangeSide = std::variant<std::monostate, std::string, ParameterState, BoundaryPlace>;

/// One difference. Its sides hold: of elements the kind, of types, kinds, foundries, choices and notes their string
/// (nothing if there is none), of parameters their state, of the boundary a place.
struct Change {
    Topic topic;
    Verb verb;
    std::string path;
    std::string name;       ///< of a parameter, a port or a note; of a renamed element the name that it had
    std::string parameter;  ///< to which a note belongs
    ChangeSide from, to;
    std::vector<std::vector<std::string>>
        groups;                            ///< of a connection: the sets of ports that were disconnected or connected
    std::vector<std::string> member = {};  ///< of the note of an import: the member that differs, from the outermost on
};

/// A parameter whose values are not known, since no loaded plug-in has its type.
struct Uncompared {
    std::string path;
    std::string name;
    std::string type;
};

struct Differences {
    std::vector<Change> changes;
    std::vector<Uncompared> uncompared;
};

/// "arms/upper" of "arms" and "upper".
inline std::string pathBelow(std::string const& path, std::string const& label) {
    return path.empty() ? label : path + "/" + label;
}

}  // namespace vrltool::diff
