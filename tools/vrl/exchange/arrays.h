#pragma once

#include <vector>

#include "exchange/document.h"

namespace vrltool::exchange {

/// The note of an element that came from an array: {"of", "columns", "rows", "array"}.
Tree arrayNote(Instance const& instance);

/// Puts the elements of arrays together again. `notes` are those of the instances, null for what is in no array. Where
/// an element is missing or differs from the others, all of them stay, and keep the note in their extensions.
std::vector<Instance> collapsed(std::vector<Instance> instances, std::vector<Tree> const& notes);

}  // namespace vrltool::exchange
