#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "design/saved_object.h"
#include "design/stand_in.h"
#include "vrllib/vrllib.h"

namespace vrltool {

/// What a file holds: one object of whatever class, and what was missing while it was read.
struct Design {
    std::string path;
    std::string type;  ///< what the file says of its object: "Netlist", or a kind
    SavedObject object;
    std::vector<MissingKind> missing;  ///< what stand-ins were made for
    std::size_t bytesAfter = 0;        ///< bytes of the file after the object
};

/// Reads a file whole, with stand-ins for missing kinds. The library has to be started.
///
/// A Failure reports a file that cannot be read, is empty, is cut short or damaged, and where.
Design readDesign(std::string const& path);

/// The netlist of a design; a Failure says what the file holds if it is none.
vrl::Netlist& circuitOf(Design const& design);

}  // namespace vrltool
