#pragma once

#include <string>
#include <vector>

#include "design/design.h"
#include "design/saved_changes.h"
#include "vrllib/vrllib.h"

namespace vrltool {

/// Writes a new netlist into a file as replaceFile does. Refuses to replace another design that cannot be read whole,
/// or whose kinds are missing here: nobody sees then what would be lost.
void saveDesign(vrl::Netlist& netlist, std::string const& path);

/// The same for a design that was read, with changes: all else goes over byte for byte. The path may be its own.
void saveDesign(Design const& design, SavedChanges const& changes, std::string const& path);

/// The same for text and pictures. Refuses to replace a saved design, of whatever name.
void saveFile(std::string const& path, std::string const& bytes);

/// Whether a file begins as every saved design does. A Failure reports one that cannot be read.
bool isSavedDesign(std::string const& path);

/// A Failure if the output is the same file as one of the inputs, under whatever name: links count. Inputs and outputs
/// that do not exist are passed over.
void refuseToReplace(std::string const& output, std::vector<std::string> const& inputs);

}  // namespace vrltool
