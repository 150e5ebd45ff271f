#include "check/findings.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace vrltool::check {

std::vector<RuleFinding> Findings::take() {
    auto const place = [](RuleFinding const& finding) {
        return std::tie(finding.place.element, finding.place.port, finding.place.parameter);
    };
    std::stable_sort(list.begin(), list.end(), [&](RuleFinding const& a, RuleFinding const& b) {
        return place(a) != place(b) ? place(a) < place(b) : a.severity > b.severity;
    });
    return std::exchange(list, {});
}

}  // namespace vrltool::check
