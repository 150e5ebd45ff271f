#include "check/findings.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace vrltool {

std::vector<Finding> Findings::take() {
    auto const order = [](Finding const& finding) {
        Place const& place = finding.place;
        return std::tie(place.element, place.port, place.parameter, place.node);
    };
    std::stable_sort(list.begin(), list.end(), [&](Finding const& a, Finding const& b) { return order(a) < order(b); });
    return std::exchange(list, {});
}

}  // namespace vrltool
