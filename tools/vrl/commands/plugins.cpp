#include <CLI/CLI.hpp>
#include <memory>

#include "catalogue/plugins_run.h"
#include "cli/grammar.h"
#include "commands/commands.h"

namespace vrltool {

using namespace catalogue;

namespace {

struct Options {
    PluginsOptions report;
    unsigned seconds = 60;
    bool inProcess = false;
};

Outcome plugins(Options const& options, Common const& common) {
    return options.inProcess ? reportPluginsInProcess(options.report, common)
                             : reportPlugins(options.report, common, options.seconds);
}

}  // namespace

void addPlugins(Grammar& grammar) {
    auto const options = std::make_shared<Options>();
    CLI::App& command = grammar.add("plugins", "reports the configured libraries and what became of each",
                                    "  vrl plugins                      # why is my plug-in not there?\n"
                                    "  vrl plugins --config my.ini      # with another configuration\n"
                                    "  vrl plugins --all --times        # also what no line names, with milliseconds",
                                    [options](Common const& common) { return plugins(*options, common); });
    command.add_flag("--times", options->report.times, "show the milliseconds that each library took");
    command.add_flag("--all", options->report.all, "also report libraries that the configuration does not name");
    command.add_option("--seconds", options->seconds, "how long the loading may take; 60 if not given")
        ->type_name("N")
        ->check(CLI::Range(1, 86400));
    command.add_flag("--in-process", options->inProcess, "load into this very process")->group("");
}

}  // namespace vrltool
