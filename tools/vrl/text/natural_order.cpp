#include "text/natural_order.h"

#include <string_view>

namespace vrltool {

namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// The digits at a place of a name without leading zeros; the place is moved after them.
std::string_view digitsAt(std::string_view name, std::size_t& at) {
    while (at < name.size() && name[at] == '0') ++at;
    std::size_t const first = at;
    while (at < name.size() && isDigit(name[at])) ++at;
    return name.substr(first, at - first);
}

}  // namespace

bool naturallyLess(std::string const& a, std::string const& b) {
    std::size_t i = 0, j = 0;
    while (i < a.size() && j < b.size()) {
        if (isDigit(a[i]) && isDigit(b[j])) {
            auto const x = digitsAt(a, i), y = digitsAt(b, j);
            if (x.size() != y.size()) return x.size() < y.size();
            if (x != y) return x < y;
        } else {
            if (a[i] != b[j]) return static_cast<unsigned char>(a[i]) < static_cast<unsigned char>(b[j]);
            ++i;
            ++j;
        }
    }
    bool const aEnds = i == a.size(), bEnds = j == b.size();
    return aEnds == bEnds ? a < b : aEnds;
}

}  // namespace vrltool
