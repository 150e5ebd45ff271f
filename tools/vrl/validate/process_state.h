#pragma once

#include <string>
#include <vector>

namespace vrltool::validate {

/// Something that belongs to the whole program, and how it is set.
struct ProcessProperty {
    char const* name;  ///< "the working folder"
    std::string state;
};

/// All of them, always in the same order.
std::vector<ProcessProperty> processState();

}  // namespace vrltool::validate
