#pragma once

#include <map>
#include <string>
#include <vector>

#include "circuit/circuit.h"

namespace vrltool::draw {

/// The names of the symbols of kinds, as views of plug-ins choose them.
struct ChosenSymbols {
    std::map<std::string, std::string> byKind;  ///< of what has none, nothing
    std::vector<std::string> warnings;          ///< lines, about views that choose wrong or fail
};

/// Asks the views of blocks whose key begins with "Symbol/" for the symbol of each kind in a circuit. The first view,
/// by key, decides that applies to a kind and whose parameter "symbol" names one.
///
/// Views are made for one block of each kind, in a copy of this process: whatever they do, only symbols are lost.
ChosenSymbols chosenSymbols(Circuit const& circuit);

/// The names of the symbols alone; the warnings are lines on standard error.
std::map<std::string, std::string> symbolsOf(Circuit const& circuit);

}  // namespace vrltool::draw
