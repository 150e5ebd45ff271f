#pragma once

#include <string>

#include "tests/tools/sample_circuit.h"
#include "tests/tools/tool.h"

namespace vrl_test {

/// Saves the modulator as "mod.vrl" with one fault, and writes its page "mod.html". Returns the path of that.
inline std::string modulatorPage(Tool const& tool) {
    SampleCircuit circuit;
    addModulator(circuit);
    circuit.add("bend", "sfBend").set("bend", "radius", 2);
    circuit.save(tool.path("mod.vrl"));
    tool.run("draw", {"mod.vrl", "-o", "mod.html"});
    return tool.path("mod.html");
}

/// How often a string is in another one.
inline std::size_t count(std::string const& text, std::string const& part) {
    std::size_t found = 0;
    for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + part.size())) ++found;
    return found;
}

}  // namespace vrl_test
