#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>

namespace vrltool {

/// A place in the bytes of a saved design that somebody looks for. It is an item, from its opening to after its closing
/// marker: a member of an object, by its id, or an element of a container, by its key (a number in decimal).
struct SavedPlace {
    std::map<std::string, SavedPlace> inner;  ///< what is looked for inside the item
    bool wantsAll = false;                    ///< whether all members of the object are, whatever their ids

    /**@{*/
    /// Set by findPlaces; an item that is missing is not found.
    bool found = false;
    bool isContainer = false;
    std::size_t begin = 0, end = 0;
    std::size_t count = 0;  ///< of an object or a container: where the number of its members or elements is
    /**@}*/
};

/// Finds the places below `root`, which is the object at the beginning of the bytes, at this depth.
///
/// It follows the structure, so that no value misleads it; only the end of a member with an unknown id is searched for.
/// Errors: a std::runtime_error with what is wrong and where, for bytes that are laid out in another way than the
/// library writes them, and for an item that is looked for and is repeated.
void findPlaces(std::string_view bytes, SavedPlace& root, unsigned depth = 0);

/// A count, a string, and a marker of some depth, as saved.
std::string savedNumber(std::size_t number);
std::string savedString(std::string const& text);
std::string savedMarker(unsigned depth);

}  // namespace vrltool
