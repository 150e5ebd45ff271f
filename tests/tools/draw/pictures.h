#pragma once

#include <string>
#include <vector>

#include "draw/picture.h"
#include "tests/tools/sample_circuit.h"

namespace vrl_test {

/// The text for Graphviz of a circuit, made in this process.
std::string dotOf(SampleCircuit& circuit, vrltool::draw::Picture const& picture = {}, int depth = 0);

/// Such a string with a line for each cell of its tables.
std::string inShortLines(std::string dot);

/// The wires of such a string, a line each: "e1:p2:e -> e2:p1:w optics"; lines that are not seen are left out.
std::string wiresOf(std::string const& dot);

/// The ids that the text declares, of things of a class: "element", "frame", "ports", "boundary", "cut", "junction".
std::vector<std::string> idsOf(std::string const& dot, std::string const& kind);

/// How often a part occurs in a string.
std::size_t count(std::string const& text, std::string const& part);

/// The texts that an SVG shows, with its entities read.
std::vector<std::string> textsOf(std::string const& svg);

/// Whether every tag of an SVG is closed in its order, and every "<" begins one.
bool isWellFormed(std::string const& svg);

/// An SVG without its coordinates, which hang on the fonts of the machine: each value of a geometric attribute is "*".
std::string withoutGeometry(std::string const& svg);

}  // namespace vrl_test
