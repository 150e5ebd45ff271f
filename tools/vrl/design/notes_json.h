#pragma once

#include <string>

#include "text/json.h"
#include "vrllib/vrllib.h"

namespace vrltool {

/// A note as JSON: what an import kept is the value that it is, and every other note a string.
Json noteJson(std::string const& key, std::string const& text);

/// All notes by key.
Json notesJson(vrl::Annotations const& notes);

}  // namespace vrltool
