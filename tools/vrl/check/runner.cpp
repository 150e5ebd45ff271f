#include "check/runner.h"

#include <algorithm>
#include <map>
#include <utility>

#include "design/foundries.h"
#include "design/missing_text.h"
#include "guard/quiet_output.h"
#include "guard/thrown.h"
#include "text/failure.h"
#include "text/phrases.h"

namespace vrltool::check {

namespace {

bool names(std::vector<std::string> const& ids, Rule const& rule) {
    return std::find(ids.begin(), ids.end(), rule.id) != ids.end();
}

void setSeverity(std::vector<ChosenRule>& rules, std::string const& setting) {
    auto const equals = setting.find('=');
    std::string const level = equals == std::string::npos ? "" : setting.substr(equals + 1);
    Rule const& wanted = ruleOf(setting.substr(0, equals));
    Severity severity{};
    if (!severityOf(level, severity))
        throw Failure("--severity " + setting, level.empty() ? "has no level" : "there is no level '" + level + "'",
                      namesHint(level, severityWords(), "write RULE=LEVEL; the levels"));
    for (ChosenRule& chosen : rules)
        if (chosen.rule == &wanted) chosen.severity = severity;
}

void prepareFoundries(Design const& design) {
    std::string const thrown = quietlyThrownBy([&] {
        if (design.object.netlist()) attachFoundries(*design.object.netlist());
        if (design.object.block()) attachFoundry(*design.object.block());
    });
    if (!thrown.empty())
        throw Failure(design.path, "a foundry of this design cannot be made: " + thrown,
                      "'vrl validate' checks the plug-in that brings it");
}

LeaveReason const kAlone{"no circuit", "the file holds a single block and no circuit"};
LeaveReason const kNoKind{"unknown kind", "whose kind no loaded plug-in has"};
LeaveReason const kNoFoundry{"unknown foundry", "whose foundry no loaded plug-in has"};

/// Why a rule leaves an element out, or null.
LeaveReason const* reasonToLeaveOut(Rule const& rule, CheckedElement const& checked) {
    if (!Findings::isLeftOut(rule, checked)) return nullptr;
    return (rule.needs & kKind) && checked.standIn ? &kNoKind : &kNoFoundry;
}

/// The elements, equal ones for reasonToLeaveOut together: one of each sort, and how many.
std::vector<std::pair<CheckedElement const*, std::size_t>> sortsOf(Scopes const& scopes) {
    std::map<std::pair<bool, bool>, std::pair<CheckedElement const*, std::size_t>> sorts;
    for (Scope const& scope : scopes.all()) {
        for (CheckedElement const& checked : scope.checkedElements) {
            auto& sort = sorts[{checked.standIn, checked.foundryUnknown}];
            sort = {&checked, sort.second + 1};
        }
    }
    std::vector<std::pair<CheckedElement const*, std::size_t>> list;
    for (auto const& entry : sorts) list.push_back(entry.second);
    return list;
}

std::vector<LeftOut> leftOutOf(Scopes const& scopes, std::vector<ChosenRule> const& rules) {
    bool const alone = scopes.all().size() == 1 && scopes.all().front().singleBlock;
    auto const sorts = sortsOf(scopes);
    std::vector<LeftOut> list;
    for (ChosenRule const& chosen : rules) {
        if (!chosen.runs()) continue;
        Rule const& rule = *chosen.rule;
        if (alone && (rule.needs & kCircuit)) {
            list.push_back({&rule, 0, &kAlone});
            continue;
        }
        for (LeaveReason const* const reason : {&kNoKind, &kNoFoundry}) {
            std::size_t count = 0;
            for (auto const& [checked, howMany] : sorts)
                if (reasonToLeaveOut(rule, *checked) == reason) count += howMany;
            if (count > 0) list.push_back({&rule, count, reason});
        }
    }
    return list;
}

/// The rules that run on a circuit and look at it in that way, with how they look.
template <class Check>
std::vector<std::pair<ChosenRule const*, Check>> runningOn(Scope const& scope, std::vector<ChosenRule> const& rules) {
    std::vector<std::pair<ChosenRule const*, Check>> running;
    for (ChosenRule const& chosen : rules)
        if (auto const* const check = std::get_if<Check>(&chosen.rule->check))
            if (chosen.runs() && !(scope.singleBlock && (chosen.rule->needs & kCircuit)))
                running.emplace_back(&chosen, *check);
    return running;
}

/// All rules look at one element before they look at the next one: then it is in the processor's cache.
void checkElements(Scope& scope, std::vector<ChosenRule> const& rules, Findings& findings) {
    auto const running = runningOn<ElementCheck>(scope, rules);
    for (CheckedElement& checked : scope.checkedElements) {
        checked.readParameters();
        for (auto const& [chosen, check] : running) {
            findings.begin(*chosen->rule, chosen->severity);
            if (findings.covers(checked)) check(checked, findings);
        }
    }
}

void checkCircuit(Scope const& scope, std::vector<ChosenRule> const& rules, Findings& findings) {
    for (auto const& [chosen, check] : runningOn<CircuitCheck>(scope, rules)) {
        findings.begin(*chosen->rule, chosen->severity);
        check(scope, findings);
    }
}

/// The rules of elements come first, since they read the parameters, which the rules of circuits look at, too.
std::vector<RuleFinding> findingsOf(Scopes& scopes, std::vector<ChosenRule> const& rules) {
    Findings findings;
    for (Scope& scope : scopes.all()) {
        checkElements(scope, rules, findings);
        checkCircuit(scope, rules, findings);
    }
    return findings.take();
}

/// Moves the findings that exceptions cover; the first that fits counts.
void except(FileReport& report, std::vector<Exception> exceptions, std::vector<ChosenRule> const& rules) {
    std::vector<RuleFinding> left;
    for (RuleFinding& finding : report.findings) {
        Exception const* taker = nullptr;
        for (Exception& each : exceptions) each.offer(finding, taker);
        if (taker)
            report.excepted.push_back({std::move(finding), taker->reason, taker->place});
        else
            left.push_back(std::move(finding));
    }
    report.findings = std::move(left);
    for (Exception& exception : exceptions) {
        bool const ran = std::any_of(rules.begin(), rules.end(), [&](ChosenRule const& chosen) {
            return chosen.rule == exception.rule && chosen.runs();
        });
        if (ran && exception.uses == 0) report.idle.push_back(std::move(exception));
    }
}

/// The shared ones, or those of the file beside the design, if there is one.
std::vector<Exception> exceptionsFor(FileReport& report, bool beside, std::vector<Exception> const* shared) {
    if (shared) return *shared;
    std::string const path = exceptionsPath(report.path);
    if (!beside || !hasExceptions(path)) return {};
    auto exceptions = readExceptions(path);
    if (exceptions.empty()) report.noExceptions = path;
    return exceptions;
}

void readAndCheck(FileReport& report, std::vector<ChosenRule> const& rules, std::vector<Exception> exceptions,
                  bool isLast) {
    Design const design = readDesign(report.path);
    if (isLast) leaveToTheEnd(design.object);
    report.type = design.type;
    report.missing = missingKindsLine(design);
    if (!design.object.block()) circuitOf(design);
    prepareFoundries(design);
    Scopes scopes(design);
    report.elements = scopes.elementCount();
    report.findings = findingsOf(scopes, rules);
    if (!exceptions.empty()) except(report, std::move(exceptions), rules);
    report.leftOut = leftOutOf(scopes, rules);
}

/// Whether a rule could look at nothing in a file, and why.
bool leftOutWholly(FileReport const& file, Rule const& rule, LeaveReason const*& reason) {
    std::size_t elements = 0;
    bool wholly = false;
    for (LeftOut const& leftOut : file.leftOut) {
        if (leftOut.rule != &rule) continue;
        reason = leftOut.reason;
        elements += leftOut.elements;
        wholly = wholly || leftOut.elements == 0;
    }
    return wholly || (elements > 0 && elements == file.elements);
}

}  // namespace

std::vector<ChosenRule> chooseRules(RuleOptions const& options) {
    for (auto const* const ids : {&options.only, &options.skip})
        for (std::string const& id : *ids) ruleOf(id);
    std::vector<ChosenRule> rules;
    for (Rule const& rule : allRules()) rules.push_back({&rule, rule.severity, ""});
    for (std::string const& setting : options.severities) setSeverity(rules, setting);
    for (ChosenRule& chosen : rules) {
        if (names(options.skip, *chosen.rule))
            chosen.reason = "skipped";
        else if (!options.only.empty() && !names(options.only, *chosen.rule))
            chosen.reason = "not among --only";
        else if (chosen.severity == Severity::kOff)
            chosen.reason = "off";
    }
    return rules;
}

std::size_t FileReport::count(Severity severity) const {
    return static_cast<std::size_t>(std::count_if(
        findings.begin(), findings.end(), [&](RuleFinding const& finding) { return finding.severity == severity; }));
}

std::vector<ChosenRule> asTheyRan(std::vector<ChosenRule> rules, std::vector<FileReport> const& files) {
    for (ChosenRule& chosen : rules) {
        if (!chosen.runs()) continue;
        LeaveReason const* reason = nullptr;
        bool const looked = std::any_of(files.begin(), files.end(), [&](FileReport const& file) {
            return file.failure.empty() && !leftOutWholly(file, *chosen.rule, reason);
        });
        if (!looked && reason) chosen.reason = reason->word;
    }
    return rules;
}

FileReport checkFile(std::string const& path, std::vector<ChosenRule> const& rules, bool withExceptions, bool isLast,
                     std::vector<Exception> const* shared) {
    FileReport report;
    report.path = path;
    try {
        QuietOutput const quiet;
        readAndCheck(report, rules, exceptionsFor(report, withExceptions, shared), isLast);
    } catch (Failure const& failure) {
        report.failure = failure.what();
        report.hint = failure.hint();
    } catch (...) {  // of a plug-in: the other files are checked
        report.failure = path + ": cannot be checked: a plug-in threw " + thrownText();
        report.hint = "'vrl validate' checks the plug-ins";
    }
    return report;
}

void keepIdleInAll(std::vector<FileReport>& files) {
    struct Idle {
        std::size_t files = 0;
        std::string since;
    };
    std::map<std::string, Idle> idle;  // by place
    std::size_t checked = 0;
    FileReport* last = nullptr;
    for (FileReport& file : files) {
        if (!file.failure.empty()) continue;
        ++checked;
        last = &file;
        for (Exception const& exception : file.idle) {
            Idle& each = idle[exception.place];
            ++each.files;
            if (each.since.empty()) each.since = exception.idleSince;
        }
    }
    for (FileReport& file : files) {
        auto const isUsed = [&](Exception const& exception) {
            return &file != last || idle[exception.place].files < checked;
        };
        file.idle.erase(std::remove_if(file.idle.begin(), file.idle.end(), isUsed), file.idle.end());
        for (Exception& exception : file.idle) exception.idleSince = idle[exception.place].since;
    }
}

}  // namespace vrltool::check
