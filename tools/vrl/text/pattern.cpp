#include "text/pattern.h"

namespace vrltool {

bool isPattern(std::string const& text) { return text.find_first_of("*?") != std::string::npos; }

/// Behind the last star, a run that does not fit begins one byte later; what earlier stars took need not be tried
/// again.
bool fits(std::string const& name, std::string const& pattern) {
    std::size_t n = 0, p = 0, star = std::string::npos, from = 0;
    while (n < name.size()) {
        if (p < pattern.size() && pattern[p] == '*') {
            star = p++;
            from = n;
        } else if (p < pattern.size() && (pattern[p] == '?' || pattern[p] == name[n])) {
            ++p;
            ++n;
        } else if (star != std::string::npos) {
            p = star + 1;
            n = ++from;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', p) == std::string::npos;
}

}  // namespace vrltool
