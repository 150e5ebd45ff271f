#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <utility>
#include <vector>

#include "catalogue/kinds.h"
#include "circuit/parameters.h"
#include "text/json.h"

namespace vrltool::catalogue {

/// All that is known of one kind; what is missing is empty.
struct Page {
    using Pairs = std::vector<std::pair<std::string, std::string>>;

    struct Port {
        std::string name, direction, domain;
    };
    struct Element {
        std::string name, kind;
        std::vector<std::string> connects;  ///< "in0 to upper,out0", by port
    };
    /// A part of a foundry, or why it cannot be made.
    struct Part {
        std::string key, about, problem;
    };

    Kind kind;
    bool composite = false;
    std::string about;                   ///< in the object's own words; of an attribute its type
    std::string foundry;                 ///< that a block was made for
    std::string crossSection, flow;      ///< the choice that it starts with
    Pairs notes;                         ///< annotations
    std::vector<Port> ports;             ///< of a block, in the order of declaration
    std::vector<Parameter> parameters;   ///< their attributes are gone: the pointers are null
    std::vector<Element> elements;       ///< of a composite or a netlist
    Json inside;                         ///< the same, with all that is in them; null of anything else
    std::vector<std::string> flows;      ///< of a foundry
    std::vector<Part> crossSections;     ///< of a foundry, each with its description
    std::vector<Part> blocks;            ///< of a foundry: those that its plug-in brings as well
    std::vector<std::string> appliesTo;  ///< of a view of blocks: the kinds of block

    /// Whether something of a foundry cannot be made.
    bool hasProblems() const;
};

/// The page of a kind. A block is made for the foundry, which may be null. A Failure reports what cannot be made.
Page pageOf(Kind const& kind, vrl::Foundry const* foundry);

}  // namespace vrltool::catalogue
