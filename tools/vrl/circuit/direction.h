#pragma once

#include <string>

#include "vrllib/vrllib.h"

namespace vrltool {

/// Which way light goes through a port, by the first letters of its name.
enum class Direction { kNone, kInput, kOutput };

Direction directionOf(std::string const& port);

/// Whether a port of this domain is a contact, whatever its name: DC or RF.
bool isElectrical(vrl::EnumList::Domain domain);

/// "input" or "output"; null for a contact, and for a name that says neither.
char const* directionWord(std::string const& port, vrl::EnumList::Domain domain);

}  // namespace vrltool
