#include "check/findings.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace vrltool::check {

std::vector<RuleFinding> Findings::take() {
    auto const place = [](RuleFinding const& finding) {
        return std::tie(finding.place.element, finding.place.port, finding.place.parameter);
    };
    auto const isLess = [&](RuleFinding const& a, RuleFinding const& b) {
        if (place(a) != place(b)) return place(a) < place(b);
        return a.severity != b.severity ? a.severity > b.severity : a.rule < b.rule;  // as in the table of all rules
    };
    if (!std::is_sorted(list.begin(), list.end(), isLess)) std::stable_sort(list.begin(), list.end(), isLess);
    return std::exchange(list, {});
}

}  // namespace vrltool::check
