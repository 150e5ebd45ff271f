#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "check/runner.h"
#include "design/design.h"
#include "draw/scene.h"
#include "overview/defaults.h"

namespace vrltool::booklet {

// What a booklet says of a design: strings copied from its objects, and the picture.

/// A parameter or a choice of an element.
struct SettingFacts {
    std::string name;
    std::string value;
    std::string usual;  ///< what a new element has, if that differs
    bool differs = false;
};

struct PlacedFacts {
    std::string name;
    std::string kind;
    bool standIn = false;
    std::vector<SettingFacts> settings;
};

/// A place of the boundary.
struct BoundaryFacts {
    char const* list;  ///< "input", "output" or "DC"
    std::size_t place;
    std::vector<std::string> ports;
    std::vector<std::string> names;  ///< those of the netlist that the design was imported from
};

/// One circuit, without the insides of its composites.
struct CircuitFacts {
    std::vector<PlacedFacts> elements;
    std::vector<std::vector<std::string>> nets;  ///< the ports of each, "element,port"; two at least
    std::vector<std::string> dangling;           ///< connected ports of missing elements
    std::vector<BoundaryFacts> boundary;
    std::vector<draw::Scene> sheets;
};

/// What is inside of one composite, or of several of one kind in which everything is the same.
struct InsideFacts {
    std::string kind;
    std::vector<std::string> paths;  ///< of the composites, "arms/upper"
    CircuitFacts circuit;
};

struct KindFacts {
    std::string kind;
    std::string foundry;
    std::size_t count = 0;
    std::size_t inside = 0;  ///< of composites
};

struct DesignFacts {
    std::string title;  ///< the name of its file without the ending
    std::string type;
    std::vector<overview::Property> parameters;  ///< of the netlist itself
    CircuitFacts circuit;
    std::vector<InsideFacts> insides;  ///< each before those that are in it
    std::size_t leftOut = 0;           ///< insides past the most that a booklet has
    std::vector<KindFacts> kinds;
    check::FileReport report;
};

/// Asks a design, which the library has read; `report` is that of its check. The picture of the whole shows at most
/// `most` elements, 0: all. A Failure says what the file holds if that is neither a netlist nor a block.
DesignFacts factsOf(Design const& design, check::FileReport report, std::size_t most);

}  // namespace vrltool::booklet
