#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

#include "cli/grammar.h"
#include "commands/commands.h"
#include "design/missing_text.h"
#include "design/save.h"
#include "host/start.h"
#include "setting/report.h"
#include "text/table.h"

namespace vrltool {

using namespace setting;

namespace {

struct Options {
    std::string file;
    std::vector<std::string> assignments;
    std::string kind;
    std::string output;
    bool force = false;
    bool dryRun = false;
};

Outcome set(Options const& options, Common const& common) {
    if (options.output == "-")
        throw Failure("-", "a design is written into a file, not to standard output", "give the file a name");
    startLibrary(common);
    Design const design = readDesign(options.file);
    leaveToTheEnd(design.object);
    std::cerr << missingText(design);
    Settings const settings = setAll(design, options.assignments, options.kind, options.force);
    bool const allowed = !settings.forbidden();
    Ending ending{options.file, "", options.dryRun};
    bool const copies = !options.output.empty() && options.output != options.file;
    if (allowed && !options.dryRun && (copies || !settings.changes.empty()))
        ending.output = options.output.empty() ? options.file : options.output;
    if (!ending.output.empty()) saveDesign(design, settings.changes, ending.output);
    writeFindings(std::cerr, settings);
    if (common.json)
        writeJson(std::cout, settingsJson(settings, ending));
    else if (allowed)
        writeSettings(std::cout, settings, ending);
    else
        std::cerr << "vrl: " << printable(options.file) << ": not changed\n";
    return allowed ? Outcome::kFine : Outcome::kFailed;
}

}  // namespace

void addSet(Grammar& grammar) {
    auto const options = std::make_shared<Options>();
    CLI::App& command = grammar.add(
        "set", "sets parameters and cross sections in a saved design",
        "  vrl set mzi.vrl bend.radius=20um                   # in its place; units are converted\n"
        "  vrl set mzi.vrl bend.radius=20 -o new.vrl          # in the parameter's own unit, into another file\n"
        "  vrl set mzi.vrl 'arm*.length=0.1 mm' --dry-run     # several elements; only shows what would change\n"
        "  vrl set mzi.vrl --kind sfBend '*.radius=20'        # of all elements of one kind\n"
        "  vrl set mzi.vrl arms/lower.width=0.5               # of an element inside of a composite\n"
        "  vrl set mzi.vrl bend.cs=rib bend,out0.cs=strip     # the cross sections of a block and of a port\n"
        "An element is a path of names, in which * and ? fit several; .cs and .flow choose a cross section and a\n"
        "process flow. Either all changes are made or none. What is not changed stays byte for byte, also where\n"
        "plug-ins are missing, and so does the inside of a composite whose parameters are set.",
        [options](Common const& common) { return set(*options, common); });
    command.add_option("file", options->file, "the saved design")->required()->type_name("FILE");
    command.add_option("assignments", options->assignments, "what is to be set: ELEMENT.PARAMETER=VALUE")
        ->required()
        ->type_name("ASSIGNMENT");
    command
        .add_option("-o,--output", options->output, "the design to write; without it the file itself is replaced whole")
        ->type_name("FILE");
    command.add_option("--kind", options->kind, "only of elements of this kind")->type_name("KEY");
    command.add_flag("--force", options->force, "also values out of range, and cross sections that a foundry lacks");
    command.add_flag("--dry-run", options->dryRun, "only show what would change");
}

}  // namespace vrltool
