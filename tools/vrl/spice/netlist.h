#pragma once

#include <cstddef>
#include <set>
#include <string>

#include "circuit/circuit.h"
#include "circuit/outer_names.h"
#include "values/findings.h"

namespace vrltool::spice {

/// The subcircuits that a file of models defines, in lower case. A Failure reports what cannot be read.
std::set<std::string> subcircuitsIn(std::string const& path);

/// What to write.
struct Source {
    std::string path;  ///< of the design, for findings
    std::string name;  ///< of its subcircuit; one like it is taken if it has to be
    Circuit const& circuit;
    OuterNames const& outerNames;
    std::string models = {};             ///< the path of a file to include; empty: none
    std::set<std::string> defined = {};  ///< the subcircuits in it
};

/// A netlist of SPICE, and how many things are in it.
struct Netlist {
    std::string text;
    std::size_t instances = 0;  ///< of the design and of composites, each composite counted once
    std::size_t nodes = 0;      ///< of the design
    std::size_t pins = 0;       ///< of the design
};

/// A circuit as a subcircuit of SPICE, whose pins are the boundary: inputs, outputs, DC nodes, in their order.
///
/// Each element is an instance of the subcircuit of its kind, with its ports as pins, in order of declaration, optical
/// ones like electrical ones, and its parameters that are numbers, in their own units. Models come before all else. A
/// composite without one is a subcircuit of its inside; composites of one kind with equal insides share it. Other kinds
/// without one are empty subcircuits. Names are made such as SPICE takes. The findings report what is lost.
Netlist netlistOf(Source const& source, values::Findings& findings);

}  // namespace vrltool::spice
