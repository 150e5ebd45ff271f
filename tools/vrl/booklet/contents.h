#pragma once

#include <optional>
#include <string>
#include <vector>

#include "draw/scene.h"
#include "vrllib/vrllib.h"

namespace vrltool::booklet {

// What a booklet says of a foundry: strings and numbers copied from the objects of the plug-in, which are freed.

/// On which side of its block a port is drawn. It follows from its domain and the first letters of its name.
enum class Side { kLeft, kRight, kBelow, kAbove };

struct ParameterFacts {
    std::string name;
    std::string type;
    std::string value;         ///< the default, followed by its expression if it has one
    std::string range;         ///< empty without one
    std::string distribution;  ///< of what is spread over its range
    std::string unit;
    std::string description;
};

struct PortFacts {
    std::string name;
    vrl::EnumList::Domain domain;
    Side side;
};

/// An element of a composite.
struct ElementFacts {
    std::string name;
    std::string kind;
};

/// A node of a composite.
struct NodeFacts {
    std::string outside;  ///< "input 1", "output 2", "electrical 1"; empty if the node is inside only
    std::vector<std::string> ports;
};

/// A view that applies to a block.
struct ViewFacts {
    std::string key;
    std::string description;
};

struct BlockFacts {
    std::string kind;
    std::string description;  ///< its annotation of that name; empty without one
    std::string section;      ///< the cross section of its choice; empty without one
    std::string flow;         ///< likewise
    std::vector<PortFacts> ports;
    std::vector<ParameterFacts> parameters;
    bool composite = false;
    std::vector<ElementFacts> elements;
    std::vector<NodeFacts> nodes;
    std::vector<draw::Scene> inside;  ///< its picture, sheet by sheet
    std::vector<ViewFacts> views;
};

/// A straight cross section of standard width.
struct SectionFacts {
    std::string kind;
    std::string description;
    std::optional<double> width;  ///< nothing if it has none
    std::vector<ParameterFacts> parameters;
};

struct FlowFacts {
    std::string kind;
    std::string section;          ///< what it makes for the standard width; empty if nothing
    std::optional<double> width;  ///< of that
    std::vector<ParameterFacts> parameters;
};

struct FoundryFacts {
    std::string name;
    std::string description;
    std::string section;  ///< the default choice
    std::string flow;     ///< likewise
    std::vector<FlowFacts> flows;
    std::vector<SectionFacts> sections;
    std::vector<BlockFacts> blocks;
};

/// The names of all foundries.
std::vector<std::string> foundryKeys();

/// Asks the plug-ins. Without a choice, the blocks are those whose code is in the same file as that of the foundry.
///
/// A Failure reports unknown names, and of a plug-in that throws.
FoundryFacts factsOf(std::string const& foundry, std::vector<std::string> const& chosenBlocks);

}  // namespace vrltool::booklet
