#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <functional>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

#include "cli/grammar.h"
#include "commands/candidates.h"
#include "commands/commands.h"
#include "host/start.h"
#include "validate/child.h"
#include "validate/conformance.h"
#include "validate/conformance_report.h"

namespace vrltool {

using namespace validate;

namespace {

struct Options {
    Plan plan;
    std::vector<std::string> only;
    std::vector<std::string> skip;
    bool list = false;
};

Outcome listChecks(Common const& common) {
    if (common.json)
        writeJson(std::cout, checksJson());
    else
        writeChecks(std::cout);
    return Outcome::kFine;
}

std::vector<std::string> checkIds() {
    std::vector<std::string> ids;
    for (Check const& check : allChecks()) ids.emplace_back(check.id);
    return ids;
}

std::vector<Check const*> checksOf(std::vector<std::string> const& ids) {
    std::vector<Check const*> checks;
    for (std::string const& id : ids) checks.push_back(&findCheck(id));
    return checks;
}

std::vector<Check const*> chosenChecks(Options const& options) {
    auto const only = checksOf(options.only);
    auto const skip = checksOf(options.skip);
    std::vector<Check const*> chosen;
    for (Check const& check : allChecks())
        if ((only.empty() || contains(only, check)) && !contains(skip, check)) chosen.push_back(&check);
    if (chosen.empty()) throw Failure("--only and --skip", "leave no check to run");
    return chosen;
}

/// Of the checks that are not reported, those that the others need. What is skipped stays out.
std::vector<Check const*> neededChecks(std::vector<Check const*> const& chosen, Options const& options) {
    auto const skip = checksOf(options.skip);
    std::vector<Check const*> needed;
    std::function<void(Check const&)> const need = [&](Check const& check) {
        for (Check const* const other : checksOf(check.needs)) {
            if (!contains(chosen, *other) && !contains(needed, *other) && !contains(skip, *other))
                needed.push_back(other);
            need(*other);
        }
    };
    for (Check const* const check : chosen) need(*check);
    return needed;
}

/// An option that takes one word or a list each time, and may come several times.
void addRepeated(CLI::App& command, std::string const& name, std::vector<std::string>& words, std::string const& text) {
    command.add_option(name, words, text + "; repeatable, or a list with commas")
        ->type_name("CHECK")
        ->allow_extra_args(false)
        ->delimiter(',');
}

/// A path of nothing is a slip, about which no check has anything to say.
void checkPaths(std::vector<std::string> const& plugins) {
    std::error_code none;
    for (std::string const& path : plugins)
        if (std::filesystem::symlink_status(path, none).type() == std::filesystem::file_type::not_found)
            throw Failure(path, "there is no such file", "give the path of the plug-in");
}

Outcome work(Options const& options, Common const& common) {
    if (options.list) return listChecks(common);
    if (options.plan.plugins.empty())
        throw Failure("no plug-in given", "there is nothing to check", "vrl validate PLUGIN..., or --list");
    if (!common.config.empty()) checkConfig(common.config);
    Plan plan = options.plan;
    plan.config = common.config;
    plan.checks = chosenChecks(options);
    plan.needed = neededChecks(plan.checks, options);
    checkPaths(plan.plugins);
    auto const all = checkPlugins(plan);
    if (common.json)
        writeJson(std::cout, conformanceJson(all));
    else
        writeConformance(std::cout, all);
    bool const failed = std::any_of(all.begin(), all.end(), [](Conformance const& one) { return one.failed(); });
    return failed ? Outcome::kFindings : Outcome::kFine;
}

}  // namespace

void addValidate(Grammar& grammar) {
    auto const options = std::make_shared<Options>();
    CLI::App& command = grammar.add(
        "validate", "checks that plug-ins behave as hosts expect",
        "  vrl validate lib_wn_myFab.so.5.1.3             # every check\n"
        "  vrl validate a.so b.so                         # also whether they work together\n"
        "  vrl validate --only loads --json my.so         # one check, for programs\n"
        "  vrl validate --list                            # all checks\n"
        "Each check runs in a process of its own. The exit status is 1 if a check of severity error fails.\n"
        "With --config, whether a plug-in works together with the libraries of that configuration is checked, too.",
        [options](Common const& common) { return work(*options, common); });
    command.add_option("plugins", options->plan.plugins, "the plug-ins")->type_name("FILE");
    addRepeated(command, "--only", options->only, "run this check and no others");
    addRepeated(command, "--skip", options->skip, "leave this check out");
    command.add_option("--seconds", options->plan.seconds, "the time that each check may take")
        ->type_name("N")
        ->check(CLI::Range(1, 3600))
        ->capture_default_str();
    command.add_flag("--list", options->list, "list all checks with their severity");
    registerCandidates("CHECK", checkIds);
    grammar.addHidden("validate-check", "does one check of one plug-in", [](Common const&) { return runJob(); });
}

}  // namespace vrltool
