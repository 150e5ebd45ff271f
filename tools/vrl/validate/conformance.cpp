#include "validate/conformance.h"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <map>
#include <nlohmann/json.hpp>
#include <sstream>

#include "system/process.h"
#include "text/json.h"
#include "text/progress.h"
#include "validate/child.h"

namespace vrltool::validate {

namespace {

namespace fs = std::filesystem;

char const* const kMoreTime = "; --seconds N gives it more time";

/// What a child reported before it ended.
struct ChildReport {
    CheckResult result;
    std::string step, thing, stepHint;  ///< of the last step
    bool done = false;
};

void take(ChildReport& child, std::string const& what, std::vector<std::string> const& texts) {
    if (what == "done") child.done = true;
    if (what == "find" && texts.size() == 3)
        child.result.findings.push_back({{Severity::kError, texts[1], texts[2]}, texts[0]});
    if (what == "step" && texts.size() == 3) {
        child.step = texts[0];
        child.thing = texts[1];
        child.stepHint = texts[2];
    }
    if (texts.size() != 1) return;
    if (what == "note") child.result.note = texts[0];
    if (what != "notRun") return;
    child.result.verdict = Verdict::kNotRun;
    child.result.note = texts[0];
}

/// Lines that are none of a report come from a plug-in that writes where it must not; they count for nothing.
ChildReport readReport(std::string const& output) {
    ChildReport child;
    std::istringstream lines(output);
    for (std::string line; std::getline(lines, line);) {
        Json const parsed = Json::parse(line, nullptr, false);
        if (!parsed.is_object()) continue;
        for (auto const& [what, texts] : parsed.items()) {
            std::vector<std::string> words;
            for (Json const& text : texts)
                if (text.is_string()) words.push_back(text);
            take(child, what, words);
        }
    }
    return child;
}

std::string howItEnded(ProcessResult const& ended, ChildReport const& child, unsigned seconds) {
    std::string how = ended.timedOut ? "did not end within " + std::to_string(seconds) + " s" : ended.how();
    if (ended.fine()) how = "ended the program";
    return how + (child.step.empty() ? "" : ": " + child.step);
}

CheckResult runCheck(Check const& check, Job const& job, unsigned seconds, std::function<void()> const& waiting) {
    Program program;
    program.words = {ownProgram(), "validate-check"};
    program.input = jobBytes(job);
    program.seconds = seconds;
    program.waiting = [&](std::size_t) { waiting(); };
    ProcessResult const ended = runProgram(program);
    ChildReport child = readReport(ended.out);
    CheckResult& result = child.result;
    if (!ended.fine() || !child.done) {
        result.findings.push_back({{Severity::kError, howItEnded(ended, child, seconds), child.stepHint}, ""});
        if (ended.timedOut && !child.stepHint.empty()) result.findings.back().hint += kMoreTime;
        result.endedAt = child.thing;
    }
    result.check = &check;
    result.severity = result.endedAt.empty() ? check.severity : Severity::kError;
    if (!result.findings.empty()) {
        result.verdict = Verdict::kFail;
        result.note.clear();
    }
    for (PluginFinding& finding : result.findings) {
        finding.severity = result.severity;
        if (finding.hint.empty()) finding.hint = check.hint + std::string(ended.timedOut ? kMoreTime : "");
    }
    return result;
}

/// Takes the early end at a thing out of a result if one before it ended there: they have one cause.
void dropRepeatedEnd(CheckResult& result, std::map<std::string, CheckResult> const& before) {
    auto const same = [&](auto const& entry) { return entry.second.endedAt == result.endedAt; };
    auto const first = std::find_if(before.begin(), before.end(), same);
    if (result.endedAt.empty() || first == before.end()) return;
    result.endedAt.clear();
    result.findings.pop_back();
    if (!result.findings.empty()) return;
    result.verdict = Verdict::kNotRun;
    result.note = "'" + first->first + "' failed";
    result.hindered = true;
}

/// Of those that a check needs, why it cannot run; empty if it can. A check that was skipped is no hindrance.
std::string hindrance(Check const& check, std::map<std::string, CheckResult> const& before) {
    for (std::string const& id : check.needs) {
        auto const needed = before.find(id);
        if (needed == before.end()) continue;
        if (needed->second.verdict == Verdict::kFail) return "'" + id + "' failed";
        if (needed->second.hindered) return needed->second.note;
    }
    return {};
}

std::string absolutePath(std::string const& path) {
    std::error_code ignored;
    return fs::absolute(path, ignored).string();
}

std::string realPath(std::string const& path) {
    std::error_code ignored;
    return fs::weakly_canonical(path, ignored).string();
}

Job jobFor(std::string const& plugin, Plan const& plan) {
    std::error_code ignored;
    Job job;
    job.plugin = absolutePath(plugin);
    job.seconds = plan.seconds;
    if (!plan.config.empty()) job.config = absolutePath(plan.config);
    for (std::string const& other : plan.plugins)
        if (realPath(other) != realPath(plugin) && fs::is_regular_file(other, ignored))
            job.others.push_back(absolutePath(other));
    return job;
}

/// `done`: the checks of the plug-ins before it.
Conformance checkPlugin(std::string const& plugin, Plan const& plan, Progress& progress, std::size_t done) {
    Conformance conformance{plugin, {}};
    Job job = jobFor(plugin, plan);
    auto const show = [&] { progress.at(done + conformance.results.size()); };
    std::map<std::string, CheckResult> before;
    for (Check const& check : allChecks()) {
        bool const shown = contains(plan.checks, check);
        if (!shown && !contains(plan.needed, check)) continue;
        show();
        job.check = check.id;
        std::string const why = hindrance(check, before);
        CheckResult result = why.empty() ? runCheck(check, job, plan.seconds, show)
                                         : CheckResult{&check, Verdict::kNotRun, check.severity, why, {}, true};
        dropRepeatedEnd(result, before);
        before.emplace(check.id, result);
        if (shown) conformance.results.push_back(result);
    }
    return conformance;
}

}  // namespace

std::size_t Conformance::count(Verdict verdict) const {
    return static_cast<std::size_t>(std::count_if(
        results.begin(), results.end(), [&](CheckResult const& result) { return result.verdict == verdict; }));
}

std::size_t Conformance::failures(Severity severity) const {
    return static_cast<std::size_t>(std::count_if(results.begin(), results.end(), [&](CheckResult const& result) {
        return result.verdict == Verdict::kFail && result.severity == severity;
    }));
}

bool Conformance::failed() const {
    bool const hindered =
        std::any_of(results.begin(), results.end(), [](CheckResult const& result) { return result.hindered; });
    return hindered || failures(Severity::kError) > 0;
}

std::vector<Conformance> checkPlugins(Plan const& plan) {
    Progress progress("checking", "checks", plan.plugins.size() * plan.checks.size());
    std::vector<Conformance> all;
    for (std::string const& plugin : plan.plugins)
        all.push_back(checkPlugin(plugin, plan, progress, all.size() * plan.checks.size()));
    return all;
}

}  // namespace vrltool::validate
