#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "check/rule.h"
#include "check/scope.h"
#include "circuit/parameters.h"
#include "text/progress.h"

namespace vrltool::check {

/// Where in a design something was found; what does not apply is empty or 0.
struct Place {
    std::string element;  ///< its path, "arms/upper"; empty for the design itself
    std::string port;
    std::string parameter;
    unsigned node = 0;
};

/// What a finding is about, for programs, which should not have to read it from its text.
struct Facts {
    std::optional<Parameter> parameter = {};  ///< its value and its bounds
    std::vector<Place> others = {};           ///< the other ports
    std::string common = {};                  ///< what is the same of several findings, where their texts differ
};

/// What a rule found.
struct RuleFinding : Finding {
    Rule const* rule;
    Place place;
    Facts facts = {};

    /// What is the same of several findings.
    std::string const& common() const { return facts.common.empty() ? what : facts.common; }
};

/// Takes the findings of one rule after the other.
class Findings {
public:
    /// What comes from now on is of this rule.
    void begin(Rule const& asked, Severity asSevere) {
        rule = &asked;
        severity = asSevere;
    }
    /// Adds a finding. Neither text ends in a full stop.
    void add(Place place, std::string what, std::string hint, Facts facts = {}) {
        list.push_back({{severity, std::move(what), std::move(hint)}, rule, std::move(place), std::move(facts)});
    }
    /// Whether the rule can look at the element: it has a block, and of the block is known what the rule needs.
    bool covers(CheckedElement const& checked) {
        progress.step();
        return checked.element->block && !isLeftOut(*rule, checked);
    }
    /// Whether something that the rule needs is not known of the element.
    static bool isLeftOut(Rule const& rule, CheckedElement const& checked) {
        return ((rule.needs & kKind) && checked.standIn) || ((rule.needs & kFoundry) && checked.foundryUnknown);
    }
    /// All findings, heaviest first, by rule, element, port and parameter; the list is empty afterwards.
    std::vector<RuleFinding> take();

private:
    Progress progress{"looking", "times at an element"};
    Rule const* rule = nullptr;
    Severity severity = Severity::kOff;
    std::vector<RuleFinding> list;
};

}  // namespace vrltool::check
