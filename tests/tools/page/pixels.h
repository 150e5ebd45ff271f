#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace vrl_test {

using Colour = std::array<unsigned char, 3>;  // red, green, blue

/// The pixels of a bitmap, row by row.
struct Pixels {
    std::size_t width = 0;
    std::size_t height = 0;
    std::vector<Colour> colours;

    Colour const& at(std::size_t x, std::size_t y) const { return colours.at(y * width + x); }
    /// How many have that colour, from x = `from` on and before `to`.
    std::size_t count(Colour const& colour, std::size_t from, std::size_t to) const;
};

/// Reads a PNG; a runtime_error for what is none.
Pixels pixelsOf(std::string const& file);

}  // namespace vrl_test
