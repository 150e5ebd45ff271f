#include <CLI/CLI.hpp>
#include <cmath>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

#include "cli/grammar.h"
#include "commands/commands.h"
#include "design/missing_text.h"
#include "diff/compare.h"
#include "diff/report_json.h"
#include "diff/report_text.h"
#include "host/start.h"
#include "text/near_names.h"

namespace vrltool {

using namespace diff;

namespace {

struct Options {
    std::string a, b;
    DiffSettings settings;
    bool noNotes = false;
    bool noRenames = false;
};

/// A word that ignores nothing is most likely a slip.
void warnOfIdle(DiffSettings const& settings, std::set<std::string> const& parameters) {
    for (std::string const& ignored : settings.ignored) {
        if (parameters.count(ignored)) continue;
        std::cerr << "vrl: --ignore " << ignored << ": no such parameter was compared\n";
        std::string const hint = didYouMean(ignored, {parameters.begin(), parameters.end()});
        if (!hint.empty()) std::cerr << "  " << hint << '\n';
    }
}

Outcome work(Options const& options, Common const& common) {
    DiffSettings settings = options.settings;
    settings.notes = !options.noNotes;
    settings.renames = !options.noRenames;
    startLibrary(common);
    Design const a = readDesign(options.a);
    Design const b = readDesign(options.b);
    leaveToTheEnd(a.object);
    leaveToTheEnd(b.object);
    std::cerr << missingText(a, b);
    Comparison const comparison = compareDesigns(a, b, settings);
    warnOfIdle(settings, comparison.parameters);
    if (common.json)
        writeJson(std::cout, differencesJson(comparison.differences, a, b, settings));
    else
        writeDifferences(std::cout, comparison.differences);
    return comparison.differences.changes.empty() ? Outcome::kFine : Outcome::kFindings;
}

std::string checkTolerance(std::string const& text) {
    double value = 0;
    bool const fine = CLI::detail::lexical_cast(text, value) && std::isfinite(value) && value >= 0;
    return fine ? "" : "'" + text + "' is no tolerance: give a number from 0, such as 1e-6";
}

}  // namespace

void addDiff(Grammar& grammar) {
    auto const options = std::make_shared<Options>();
    CLI::App& command =
        grammar.add("diff", "compares two saved designs",
                    "  vrl diff old.vrl new.vrl                            # what is new, gone or changed in new.vrl\n"
                    "  vrl diff --tolerance 1e-9 old.vrl new.vrl           # without what rounding changed\n"
                    "  vrl diff --ignore bend.radius old.vrl new.vrl       # without one parameter of one element\n"
                    "  vrl diff --json old.vrl new.vrl                     # everything, for programs",
                    [options](Common const& common) { return work(*options, common); });
    command.add_option("old", options->a, "the saved design to begin with")->required()->type_name("FILE");
    command.add_option("new", options->b, "the saved design that is compared with it")->required()->type_name("FILE");
    command
        .add_option("--tolerance", options->settings.relative,
                    "numbers are the same if they differ by no more than this share of the greater one")
        ->check(checkTolerance)
        ->type_name("N");
    command
        .add_option("--absolute", options->settings.absolute,
                    "numbers are the same if they differ by no more than this, in the unit of each")
        ->check(checkTolerance)
        ->type_name("N");
    command
        .add_option("--ignore", options->settings.ignored,
                    "a parameter that is not compared: NAME, or ELEMENT.NAME of one element; may be given again")
        ->allow_extra_args(false)
        ->type_name("PARAMETER");
    command.add_flag("--no-notes", options->noNotes, "notes are not compared");
    command.add_flag("--no-renames", options->noRenames,
                     "elements are the same by name only: a renamed one counts as removed and added");
}

}  // namespace vrltool
