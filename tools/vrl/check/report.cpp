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
    std::size_t errors = 0, warnings = 0, notes = 0, failed = 0;

    void add(FileReport const& file) {
        errors += file.count(Severity::kError);
        warnings += file.count(Severity::kWarning);
        notes += file.count(Severity::kNote);
        failed += !file.failure.empty();
    }
    std::string text() const {
        std::vector<std::string> parts;
        if (errors > 0) parts.push_back(counted(errors, "error"));
        if (warnings > 0) parts.push_back(counted(warnings, "warning"));
        if (notes > 0) parts.push_back(counted(notes, "note"));
        return parts.empty() ? "no findings" : listText(parts);
    }
    Json json() const { return Json{{"errors", errors}, {"warnings", warnings}, {"notes", notes}}; }
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

void writeFile(std::ostream& os, FileReport const& file) {
    Counts counts;
    counts.add(file);
    os << printable(file.path) << " (" << printable(file.type) << ", " << counted(file.elements, "element")
       << "): " << counts.text() << '\n';
    for (RuleFinding const& finding : file.findings) writeFinding(os, finding);
    writeLeftOut(os, file.leftOut);
    os << '\n';
}

void writeRules(std::ostream& os, std::vector<ChosenRule> const& rules) {
    std::vector<std::string> ran;
    std::map<std::string, std::vector<std::string>> others;
    for (ChosenRule const& chosen : rules) (chosen.runs() ? ran : others[chosen.reason]).emplace_back(chosen.rule->id);
    os << counted(ran.size(), "rule") << " ran" << (ran.empty() ? "" : ":") << '\n'
       << wrapped(listText(ran, ran.size()), 2);
    for (auto const& entry : others)
        os << counted(entry.second.size(), "rule") << " did not run (" << entry.first << "):\n"
           << wrapped(listText(entry.second, entry.second.size()), 2);
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

void writeCheckReport(std::ostream& os, std::vector<FileReport> const& files, std::vector<ChosenRule> const& rules) {
    Counts counts;
    for (FileReport const& file : files) {
        counts.add(file);
        if (file.failure.empty()) writeFile(os, file);
    }
    if (counts.failed < files.size()) writeRules(os, rules);
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
