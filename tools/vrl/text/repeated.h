#pragma once

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <set>
#include <string_view>

namespace vrltool {

/// Whether some of these things have the same name, which `nameOf` returns a reference to.
template <class Iterator, class NameOf>
bool anyNameRepeated(Iterator first, Iterator last, NameOf const& nameOf) {
    constexpr std::ptrdiff_t kFew = 16;  // are compared as fast with each other
    if (std::distance(first, last) > kFew) {
        std::set<std::string_view> names;
        return std::any_of(first, last, [&](auto const& item) { return !names.insert(nameOf(item)).second; });
    }
    for (auto item = first; item != last; ++item)
        if (std::any_of(first, item, [&](auto const& before) { return nameOf(before) == nameOf(*item); })) return true;
    return false;
}

}  // namespace vrltool
