#pragma once

#include <iosfwd>

namespace CLI {
class App;
}  // namespace CLI

namespace vrltool {

/// Writes the page of the manual, in the language of the man macros, from the grammar. It carries no date.
void writeManPage(std::ostream& os, CLI::App const& root);

}  // namespace vrltool
