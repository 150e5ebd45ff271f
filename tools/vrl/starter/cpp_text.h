#pragma once

#include <string>
#include <vector>

#include "starter/block_table.h"

// The pieces of C++ that the sources of a table are made of. Each line ends in a line feed.

namespace vrltool::starter {

/// "HEAD(A, B, C);", with the arguments in more lines where one line has no room.
std::string callText(std::size_t indent, std::string const& head, std::vector<std::string> const& arguments,
                     std::string const& tail = ";");

/// The lines of a constructor that add parameters.
std::string parametersText(std::size_t indent, std::vector<TableParameter> const& parameters);

/// The lines that set a choice, of what `object` says: "getCS()".
std::string choiceText(std::size_t indent, std::string const& object, TableChoice const& choice);

/// A class of a block, whole.
std::string blockClass(TableBlock const& block, std::string const& className);

}  // namespace vrltool::starter
