#include "vrllib/platform/wildcard.h"

namespace Vorlane_v1_0::platform {

// Only the last `*` needs to be remembered: what an earlier one took can stay with it. So the time is at most the
// product of the two lengths, whatever the pattern.
bool matchesWildcard(std::string_view pattern, std::string_view name) {
    std::size_t p = 0;
    std::size_t n = 0;
    std::size_t star = std::string_view::npos;
    std::size_t starEnd = 0;
    while (n < name.size()) {
        if (p < pattern.size() && pattern[p] == '*') {
            star = p++;
            starEnd = n;
        } else if (p < pattern.size() && (pattern[p] == '?' || pattern[p] == name[n])) {
            ++p;
            ++n;
        } else if (star != std::string_view::npos) {
            p = star + 1;
            n = ++starEnd;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', p) == std::string_view::npos;
}

PatternPath splitPattern(std::string const& path, char const* separators) {
    auto const last = path.find_last_of(separators);
    if (last == std::string::npos) return {"", path};
    return {path.substr(0, last + 1), path.substr(last + 1)};
}

}  // namespace Vorlane_v1_0::platform
