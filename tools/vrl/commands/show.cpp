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
#include "overview/element_page.h"
#include "overview/overview.h"

namespace vrltool {

namespace {

struct Options {
    std::string file;
    std::string element;
    bool listing = false;
    bool native = false;
    bool bill = false;
};

Outcome show(Options const& options, Common const& common) {
    startLibrary(common);
    Design const design = readDesign(options.file);
    leaveToTheEnd(design.object);
    std::cerr << missingText(design);
    if (!options.element.empty()) {
        overview::ElementPage const page(design, options.element);
        common.json ? writeJson(std::cout, page.json()) : page.write(std::cout);
    } else if (options.bill) {
        common.json ? writeJson(std::cout, overview::billJson(design)) : overview::writeBill(std::cout, design);
    } else if (common.json) {
        writeJson(std::cout, designJson(design));
    } else if (options.listing) {
        vrl::AsciiStreamSerialiser listing(std::cout);
        if (!design.object.write(listing)) throw Failure(options.file, "cannot be listed");
    } else if (options.native) {
        design.object.print(std::cout);
    } else {
        overview::writeOverview(std::cout, design);
    }
    return Outcome::kFine;
}

}  // namespace

void addShow(Grammar& grammar) {
    auto const options = std::make_shared<Options>();
    CLI::App& command =
        grammar.add("show", "prints a saved design of whatever class",
                    "  vrl show modulator.vrl            # its elements, nets and boundary\n"
                    "  vrl show modulator.vrl arms/upper # one element in full\n"
                    "  vrl show --bom modulator.vrl      # how many there are of each kind, and how long\n"
                    "  vrl show --native modulator.vrl   # as the library prints it\n"
                    "  vrl show --listing modulator.vrl  # every saved member, with its comment\n"
                    "  vrl show --json modulator.vrl     # everything, for programs\n"
                    "A value that is not the default of its kind is marked with *, and the default is beside it.",
                    [options](Common const& common) { return show(*options, common); });
    command.add_option("file", options->file, "the saved design")->required()->type_name("FILE");
    auto* const element =
        command.add_option("element", options->element, "an element to show in full, such as arms/upper")
            ->type_name("PATH")
            ->check([](std::string const& path) { return std::string(path.empty() ? "names no element" : ""); });
    auto* const json = command.get_option("--json");
    auto* const bill = command
                           .add_flag("--bom", options->bill,
                                     "the kinds with their foundries: how many of each, and the sum of their lengths")
                           ->excludes(element);
    auto* const native = command.add_flag("--native", options->native, "as the library prints it")
                             ->excludes(json)
                             ->excludes(bill)
                             ->excludes(element);
    command.add_flag("--listing", options->listing, "the text listing of all saved members")
        ->excludes(json)
        ->excludes(bill)
        ->excludes(native)
        ->excludes(element);
}

}  // namespace vrltool
