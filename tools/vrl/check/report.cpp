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

constexpr std::size_t kFew = 5;       // are all listed
constexpr std::size_t kExamples = 3;  // are shown of more
std::string const kMargin(11, ' ');

std::string findingText(RuleFinding const& finding) {
    return placeText(finding.place) + ": " + printable(finding.what);
}

/// "b1,in0 -- cp1,out0 (node 1)".
std::string portsText(RuleFinding const& finding) {
    std::string text = placeText(finding.place);
    for (Place const& other : finding.facts.others) text += " -- " + placeText(other);
    return text + (finding.place.node == 0 ? "" : " (node " + std::to_string(finding.place.node) + ")");
}

/// Findings of one rule that say the same of several places.
using Alike = std::vector<RuleFinding const*>;

/// The findings of one rule, alike ones together, and those with the same hint next to each other.
std::vector<Alike> alikeOnes(Alike const& findings) {
    std::map<std::string, std::size_t> hints;  // in the order in which they are met
    std::map<std::pair<std::size_t, std::string>, std::size_t> places;
    std::vector<std::pair<std::size_t, Alike>> groups;
    for (RuleFinding const* const finding : findings) {
        std::size_t const hint = hints.emplace(finding->hint, hints.size()).first->second;
        std::size_t const place = places.emplace(std::pair(hint, finding->common()), groups.size()).first->second;
        if (place == groups.size()) groups.push_back({hint, {}});
        groups[place].second.push_back(finding);
    }
    std::stable_sort(groups.begin(), groups.end(), [](auto const& a, auto const& b) { return a.first < b.first; });
    std::vector<Alike> result;
    for (auto& group : groups) result.push_back(std::move(group.second));
    return result;
}

/// Writes the findings of a file, those of a rule together. Each hint is once after those that share it.
class FindingWriter {
public:
    FindingWriter(std::ostream& o, bool a) : os(o), all(a) {}

    void writeRule(Alike const& findings) const {
        auto const groups = alikeOnes(findings);
        if (!all && groups.size() > kFew) return writeMany(findings);
        for (std::size_t i = 0; i < groups.size(); ++i) {
            writeAlike(groups[i]);
            std::string const& hint = groups[i].front()->hint;
            if (i + 1 == groups.size() || groups[i + 1].front()->hint != hint) writeHint(hint);
        }
    }

private:
    void writeHead(RuleFinding const& finding, std::string const& text) const {
        std::string const severity = severityWord(finding.severity);
        os << "  " << severity << std::string(9 - severity.size(), ' ') << text << " [" << finding.rule->id << "]\n";
    }
    void writeHint(std::string const& hint) const { os << kMargin << printable(hint) << '\n'; }

    template <class Text>
    void writeItems(Alike const& findings, Text const& text) const {
        std::size_t const shown = all || findings.size() <= kFew ? findings.size() : kExamples;
        for (std::size_t i = 0; i < shown; ++i) os << kMargin << "- " << text(*findings[i]) << '\n';
        if (shown < findings.size())
            os << kMargin << "- and " << findings.size() - shown << " more, which --all shows\n";
    }

    void writeAlike(Alike const& findings) const {
        RuleFinding const& first = *findings.front();
        if (findings.size() == 1) return writeHead(first, findingText(first));
        writeHead(first, std::to_string(findings.size()) + " findings: " + printable(first.common()));
        writeItems(findings, portsText);
    }

    /// So many different ones that the first have to do.
    void writeMany(Alike const& findings) const {
        RuleFinding const& first = *findings.front();
        writeHead(first, std::to_string(findings.size()) + " findings");
        writeItems(findings, findingText);
        bool const same = std::all_of(findings.begin(), findings.end(),
                                      [&](RuleFinding const* finding) { return finding->hint == first.hint; });
        writeHint(same ? first.hint : std::string("'vrl explain ") + first.rule->id + "' shows what to do");
    }

    std::ostream& os;
    bool all;
};

void writeFindings(std::ostream& os, std::vector<RuleFinding> const& findings, bool all) {
    FindingWriter const writer(os, all);
    for (auto first = findings.begin(); first != findings.end();) {
        auto const isOther = [&](RuleFinding const& finding) { return finding.rule != first->rule; };
        auto const last = std::find_if(first, findings.end(), isOther);
        Alike ofRule;
        for (; first != last; ++first) ofRule.push_back(&*first);
        writer.writeRule(ofRule);
    }
}

void writeExceptions(std::ostream& os, FileReport const& file, bool all) {
    for (Excepted const& excepted : file.excepted)
        if (all)
            os << "  excepted " << findingText(excepted.finding) << " [" << excepted.finding.rule->id << "]\n"
               << kMargin << "reason: " << printable(excepted.reason) << " (" << printable(excepted.place) << ")\n";
    if (!file.noExceptions.empty()) os << "  " << printable(file.noExceptions) << ": holds no exceptions\n";
    for (Exception const& exception : file.idle)
        os << "  " << printable(exception.place) << ": " << printable(exception.idleText()) << '\n';
}

/// The rules that could not look at something, those together that have one reason.
void writeLeftOut(std::ostream& os, std::vector<LeftOut> const& list) {
    std::map<std::string, std::vector<std::string>> rulesOf;
    for (LeftOut const& leftOut : list) {
        std::string const where =
            leftOut.elements == 0 ? "did not run, since" : "did not look at " + counted(leftOut.elements, "element");
        rulesOf[where + " " + leftOut.reason->text].emplace_back(leftOut.rule->id);
    }
    for (auto const& entry : rulesOf) {
        os << "  " << counted(entry.second.size(), "rule") << ' ' << entry.first << ":\n";
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

void addValue(Json& json, Parameter const& parameter) {
    json["value"] = valueJson(parameter.value);
    if (parameter.hasRange) {
        json["min"] = valueJson(parameter.min);
        json["max"] = valueJson(parameter.max);
    }
    if (!parameter.unit.empty()) json["unit"] = parameter.unit;
}

Json findingJson(RuleFinding const& finding) {
    Json json{{"rule", finding.rule->id}, {"severity", severityWord(finding.severity)}};
    json.update(placeJson(finding.place));
    if (finding.facts.parameter) addValue(json, *finding.facts.parameter);
    for (Place const& other : finding.facts.others)
        json["others"].push_back(Json{{"element", other.element}, {"port", other.port}});
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
        json["excepted"].back()["exception"] = excepted.place;
    }
    json["idleExceptions"] = Json::array();
    for (Exception const& exception : file.idle)
        json["idleExceptions"].push_back(Json{{"place", exception.place},
                                              {"rule", exception.rule->id},
                                              {"reason", exception.reason},
                                              {"why", exception.idleText()}});
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
