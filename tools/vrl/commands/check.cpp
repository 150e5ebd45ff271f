#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>

#include "check/report.h"
#include "cli/grammar.h"
#include "commands/commands.h"
#include "design/missing_text.h"
#include "host/start.h"
#include "text/table.h"

namespace vrltool {

using namespace check;

namespace {

struct Options {
    std::vector<std::string> files;
    RuleOptions rules;
    ReportOptions report;
    std::string exceptions;
    bool noExceptions = false;
};

Outcome outcomeOf(std::vector<FileReport> const& files) {
    Outcome outcome = Outcome::kFine;
    for (FileReport const& file : files) {
        if (!file.failure.empty()) return Outcome::kFailed;
        if (file.count(Severity::kError) + file.count(Severity::kWarning) > 0) outcome = Outcome::kFindings;
    }
    return outcome;
}

void reportFailures(std::vector<FileReport> const& files) {
    for (FileReport const& file : files) {
        if (file.failure.empty()) continue;
        std::cerr << "vrl: " << file.failure << '\n';
        if (!file.hint.empty()) std::cerr << "  " << file.hint << '\n';
    }
}

/// The libraries that failed are reported once.
void reportMissing(std::vector<FileReport> const& files) {
    bool any = false;
    for (FileReport const& file : files) {
        any = any || !file.missing.empty();
        std::cerr << file.missing;
    }
    if (any) std::cerr << failedLibrariesText();
}

/// The exceptions of --exceptions, if it is given.
std::optional<std::vector<Exception>> sharedExceptions(Options const& options) {
    if (options.exceptions.empty()) return {};
    auto exceptions = readExceptions(options.exceptions);
    if (exceptions.empty()) std::cerr << "vrl: note: " << printable(options.exceptions) << ": holds no exceptions\n";
    return exceptions;
}

Outcome work(Options const& options, Common const& common) {
    auto const rules = chooseRules(options.rules);
    auto const shared = sharedExceptions(options);
    startLibrary(common);
    std::vector<FileReport> files;
    for (std::string const& path : options.files)
        files.push_back(
            checkFile(path, rules, !options.noExceptions, &path == &options.files.back(), shared ? &*shared : nullptr));
    if (shared) keepIdleInAll(files);
    reportMissing(files);
    reportFailures(files);
    if (common.json)
        writeJson(std::cout, checkJson(files, asTheyRan(rules, files)));
    else
        writeCheckReport(std::cout, files, asTheyRan(rules, files), options.report);
    return outcomeOf(files);
}

/// An option that takes one word each time, and may come several times.
void addRepeated(CLI::App& command, std::string const& name, std::vector<std::string>& words, std::string const& text,
                 std::string const& type) {
    command.add_option(name, words, text)->type_name(type)->allow_extra_args(false)->delimiter(',');
}

}  // namespace

void addCheck(Grammar& grammar) {
    auto const options = std::make_shared<Options>();
    CLI::App& command = grammar.add(
        "check", "checks saved designs against a table of rules",
        "  vrl check modulator.vrl                             # all rules\n"
        "  vrl check --severity open-port=note *.vrl           # open ports are no fault here\n"
        "  vrl check --only value-out-of-range modulator.vrl   # one rule\n"
        "  vrl explain                                         # what the rules are\n"
        "Findings that are known and accepted are in FILE.exceptions.yml beside the design, each with its reason:\n"
        "  exceptions:\n"
        "    - {rule: open-port, element: 'tap*', port: out0, reason: ends in the substrate}\n"
        "    - {rule: value-out-of-range, parameter: radius, min: 4, reason: measured down to 4 um}\n"
        "Element, port and parameter may be left out, and have * and ? for several. With a 'value', or with 'min' and\n"
        "'max', in the unit of the parameter, an exception holds for these only.\n"
        "Status 0: nothing, or notes only. 1: a finding of severity error or warning.\n"
        "2: a file could not be checked; the others are.",
        [options](Common const& common) { return work(*options, common); });
    command.add_option("files", options->files, "the saved designs")->required()->type_name("FILE");
    addRepeated(command, "--severity", options->rules.severities,
                "sets the severity of a rule: error, warning, note or off; repeatable, or a list with commas",
                "RULE=LEVEL");
    addRepeated(command, "--only", options->rules.only,
                "runs this rule and no others; repeatable, or a list with commas", "RULE");
    addRepeated(command, "--skip", options->rules.skip, "leaves this rule out; repeatable, or a list with commas",
                "RULE");
    command.add_flag("--all", options->report.all,
                     "lists every finding, also of rules with many, and those that are excepted");
    command.add_flag("--rules", options->report.rules, "lists the rules that ran and those that did not");
    auto* const exceptions = command
                                 .add_option("--exceptions", options->exceptions,
                                             "the exceptions of all designs, instead of those in the files beside them")
                                 ->type_name("FILE");
    command.add_flag("--no-exceptions", options->noExceptions, "reads no exceptions")->excludes(exceptions);
    command
        .add_flag("--quiet", options->report.quiet,
                  "prints one line for each file with errors or warnings, and no more")
        ->excludes(command.get_option("--json"))
        ->excludes(command.get_option("--all"))
        ->excludes(command.get_option("--rules"));
}

}  // namespace vrltool
