#pragma once

#include <string>
#include <vector>

namespace vrltool::draw {

/// What is drawn in a block for what it is. A plug-in chooses one by its name.
struct Symbol {
    char const* name;
    char const* outline;    ///< a path of SVG within 20 points to each side and 10 up and down, inputs at the left
    bool facesOut = false;  ///< whether its left side is that of the fibre, wherever that is
};

/// The symbol of that name, or null.
Symbol const* findSymbol(std::string const& name);

std::vector<std::string> symbolNames();

}  // namespace vrltool::draw
