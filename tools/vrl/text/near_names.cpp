#include "text/near_names.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <iterator>
#include <set>
#include <utility>

#include "text/phrases.h"

namespace vrltool {

namespace {

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

/// The words of a name in lower case: runs of letters, or of digits.
std::vector<std::string> wordsOf(std::string const& name) {
    std::vector<std::string> words;
    int last = 0;
    for (unsigned char const c : name) {
        int const sort = std::isalpha(c) ? 1 : std::isdigit(c) ? 2 : 0;
        if (sort != 0 && sort != last) words.emplace_back();
        if (sort != 0) words.back() += static_cast<char>(std::tolower(c));
        last = sort;
    }
    return words;
}

/// Whether two words of names of ports exclude each other.
bool areContrary(std::string const& a, std::string const& b) {
    static std::vector<std::vector<std::set<std::string>>> const groups{{{"l", "left"}, {"r", "right"}},
                                                                        {{"t", "top"}, {"b", "bot", "bottom"}},
                                                                        {{"in", "input"}, {"out", "output"}},
                                                                        {{"e"}, {"o"}, {"w"}, {"n"}, {"s"}}};
    for (auto const& group : groups) {
        auto const side = [&](std::string const& word) {
            return std::find_if(group.begin(), group.end(), [&](auto const& names) { return names.count(word) > 0; });
        };
        if (side(a) != group.end() && side(b) != group.end()) return side(a) != side(b);
    }
    return false;
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

std::string nameBySlip(std::string const& wrong, std::vector<std::string> const& names) {
    for (std::string const& name : names)
        if (editDistance(wrong, name) == 1) return name;
    return {};
}

std::vector<std::string> onSameSide(std::string const& name, std::vector<std::string> const& names) {
    auto const given = wordsOf(name);
    auto const isElsewhere = [&](std::string const& known) {
        auto const words = wordsOf(known);
        std::size_t const both = std::min(words.size(), given.size());
        for (std::size_t i = 0; i < both; ++i)
            if (areContrary(words[i], given[i])) return true;
        return false;
    };
    std::vector<std::string> result;
    std::remove_copy_if(names.begin(), names.end(), std::back_inserter(result), isElsewhere);
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
