#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace vrl_test {

/// What a picture is like, read from its SVG.
struct Measured {
    int width = 0;
    int height = 0;
    std::size_t blocks = 0;  ///< and frames
    std::size_t wires = 0;
    std::size_t crossings = 0;
    std::size_t bends = 0;
    double empty = 0;                 ///< the share of the area without blocks and labels
    std::vector<std::string> faults;  ///< a line each; see measured()
};

/// Measures a picture. Faults are: wires that touch a block or a text, that leave their frame, that end elsewhere than
/// at what they connect, or that touch another wire without crossing it; blocks and labels that overlap; texts that are
/// wider than their block, or on its symbol; anything outside the picture. Throws a std::runtime_error for what is no
/// such picture.
Measured measured(std::string const& svg);

}  // namespace vrl_test
