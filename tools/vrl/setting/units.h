#pragma once

#include <optional>
#include <string>

namespace vrltool::setting {

/// How a number in one unit becomes one in another: a power of ten, and a factor besides.
struct Conversion {
    int power = 0;
    double factor = 1;
};

/// From one unit to another. None if they measure different things, or if one is not known and they differ.
///
/// Known are m, g, s, Hz, A, V, W, ohm, F, H, J, eV, K, T, Pa, N and rad with their prefixes from f to T, deg, dB and
/// dBm, and products and quotients of them with powers: "dB/cm", "ps/nm/km", "V mm", "um^2".
std::optional<Conversion> conversion(std::string const& from, std::string const& to);

}  // namespace vrltool::setting
