#pragma once

#include <array>
#include <complex>
#include <cstddef>
#include <string>

// The circuit that every peer builds: a chain of blocks of 20 kinds, each with four ports, of which two are connected
// to the block before, and five parameters. Names, descriptions and units are as long as those of real designs.

namespace bench {

constexpr std::size_t kKinds = 20;
constexpr char const* kFoundry = "BenchFab";
constexpr char const* kCrossSection = "strip";
constexpr std::array<char const*, 4> kPorts{"in0", "in1", "out0", "out1"};

inline std::string kindName(std::size_t kind) { return "benchBlock" + std::to_string(kind); }
inline std::string elementName(std::size_t place) { return "block" + std::to_string(place); }

/// A parameter of every block.
template <class T>
struct ParameterSpec {
    char const* name;
    char const* description;
    char const* unit;
    T value;
};

constexpr ParameterSpec<double> kLength{"length", "length of the waveguide along its centre line", "um", 125.5};
constexpr ParameterSpec<double> kWidth{"width", "width of the core of the waveguide", "um", 0.5};
constexpr ParameterSpec<int> kCount{"sections", "number of sections in series", "", 3};
constexpr ParameterSpec<bool> kHeated{"heated", "whether a heater lies above the waveguide", "", true};
constexpr ParameterSpec<char const*> kModel{"model", "name of the compact model", "", "tmm"};

/// The length that a block has in the circuit, which differs from that of its kind.
inline double lengthOf(std::size_t place) { return 100.0 + static_cast<double>(place % 1000) / 8; }

}  // namespace bench
