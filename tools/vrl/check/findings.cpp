#include "check/findings.h"

#include <algorithm>
#include <utility>

#include "text/natural_order.h"

namespace vrltool::check {

namespace {

/// Names are in the order in which people count.
bool isBefore(Place const& a, Place const& b) {
    if (a.element != b.element) return naturallyLess(a.element, b.element);
    if (a.port != b.port) return naturallyLess(a.port, b.port);
    return naturallyLess(a.parameter, b.parameter);
}

}  // namespace

std::vector<RuleFinding> Findings::take() {
    auto const isLess = [](RuleFinding const& a, RuleFinding const& b) {
        if (a.severity != b.severity) return a.severity > b.severity;
        return a.rule != b.rule ? a.rule < b.rule : isBefore(a.place, b.place);  // as in the table of all rules
    };
    if (!std::is_sorted(list.begin(), list.end(), isLess)) std::stable_sort(list.begin(), list.end(), isLess);
    return std::exchange(list, {});
}

}  // namespace vrltool::check
