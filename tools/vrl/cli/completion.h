#pragma once

#include <iosfwd>

namespace CLI {
class App;
}  // namespace CLI

namespace vrltool {

/// Writes the completion script of bash from the grammar. It needs nothing but bash. What only the plug-ins or a design
/// know it asks for with "vrl complete".
void writeBashCompletion(std::ostream& os, CLI::App const& root);

}  // namespace vrltool
