#pragma once

#include <string>
#include <vector>

namespace vrltool::diff {

/// What counts as a difference.
struct DiffSettings {
    double relative = 0;  ///< numbers that differ by no more than this share of the greater one are the same
    double absolute = 0;  ///< or by no more than this
    std::vector<std::string> ignored;  ///< parameters, "NAME" everywhere or "PATH.NAME" of one element
    bool notes = true;                 ///< whether notes are compared
    bool renames = true;               ///< whether renamed elements are looked for
};

}  // namespace vrltool::diff
