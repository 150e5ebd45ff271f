#pragma once

#include <string>
#include <utility>
#include <vector>

#include "catalogue/kinds.h"
#include "circuit/parameters.h"

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
    struct Block {
        std::string key, about;
    };

    Kind kind;
    bool composite = false;
    bool hasProblems = false;            ///< something of a foundry cannot be made; its text says so
    std::string about;                   ///< in the object's own words; of an attribute its type
    std::string foundry;                 ///< that a block was made for
    std::string crossSection, flow;      ///< the choice that it starts with
    Pairs notes;                         ///< annotations
    std::vector<Port> ports;             ///< of a block, in the order of declaration
    std::vector<Parameter> parameters;   ///< their attributes are gone: the pointers are null
    std::vector<Element> elements;       ///< of a composite or a netlist
    std::vector<std::string> flows;      ///< of a foundry
    Pairs crossSections;                 ///< of a foundry, each with its description
    std::vector<Block> blocks;           ///< of a foundry: those that its plug-in brings as well
    std::vector<std::string> appliesTo;  ///< of a view of blocks: the kinds of block
};

/// The page of a kind. A block is made for the foundry, which may be null. A Failure reports what cannot be made.
Page pageOf(Kind const& kind, vrl::Foundry const* foundry);

}  // namespace vrltool::catalogue
