#pragma once

#include <string>
#include <vector>

namespace vrltool {

/// Up to three of the names that are near to a wrong one, nearest first, equal ones in order of the names.
///
/// Near means few letters changed, left out, added or swapped with their neighbour (about one in three), without regard
/// at capitals, or that one is the beginning of the other.
std::vector<std::string> nearNames(std::string const& wrong, std::vector<std::string> const& names);

/// "did you mean 'a', 'b' or 'c'?", or an empty text without near names.
std::string didYouMean(std::string const& wrong, std::vector<std::string> const& names);

/// The name that becomes a wrong one by one slip: a letter changed, left out, added, or swapped with its neighbour.
/// Empty without such a name.
std::string nameBySlip(std::string const& wrong, std::vector<std::string> const& names);

/// The names of ports without those on another side or in another domain than a name says: without "l_e1" and "r_o1"
/// for "r_e1".
std::vector<std::string> onSameSide(std::string const& name, std::vector<std::string> const& names);

}  // namespace vrltool
