#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>

#include "catalogue/plugins_report.h"
#include "cli/grammar.h"
#include "commands/commands.h"
#include "host/start.h"

namespace vrltool {

using namespace catalogue;

void addPlugins(Grammar& grammar) {
    auto const options = std::make_shared<PluginsOptions>();
    auto const run = [options](Common const& common) {
        StartOptions start(common);
        start.reportsSkipped = false;
        start.statusOfBadEnd = static_cast<int>(Outcome::kFindings);
        startLibrary(start);
        return writePluginsReport(std::cout, *options, common);
    };
    CLI::App& command = grammar.add("plugins", "reports the configured libraries and what became of each",
                                    "  vrl plugins                      # why is my plug-in missing?\n"
                                    "  vrl plugins --config my.ini      # with another configuration\n"
                                    "  vrl plugins --all --times        # also what no line names, with milliseconds",
                                    run);
    command.add_flag("--times", options->times, "show the milliseconds that each library took");
    command.add_flag("--all", options->all, "also report libraries that the configuration does not name");
}

}  // namespace vrltool
