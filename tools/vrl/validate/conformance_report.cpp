#include "validate/conformance_report.h"

#include <filesystem>
#include <map>
#include <nlohmann/json.hpp>
#include <ostream>

#include "text/table.h"

namespace vrltool::validate {

namespace {

char const* word(CheckResult const& result) {
    switch (result.verdict) {
    case Verdict::kPass:
        return "pass";
    case Verdict::kNotRun:
        return "not run";
    case Verdict::kFail:
        break;
    }
    return result.severity == Severity::kError ? "FAIL" : "warning";
}

/// How many checks were not run for each reason that is the failure of another one.
std::map<std::string, std::size_t> hindrances(Conformance const& conformance) {
    std::map<std::string, std::size_t> counts;
    for (CheckResult const& result : conformance.results)
        if (result.hindered) ++counts[result.note];
    return counts;
}

/// Many checks that were not run for one reason are one line.
void writeTable(std::ostream& os, Conformance const& conformance) {
    constexpr std::size_t kFew = 3;
    os << printable(conformance.path) << '\n';
    Table table;
    auto counts = hindrances(conformance);
    for (CheckResult const& result : conformance.results) {
        bool const failed = result.verdict == Verdict::kFail;
        std::size_t& count = counts[result.note];
        if (result.hindered && count > kFew) table.add({std::to_string(count) + " checks", word(result), result.note});
        if (result.hindered && (count > kFew || count == 0))
            count = 0;  // its line is there
        else
            table.add(
                {result.check->id, word(result), failed ? counted(result.findings.size(), "finding") : result.note});
    }
    table.write(os, 2);
}

/// The findings of one check, each hint once after those that share it. What has no name of its own is the plug-in.
void writeFindings(std::ostream& os, std::string const& plugin, CheckResult const& result) {
    if (result.findings.empty()) return;
    os << '\n' << result.check->id << ": " << word(result) << "\n  expected: " << result.check->title << '\n';
    for (std::size_t i = 0; i < result.findings.size(); ++i) {
        PluginFinding const& finding = result.findings[i];
        os << "  " << printable(finding.thing.empty() ? plugin : finding.thing) << ": " << printable(finding.what)
           << '\n';
        bool const last = i + 1 == result.findings.size() || result.findings[i + 1].hint != finding.hint;
        if (last) os << "    hint: " << printable(finding.hint) << '\n';
    }
}

void writeSummary(std::ostream& os, Conformance const& conformance) {
    os << '\n'
       << counted(conformance.results.size(), "check") << ": " << conformance.count(Verdict::kPass) << " passed, "
       << conformance.failures(Severity::kError) << " failed, "
       << counted(conformance.failures(Severity::kWarning), "warning") << ", " << conformance.count(Verdict::kNotRun)
       << " not run\n";
}

Json findingJson(PluginFinding const& finding) {
    Json json;
    if (!finding.thing.empty()) json["thing"] = finding.thing;
    json["what"] = finding.what;
    json["hint"] = finding.hint;
    return json;
}

Json resultJson(CheckResult const& result) {
    static char const* const words[] = {"pass", "fail", "not run"};
    Json json{{"id", result.check->id},
              {"severity", severityWord(result.severity)},
              {"result", words[static_cast<int>(result.verdict)]}};
    if (!result.note.empty()) json["note"] = result.note;
    json["findings"] = Json::array();
    for (PluginFinding const& finding : result.findings) json["findings"].push_back(findingJson(finding));
    return json;
}

}  // namespace

void writeConformance(std::ostream& os, std::vector<Conformance> const& all) {
    bool first = true;
    for (Conformance const& conformance : all) {
        if (!first) os << '\n';
        first = false;
        writeTable(os, conformance);
        for (CheckResult const& result : conformance.results)
            writeFindings(os, std::filesystem::path(conformance.path).filename().string(), result);
        writeSummary(os, conformance);
    }
}

Json conformanceJson(std::vector<Conformance> const& all) {
    Json json = jsonHead("validate", 1);
    json["plugins"] = Json::array();
    for (Conformance const& conformance : all) {
        Json plugin{{"path", conformance.path},
                    {"conforms", !conformance.failed()},
                    {"passed", conformance.count(Verdict::kPass)},
                    {"failed", conformance.failures(Severity::kError)},
                    {"warnings", conformance.failures(Severity::kWarning)},
                    {"notRun", conformance.count(Verdict::kNotRun)},
                    {"checks", Json::array()}};
        for (CheckResult const& result : conformance.results) plugin["checks"].push_back(resultJson(result));
        json["plugins"].push_back(plugin);
    }
    return json;
}

void writeChecks(std::ostream& os) {
    Table table({"CHECK", "SEVERITY", "WHAT IS SO IF IT PASSES"});
    for (Check const& check : allChecks()) table.add({check.id, severityWord(check.severity), check.title});
    table.write(os);
}

Json checksJson() {
    Json json = jsonHead("validate", 1);
    json["checks"] = Json::array();
    for (Check const& check : allChecks())
        json["checks"].push_back({{"id", check.id},
                                  {"severity", severityWord(check.severity)},
                                  {"title", check.title},
                                  {"hint", check.hint},
                                  {"needs", check.needs}});
    return json;
}

}  // namespace vrltool::validate
