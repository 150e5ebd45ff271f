#include "check/report.h"

#include <algorithm>
#include <map>
#include <nlohmann/json.hpp>
#include <ostream>

#include "text/phrases.h"
#include "text/table.h"

namespace vrltool::check {

namespace {

/// How many findings there are of each severity, and how many files could not be checked.
struct Counts {
    std::size_t errors = 0, warnings = 0, notes = 0, excepted = 0, failed = 0;

    void add(FileReport const& file) {
        errors += file.count(Severity::kError);
        warnings += file.count(Severity::kWarning);
        notes += file.count(Severity::kNote);
        excepted += file.excepted.size();
        failed += !file.failure.empty();
    }
    std::string text() const {
        std::vector<std::string> parts;
        if (errors > 0) parts.push_back(counted(errors, "error"));
        if (warnings > 0) parts.push_back(counted(warnings, "warning"));
        if (notes > 0) parts.push_back(counted(notes, "note"));
        std::string const found = parts.empty() ? "no findings" : listText(parts);
        return excepted > 0 ? found + "; " + std::to_string(excepted) + " excepted" : found;
    }
    Json json() const {
        return Json{{"errors", errors}, {"warnings", warnings}, {"notes", notes}, {"excepted", excepted}};
    }
};

std::string placeText(Place const& place) {
    std::string const element = place.element.empty() ? "the design" : place.element;
    return printable(place.port.empty() ? element : element + "," + place.port);
}

void writeFinding(std::ostream& os, RuleFinding const& finding) {
    std::string const severity = severityWord(finding.severity);
    os << "  " << severity << std::string(9 - severity.size(), ' ') << placeText(finding.place) << ": "
       << printable(finding.what) << " [" << finding.rule->id << "]\n"
       << std::string(11, ' ') << printable(finding.hint) << '\n';
}

constexpr std::size_t kFew = 5;       // findings of a rule are all listed
constexpr std::size_t kExamples = 3;  // are shown of more

std::string findingText(RuleFinding const& finding) {
    return placeText(finding.place) + ": " + printable(finding.what);
}

/// The hint of all the findings of a rule, if it is the same.
std::string hintOf(std::vector<RuleFinding const*> const& group) {
    bool const same = std::all_of(group.begin(), group.end(),
                                  [&](RuleFinding const* finding) { return finding->hint == group.front()->hint; });
    return same ? group.front()->hint : std::string("'vrl explain ") + group.front()->rule->id + "' shows what to do";
}

/// The findings of a rule with many of them: how many, and the first ones.
void writeGroup(std::ostream& os, std::vector<RuleFinding const*> const& group) {
    std::string const severity = severityWord(group.front()->severity), margin(11, ' ');
    os << "  " << severity << std::string(9 - severity.size(), ' ') << group.size() << " findings ["
       << group.front()->rule->id << "]\n";
    for (std::size_t i = 0; i < kExamples; ++i) os << margin << "- " << findingText(*group[i]) << '\n';
    os << margin << "- and " << group.size() - kExamples << " more, which --all shows\n"
       << margin << printable(hintOf(group)) << '\n';
}

/// All findings of rules with few, as they are sorted; then those with many, by rule.
void writeFindings(std::ostream& os, std::vector<RuleFinding> const& findings, bool all) {
    std::map<std::pair<int, Rule const*>, std::vector<RuleFinding const*>> byRule;  // heaviest first
    for (RuleFinding const& finding : findings)
        byRule[{-static_cast<int>(finding.severity), finding.rule}].push_back(&finding);
    auto const isMany = [&](std::vector<RuleFinding const*> const& group) { return !all && group.size() > kFew; };
    for (RuleFinding const& finding : findings)
        if (!isMany(byRule[{-static_cast<int>(finding.severity), finding.rule}])) writeFinding(os, finding);
    for (auto const& entry : byRule)
        if (isMany(entry.second)) writeGroup(os, entry.second);
}

void writeExceptions(std::ostream& os, FileReport const& file, bool all) {
    for (Excepted const& excepted : file.excepted)
        if (all)
            os << "  excepted " << findingText(excepted.finding) << " [" << excepted.finding.rule->id << "]\n"
               << std::string(11, ' ') << "reason: " << printable(excepted.reason) << '\n';
    for (Exception const& exception : file.idle)
        os << "  " << printable(exception.place)
           << ": nothing needs the exception any more: " << printable(exception.text()) << '\n';
}

/// The rules that could not look at something, those together that have one reason.
void writeLeftOut(std::ostream& os, std::vector<LeftOut> const& list) {
    std::map<std::string, std::vector<std::string>> rulesOf;
    for (LeftOut const& leftOut : list) {
        std::string const where =
            leftOut.elements == 0 ? "not run, since" : "not on " + counted(leftOut.elements, "element");
        rulesOf[where + " " + leftOut.reason->text].emplace_back(leftOut.rule->id);
    }
    for (auto const& entry : rulesOf) {
        os << "  " << entry.first << ":\n";
        os << wrapped(listText(entry.second, entry.second.size()), 4);
    }
}

void writeHeading(std::ostream& os, FileReport const& file) {
    Counts counts;
    counts.add(file);
    os << printable(file.path) << " (" << printable(file.type) << ", " << counted(file.elements, "element")
       << "): " << counts.text() << '\n';
}

void writeFile(std::ostream& os, FileReport const& file, bool all) {
    writeHeading(os, file);
    writeFindings(os, file.findings, all);
    writeExceptions(os, file, all);
    writeLeftOut(os, file.leftOut);
    os << '\n';
}

/// Their number, and their ids if they are wanted.
void writeIds(std::ostream& os, std::vector<std::string> const& ids, std::string const& what, bool listed) {
    os << counted(ids.size(), "rule") << ' ' << what << (listed && !ids.empty() ? ":" : "") << '\n';
    if (listed) os << wrapped(listText(ids, ids.size()), 2);
}

void writeRules(std::ostream& os, std::vector<ChosenRule> const& rules, bool listed) {
    std::vector<std::string> ran;
    std::map<std::string, std::vector<std::string>> others;
    for (ChosenRule const& chosen : rules) (chosen.runs() ? ran : others[chosen.reason]).emplace_back(chosen.rule->id);
    writeIds(os, ran, "ran", listed);
    for (auto const& entry : others) writeIds(os, entry.second, "did not run (" + entry.first + ")", listed);
}

Json placeJson(Place const& place) {
    Json json{{"element", place.element}};
    if (!place.port.empty()) json["port"] = place.port;
    if (!place.parameter.empty()) json["parameter"] = place.parameter;
    if (place.node != 0) json["node"] = place.node;
    return json;
}

Json findingJson(RuleFinding const& finding) {
    Json json{{"rule", finding.rule->id}, {"severity", severityWord(finding.severity)}};
    json.update(placeJson(finding.place));
    json["what"] = finding.what;
    json["hint"] = finding.hint;
    return json;
}

Json fileJson(FileReport const& file) {
    Json json{{"file", file.path}};
    if (!file.failure.empty()) {
        json["failure"] = file.failure;
        if (!file.hint.empty()) json["hint"] = file.hint;
        return json;
    }
    Counts counts;
    counts.add(file);
    json["type"] = file.type;
    json["elements"] = file.elements;
    json["findings"] = Json::array();
    for (RuleFinding const& finding : file.findings) json["findings"].push_back(findingJson(finding));
    json["excepted"] = Json::array();
    for (Excepted const& excepted : file.excepted) {
        json["excepted"].push_back(findingJson(excepted.finding));
        json["excepted"].back()["reason"] = excepted.reason;
    }
    json["idleExceptions"] = Json::array();
    for (Exception const& exception : file.idle)
        json["idleExceptions"].push_back(
            Json{{"place", exception.place}, {"rule", exception.rule->id}, {"reason", exception.reason}});
    json["leftOut"] = Json::array();
    for (LeftOut const& leftOut : file.leftOut) {
        Json entry{{"rule", leftOut.rule->id}};
        if (leftOut.elements > 0) entry["elements"] = leftOut.elements;
        entry["reason"] = leftOut.reason->word;
        json["leftOut"].push_back(entry);
    }
    json["summary"] = counts.json();
    return json;
}

Json ruleJson(ChosenRule const& chosen) {
    Json json{{"id", chosen.rule->id}, {"severity", severityWord(chosen.severity)}, {"ran", chosen.runs()}};
    if (!chosen.runs()) json["reason"] = chosen.reason;
    return json;
}

}  // namespace

void writeCheckReport(std::ostream& os, std::vector<FileReport> const& files, std::vector<ChosenRule> const& rules,
                      ReportOptions const& options) {
    Counts counts;
    for (FileReport const& file : files) {
        counts.add(file);
        if (!options.quiet && file.failure.empty()) writeFile(os, file, options.all);
        if (options.quiet && file.count(Severity::kError) + file.count(Severity::kWarning) > 0) writeHeading(os, file);
    }
    if (options.quiet) return;
    if (counts.failed < files.size()) writeRules(os, rules, options.rules);
    if (files.size() == 1) return;
    os << '\n' << counted(files.size() - counts.failed, "file") << " checked: " << counts.text();
    if (counts.failed > 0) os << "; " << counted(counts.failed, "file") << " could not be checked";
    os << '\n';
}

Json checkJson(std::vector<FileReport> const& files, std::vector<ChosenRule> const& rules) {
    Json json = jsonHead("check", 1);
    Counts counts;
    json["files"] = Json::array();
    for (FileReport const& file : files) {
        counts.add(file);
        json["files"].push_back(fileJson(file));
    }
    json["rules"] = Json::array();
    for (ChosenRule const& chosen : rules) json["rules"].push_back(ruleJson(chosen));
    json["summary"] = counts.json();
    json["summary"]["checked"] = files.size() - counts.failed;
    json["summary"]["failed"] = counts.failed;
    return json;
}

}  // namespace vrltool::check
