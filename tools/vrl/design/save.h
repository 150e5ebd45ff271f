#pragma once

#include <string>
#include <vector>

#include "vrllib/vrllib.h"

namespace vrltool {

/// Writes a netlist into a file as replaceFile does. Refuses a netlist with stand-ins, whose kinds keep what this
/// program does not know of, and to replace a file that holds such kinds, or a design that cannot be read whole.
void saveDesign(vrl::Netlist& netlist, std::string const& path);

/// The same for text and pictures. Refuses to replace a saved design, of whatever name.
void saveFile(std::string const& path, std::string const& bytes);

/// A Failure if the output is the same file as one of the inputs, under whatever name: links count. Inputs and outputs
/// that do not exist are passed over.
void refuseToReplace(std::string const& output, std::vector<std::string> const& inputs);

}  // namespace vrltool
