#pragma once

#include <cstddef>
#include <vector>

#include "diff/wiring.h"

namespace vrltool::diff {

/// Which part of A is which of B; kNone: it has none there.
struct Matching {
    Matching(Wiring const& a, Wiring const& b) : toB(a.parts.size(), kNone), toA(b.parts.size(), kNone) {}
    void pair(std::size_t inA, std::size_t inB) {
        toB[inA] = inB;
        toA[inB] = inA;
    }

    std::vector<std::size_t> toB;  ///< by part of A
    std::vector<std::size_t> toA;  ///< by part of B
};

/// Finds the parts of A in B: by their names, and if `renames` is set those without a match by their connections.
///
/// A name is the designer's identity of a part, so parts of the same name are always the same, whatever became of them.
/// The others are renamed, removed or added. They are compared by the refinement of colours (refinement.h): at first
/// with all that they hold, so that what merely has a new name is found exactly; then by kind alone, and then with a
/// boundary whose order may have changed. Last, elements whose connections changed as well are found by those that they
/// kept (kept_connections.h). What stays ambiguous, such as two equal elements with equal neighbours, is not guessed:
/// it counts as removed and added. Elements without names are compared by what they hold.
Matching matchParts(Wiring const& a, Wiring const& b, bool renames);

}  // namespace vrltool::diff
