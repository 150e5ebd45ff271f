#include "check/rule.h"

#include <algorithm>
#include <string_view>

#include "text/failure.h"
#include "text/near_names.h"

namespace vrltool::check {

namespace {

Rules concatenated() {
    Rules rules;
    for (auto const family : {&elementRules, &parameterRules, &foundryRules, &portRules, &nodeRules, &boundaryRules})
        rules.insert(rules.end(), family().begin(), family().end());
    std::sort(rules.begin(), rules.end(),
              [](Rule const& a, Rule const& b) { return std::string_view(a.id) < std::string_view(b.id); });
    return rules;
}

}  // namespace

std::vector<std::string> const& severityWords() {
    static std::vector<std::string> const words{"error", "warning", "note", "off"};
    return words;
}

bool severityOf(std::string const& word, Severity& severity) {
    for (Severity const s : {Severity::kOff, Severity::kNote, Severity::kWarning, Severity::kError}) {
        if (word != severityWord(s)) continue;
        severity = s;
        return true;
    }
    return false;
}

Rules const& allRules() {
    static Rules const rules = concatenated();
    return rules;
}

std::vector<std::string> ruleIds() {
    std::vector<std::string> ids;
    for (Rule const& rule : allRules()) ids.emplace_back(rule.id);
    return ids;
}

Rule const& ruleOf(std::string const& id) {
    for (Rule const& rule : allRules())
        if (id == rule.id) return rule;
    std::string const near = didYouMean(id, ruleIds());
    throw Failure("'" + id + "'", "there is no such rule", near.empty() ? "'vrl explain' lists the rules" : near);
}

}  // namespace vrltool::check
