#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "catalogue/describe.h"
#include "cli/grammar.h"
#include "commands/commands.h"
#include "host/start.h"
#include "starter/block_table.h"
#include "text/table.h"

namespace vrltool {

using namespace catalogue;

namespace {

struct Options {
    std::string key;
    std::vector<std::string> parameters;
    bool table = false;
};

/// Writes the table of a foundry, and names what it leaves out.
Outcome describeTable(Options const& options, Common const& common) {
    if (!options.parameters.empty()) throw Failure("--table", "is for a whole foundry", "name no parameters");
    std::vector<std::string> leftOut;
    std::string const table = starter::writtenTable(starter::tableOf(options.key, leftOut), common.json);
    for (std::string const& thing : leftOut)
        std::cerr << printable(options.key) << ": note: the table cannot hold " << printable(thing) << '\n';
    std::cout << table;
    return Outcome::kFine;
}

Outcome describe(Options const& options, Common const& common) {
    startLibrary({common.config, common.loadSeconds});
    if (options.table) return describeTable(options, common);
    return describeKey(options.key, options.parameters, common.json);
}

}  // namespace

void addDescribe(Grammar& grammar) {
    auto const options = std::make_shared<Options>();
    CLI::App& command = grammar.add("describe", "describes a block, a foundry or another kind",
                                    "  vrl describe sfBend             # ports and parameters of a block\n"
                                    "  vrl describe SampleFab@sfBend   # the same, made for a foundry\n"
                                    "  vrl describe SampleFab          # flows, cross sections, blocks\n"
                                    "  vrl describe sfBend radius      # of its parameters this one\n"
                                    "  vrl describe SampleFab --table  # a table for 'vrl new-plugin --from'",
                                    [options](Common const& common) { return describe(*options, common); });
    command.add_option("key", options->key, "a kind, or a block made for a foundry: FOUNDRY@BLOCK")
        ->required()
        ->type_name("KEY");
    command.add_option("parameters", options->parameters, "the parameters to show; all if none is named")
        ->type_name("PARAMETER");
    command.add_flag("--table", options->table,
                     "write what a foundry declares as a table, in YAML or with --json in JSON");
}

}  // namespace vrltool
