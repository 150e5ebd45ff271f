#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

#include "cli/grammar.h"
#include "commands/commands.h"
#include "design/design.h"
#include "design/design_json.h"
#include "design/missing_text.h"
#include "host/start.h"

namespace vrltool {

namespace {

struct Options {
    std::string file;
    bool listing = false;
};

Outcome show(Options const& options, Common const& common) {
    startLibrary({common.config, common.loadSeconds});
    Design const design = readDesign(options.file);
    leaveToTheEnd(design.object);
    std::cerr << missingText(design);
    if (common.json) {
        writeJson(std::cout, designJson(design));
    } else if (options.listing) {
        vrl::AsciiStreamSerialiser listing(std::cout);
        if (!design.object.write(listing)) throw Failure(options.file, "cannot be listed");
    } else {
        design.object.print(std::cout);
    }
    return Outcome::kFine;
}

}  // namespace

void addShow(Grammar& grammar) {
    auto const options = std::make_shared<Options>();
    CLI::App& command = grammar.add("show", "prints a saved design of whatever class",
                                    "  vrl show modulator.vrl            # as the library prints it\n"
                                    "  vrl show --listing modulator.vrl  # every saved member, with its comment\n"
                                    "  vrl show --json modulator.vrl     # everything, for programs",
                                    [options](Common const& common) { return show(*options, common); });
    command.add_option("file", options->file, "the saved design")->required()->type_name("FILE");
    command.add_flag("--listing", options->listing, "the text listing of all saved members")
        ->excludes(command.get_option("--json"));
}

}  // namespace vrltool
