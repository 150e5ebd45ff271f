#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

#include "check/explain.h"
#include "cli/grammar.h"
#include "commands/candidates.h"
#include "commands/commands.h"

namespace vrltool {

using namespace check;

namespace {

Outcome explain(std::string const& id, Common const& common) {
    Rules const rules = id.empty() ? allRules() : Rules{ruleOf(id)};
    if (common.json)
        writeJson(std::cout, explainJson(rules));
    else if (id.empty())
        writeRuleList(std::cout, rules);
    else
        writePage(std::cout, rules.front());
    return Outcome::kFine;
}

}  // namespace

void addExplain(Grammar& grammar) {
    auto const id = std::make_shared<std::string>();
    CLI::App& command = grammar.add("explain", "explains a rule of 'vrl check' and how to mend what it finds",
                                    "  vrl explain                         # all rules with their severities\n"
                                    "  vrl explain cross-section-mismatch  # the page of one rule",
                                    [id](Common const& common) { return explain(*id, common); });
    command.add_option("rule", *id, "the id of the rule; without it, all rules are listed")->type_name("RULE");
    registerCandidates("RULE", ruleIds);
}

}  // namespace vrltool
