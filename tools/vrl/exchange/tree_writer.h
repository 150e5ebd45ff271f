#pragma once

#include <string>

#include "exchange/reader.h"
#include "exchange/tree.h"

namespace vrltool::exchange {

/// A tree as JSON or YAML, in lines that end in line feeds. YAML is written so that readers of its older versions
/// understand the same. JSON has no number for ".inf" and its kin; it gets the texts "inf", "-inf" and "nan".
///
/// Texts are UTF-8.
std::string treeText(Tree const& tree, TextFormat format);

/// A tree in one line of JSON, for a note: a number that JSON does not have is {"vrl::number": ".inf"}.
std::string noteText(Tree const& tree);

/// The tree of a note. Null for a text that is none.
Tree treeOfNote(std::string const& text);

}  // namespace vrltool::exchange
