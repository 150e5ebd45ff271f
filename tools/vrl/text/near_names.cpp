#include "text/near_names.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <utility>

namespace vrltool {

namespace {

std::string lowered(std::string text) {
    for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text;
}

/// The number of letters changed, left out, added or swapped with their neighbour that lead from `a` to `b`.
std::size_t editDistance(std::string const& a, std::string const& b) {
    std::vector<std::size_t> beforeLast(b.size() + 1), last(b.size() + 1), row(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j) row[j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        beforeLast.swap(last);
        last.swap(row);
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (a[i - 1] != b[j - 1])});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
                row[j] = std::min(row[j], beforeLast[j - 2] + 1);
        }
    }
    return row[b.size()];
}

bool startsWith(std::string const& text, std::string const& start) { return text.compare(0, start.size(), start) == 0; }

}  // namespace

std::vector<std::string> nearNames(std::string const& wrong, std::vector<std::string> const& names) {
    constexpr std::size_t kMost = 3;
    constexpr std::size_t kLongest = 256;  // longer strings are no typing errors
    std::vector<std::pair<std::size_t, std::string>> near;
    std::string const given = lowered(wrong);
    if (given.empty() || given.size() > kLongest) return {};
    for (std::string const& name : names) {
        std::string const known = lowered(name);
        if (known.empty() || known.size() > kLongest) continue;
        std::size_t const distance = editDistance(given, known);
        std::size_t const allowed = std::max<std::size_t>(1, std::max(given.size(), known.size()) / 3);
        bool const begins = given.size() > 2 && (startsWith(known, given) || startsWith(given, known));
        if (distance <= allowed || begins) near.emplace_back(distance, name);
    }
    std::sort(near.begin(), near.end());
    std::vector<std::string> result;
    for (auto& entry : near) {
        if (result.size() == kMost) break;
        if (std::find(result.begin(), result.end(), entry.second) == result.end())
            result.push_back(std::move(entry.second));
    }
    return result;
}

std::string didYouMean(std::string const& wrong, std::vector<std::string> const& names) {
    auto const near = nearNames(wrong, names);
    std::string text;
    for (std::size_t i = 0; i < near.size(); ++i) {
        if (i > 0) text += i + 1 == near.size() ? " or " : ", ";
        text += "'" + near[i] + "'";
    }
    return text.empty() ? text : "did you mean " + text + "?";
}

}  // namespace vrltool
