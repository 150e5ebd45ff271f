#pragma once

#include <cstddef>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include "design/stand_in.h"
#include "vrllib/vrllib.h"

namespace vrltool {

/// What a file holds: one persistent object of whatever class, and what was missing while it was read.
///
/// The object is owned by this one. Of the pointers, those are set that the object is: a composite is a block, a
/// netlist and a parameter list.
struct Design {
    std::string path;
    std::string type;  ///< what the file says of its object: "Netlist", or a kind
    vrl::Netlist* netlist = nullptr;
    vrl::BB* block = nullptr;
    vrl::Attribute* parameter = nullptr;
    vrl::Attributes* list = nullptr;
    vrl::Annotations* notes = nullptr;
    vrl::Foundry::CSInfo* choice = nullptr;
    vrl::BB::Port* port = nullptr;
    std::vector<MissingKind> missing;  ///< what stand-ins were made for
    std::size_t bytesBehind = 0;       ///< what stands in the file behind the object
    std::shared_ptr<void> owner;

    /// Prints the object as the library prints it.
    void print(std::ostream& os) const;
    /// Writes the object to any format. False if that fails.
    bool write(vrl::SerialiserBase& serialiser) const;
};

/// Reads a file whole, with stand-ins for missing kinds. The library has to be started.
///
/// A Failure tells a file that cannot be read, is empty, is cut short or damaged, and where.
Design readDesign(std::string const& path);

/// The netlist of a design; a Failure says what the file holds if it is none.
vrl::Netlist& circuitOf(Design const& design);

/// Ties a block to the foundry that its file names: one of each name for the whole process. Null for an unknown one.
void attachFoundry(vrl::BB& block);

/// Does so for every block, also inside composites. Netlists prepare themselves with new foundries, which nobody frees.
void prepareWhole(vrl::Netlist& netlist);

/// One line for each missing kind, with the configured libraries that failed to load, for standard error. Empty if
/// nothing is missing.
std::string missingText(Design const& design);
/// The same for two designs; the libraries are told once.
std::string missingText(Design const& a, Design const& b);

}  // namespace vrltool
