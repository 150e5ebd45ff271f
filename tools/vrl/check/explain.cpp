#include "check/explain.h"

#include <nlohmann/json.hpp>
#include <ostream>

#include "text/phrases.h"
#include "text/table.h"

namespace vrltool::check {

namespace {

/// What the rule has to know, and why it may leave something out.
struct Need {
    unsigned flag;
    char const* word;
    char const* text;
};

Need const kNeedTexts[] = {
    {kKind, "kind", "It does not look at elements whose kind no loaded plug-in has."},
    {kFoundry, "foundry", "It does not look at elements whose foundry is unknown."},
    {kCircuit, "circuit", "It does not run on a block that was saved without a circuit."},
};

std::string severityTextOf(Rule const& rule) {
    std::string const id = rule.id;
    std::string text = std::string("It is ") + (rule.severity == Severity::kError ? "an " : "a ") +
                       severityWord(rule.severity) + " by default. 'vrl check --severity " + id +
                       "=LEVEL' sets error, warning, note or off; '--skip " + id + "' leaves the rule out.";
    for (Need const& need : kNeedTexts)
        if (rule.needs & need.flag) text += std::string(" ") + need.text;
    return text;
}

void writeSection(std::ostream& os, char const* heading, std::string const& text) {
    os << '\n' << heading << '\n' << wrapped(text, 4);
}

Json ruleJson(Rule const& rule) {
    Json needs = Json::array();
    for (Need const& need : kNeedTexts)
        if (rule.needs & need.flag) needs.push_back(need.word);
    return Json{{"id", rule.id},
                {"title", rule.title},
                {"severity", severityWord(rule.severity)},
                {"needs", needs},
                {"meaning", rule.page.meaning},
                {"why", rule.page.why},
                {"example", rule.page.example},
                {"hint", rule.page.hint}};
}

}  // namespace

void writePage(std::ostream& os, Rule const& rule) {
    os << rule.id << ": " << rule.title << '\n';
    writeSection(os, "What it means", rule.page.meaning);
    writeSection(os, "Why it matters", rule.page.why);
    writeSection(os, "An example", rule.page.example);
    writeSection(os, "How to mend it", rule.page.hint);
    writeSection(os, "Its severity", severityTextOf(rule));
}

void writeRuleList(std::ostream& os, Rules const& rules) {
    Table table({"RULE", "SEVERITY", "WHAT IT FINDS"});
    for (Rule const& rule : rules) table.add({rule.id, severityWord(rule.severity), rule.title});
    table.write(os);
    os << "\n'vrl explain RULE' shows more of a rule.\n";
}

Json explainJson(Rules const& rules) {
    Json json = jsonHead("explain", 1);
    json["rules"] = Json::array();
    for (Rule const& rule : rules) json["rules"].push_back(ruleJson(rule));
    return json;
}

}  // namespace vrltool::check
