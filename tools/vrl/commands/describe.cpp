#include <CLI/CLI.hpp>
#include <memory>
#include <string>
#include <vector>

#include "catalogue/describe.h"
#include "cli/grammar.h"
#include "commands/commands.h"
#include "host/start.h"

namespace vrltool {

using namespace catalogue;

namespace {

struct Options {
    std::string key;
    std::vector<std::string> parameters;
};

Outcome describe(Options const& options, Common const& common) {
    startLibrary(common);
    return describeKey(options.key, options.parameters, common.json);
}

}  // namespace

void addDescribe(Grammar& grammar) {
    auto const options = std::make_shared<Options>();
    CLI::App& command = grammar.add("describe", "describes a block, a foundry or another kind",
                                    "  vrl describe sfBend             # ports and parameters of a block\n"
                                    "  vrl describe SampleFab@sfBend   # the same, made for a foundry\n"
                                    "  vrl describe SampleFab          # flows, cross sections, blocks\n"
                                    "  vrl describe sfBend radius      # of its parameters this one",
                                    [options](Common const& common) { return describe(*options, common); });
    command.add_option("key", options->key, "a kind, or a block made for a foundry: FOUNDRY@BLOCK")
        ->required()
        ->type_name("KEY");
    command.add_option("parameters", options->parameters, "the parameters to show; all if none is named")
        ->type_name("PARAMETER");
}

}  // namespace vrltool
