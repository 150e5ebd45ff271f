#pragma once

#include <string>
#include <vector>

#include "draw/picture.h"
#include "tests/tools/sample_circuit.h"

namespace vrl_test {

/// The SVG of a circuit, made in this process.
std::string svgOf(SampleCircuit& circuit, vrltool::draw::Picture const& picture = {}, int depth = 0);

/// The wires of an SVG, a line each: "e1 e2 optics"; what they connect, and their domain.
std::string wiresOf(std::string const& svg);

/// The ids of things of a class: "element", "frame", "boundary", "cut".
std::vector<std::string> idsOf(std::string const& svg, std::string const& kind);

/// How often a part occurs in a string.
std::size_t count(std::string const& text, std::string const& part);

/// The texts that an SVG shows, with its entities read.
std::vector<std::string> textsOf(std::string const& svg);

/// Whether every tag of an SVG is closed in its order, and every "<" begins one.
bool isWellFormed(std::string const& svg);

}  // namespace vrl_test
