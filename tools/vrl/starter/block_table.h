#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "values/findings.h"
#include "values/node.h"

namespace vrltool::starter {

using values::Mark;
using values::Node;

/// A parameter as it is declared. Its values are a truth value, a number, a string, or for a complex number a list of
/// two numbers; undefined bounds are those of a parameter without a range.
struct TableParameter {
    std::string name, type;
    Node value, min, max;
    std::string unit, description;
    std::optional<bool> tunable;  ///< whether hosts may change it; nothing for a parameter without that flag
};

/// The names of a cross section and a process flow; empty for none.
struct TableChoice {
    std::string crossSection, flow;
};

struct TableSection {
    std::string name, description;
    Node width;  ///< where none is given
    std::vector<TableParameter> parameters;
};

struct TableFlow {
    std::string name, crossSection;
    std::vector<TableParameter> parameters;
};

struct TablePort {
    std::string name, domain;
    TableChoice choice;
};

/// A block in a composite, with the parameters that differ from their defaults.
struct TableElement {
    std::string name, kind;
    std::vector<std::pair<std::string, Node>> settings;
};

/// A port of an element.
struct TablePlace {
    std::string element, port;

    bool operator<(TablePlace const& other) const {
        return std::tie(element, port) < std::tie(other.element, other.port);
    }
};

struct TableBlock {
    std::string kind, description;
    TableChoice choice;
    std::vector<TablePort> ports;
    std::vector<TableParameter> parameters;
    std::vector<TableElement> elements;                     ///< of a composite
    std::vector<std::vector<TablePlace>> connections;       ///< each of two ports or more
    std::vector<std::pair<std::string, TablePlace>> outer;  ///< its own ports, in their order, and those inside
};

/// What a foundry declares: everything about it that is not computed.
struct BlockTable {
    std::string foundry, description;
    TableChoice choice;
    std::vector<TableParameter> parameters;
    std::vector<TableSection> sections;
    std::vector<TableFlow> flows;
    std::vector<TableBlock> blocks;
};

/// The domains of ports by their numbers.
std::vector<std::string> const& domainNames();

/// Reads a table from a file of YAML or JSON. What does not fit goes to the findings, each with its place; a table with
/// errors is not whole. A Failure says what is no table at all.
BlockTable readTable(std::string const& path, values::Findings& findings);

/// Checks the insides of composites against the blocks of a table that is right otherwise. `root` is the table as it
/// was read.
void checkComposites(BlockTable const& table, Node const& root, std::string const& path, values::Findings& findings);

/// The table as YAML or, in one line, as JSON; either reads back as the same.
std::string writtenTable(BlockTable const& table, bool json);

/// The table of a foundry that is loaded, with the blocks of its plug-in. What a table cannot hold is named in
/// `leftOut`. A Failure reports an unknown foundry and what cannot be made.
BlockTable tableOf(std::string const& foundry, std::vector<std::string>& leftOut);

}  // namespace vrltool::starter
