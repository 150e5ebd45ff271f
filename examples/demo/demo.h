#pragma once

#include <functional>
#include <string>

#include "vrllib/vrllib.h"

// The demonstration host, shared by its two halves.

/// Ends the program: what went wrong, and the hint.
struct Failure {
    std::string text;
};

/// The two halves. Each starts the library on a configuration file and works on the design in a file.
void build(char const* config, char const* file);
void check(char const* config, char const* file);

/// Starts the library and shows what it loaded. Fails if a plug-in that the demo needs is missing.
void startLibrary(char const* config);

/// Calls `see` with every named element of a netlist and of the composites inside, which have paths such as
/// "arms/trim".
void visitElements(vrl::Netlist& netlist, std::function<void(std::string const& path, vrl::BB& block)> const& see,
                   std::string const& prefix = "");

/// Sets the foundry of every block, in composites as well. Fails if a foundry is missing.
void attachFoundries(vrl::Netlist& circuit);

/// Prints a netlist, then those of the composites inside.
void printDesign(vrl::Netlist& circuit);
