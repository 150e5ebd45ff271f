#include "vrllib/model/composite.h"

// A null `this` is allowed in this file. It is compiled so that the tests stay, and so that the sanitisers, which would
// stop at the call, leave them alone; see the CMakeLists.txt of this folder.

namespace Vorlane_v1_0 {

namespace {

/// Takes the pointer as a plain one: the compilers hold that a null `this` cannot be, and warn of a test of it.
bool isThere(void const* composite) { return composite != nullptr; }

}  // namespace

BB* CBB::getAsBB() { return isThere(this) ? static_cast<BB*>(this) : nullptr; }
BB const* CBB::getAsBB() const { return isThere(this) ? static_cast<BB const*>(this) : nullptr; }
Netlist* CBB::getAsNetlist() { return isThere(this) ? static_cast<Netlist*>(this) : nullptr; }
Netlist const* CBB::getAsNetlist() const { return isThere(this) ? static_cast<Netlist const*>(this) : nullptr; }

}  // namespace Vorlane_v1_0
