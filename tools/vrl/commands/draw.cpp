#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <iostream>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>

#include "check/runner.h"
#include "circuit/circuit.h"
#include "cli/grammar.h"
#include "commands/commands.h"
#include "commands/picture_output.h"
#include "design/design.h"
#include "design/missing_text.h"
#include "design/save.h"
#include "draw/drawing.h"
#include "draw/graph_text.h"
#include "draw/placed_drawing.h"
#include "draw/render.h"
#include "draw/symbol_views.h"
#include "host/start.h"
#include "page/page.h"
#include "text/failure.h"
#include "text/json.h"
#include "text/phrases.h"

namespace vrltool {

using namespace draw;

namespace {

constexpr int kMostCounted = 1000000;
constexpr int kLeastSide = 300;  // points
constexpr std::size_t kMostPlaced = 10000;

struct Options {
    std::string file;
    std::string output;
    std::string format;
    std::optional<unsigned> depth;    ///< that of a page is without limit otherwise, ...
    std::optional<std::size_t> most;  ///< and so is this, ...
    std::optional<int> width;         ///< and this is about that of a screen
    std::optional<int> height;
    bool noLegend = false;
    bool noSymbols = false;
    bool placement = false;
    std::string page;
    Picture picture;
};

/// The format that is asked for by name, or by the ending of the file.
PictureFormat formatOf(Options const& options) {
    if (!options.format.empty()) {
        if (auto const named = pictureFormat(options.format)) return *named;
        throw Failure("--format " + options.format, "no such format",
                      std::string("take ") + pictureFormats() + nearFormats(options.format));
    }
    if (options.output.empty())
        throw Failure(options.file, "the picture has neither a file nor a format",
                      "name a file with '-o FILE.svg', or a format for standard output with '--format svg'");
    if (options.output.empty() || options.output == "-") return PictureFormat::kSvg;
    std::string const ending = std::filesystem::path(options.output).extension().string();
    if (auto const named = pictureFormat(ending.empty() ? ending : ending.substr(1))) return *named;
    throw Failure(options.output,
                  ending.empty() ? "has no ending that names its format" : "no format ends in '" + ending + "'",
                  std::string("end it in ") + pictureFormats() + ", or name one of them with --format");
}

void warnOfSmallText(Options const& options, Drawing const& drawn) {
    for (std::size_t const sheet : drawn.illegible)
        std::cerr << "vrl: " << options.file << ": sheet " << sheet + 1
                  << " has text of less than 5 points, since one of its blocks does not fit otherwise\n";
}

/// Whether a part of a sheet is a block or a frame that is larger than the sides that are asked for; 0: any.
bool hasLarger(Scene const& sheet, int width, int height) {
    auto const isLarger = [&](Shape const& shape) {
        return shape.classes == "body" &&
               ((width > 0 && shape.box.width > width) || (height > 0 && shape.box.height > height));
    };
    return std::any_of(sheet.items.begin(), sheet.items.end(),
                       [&](Item const& item) { return std::any_of(item.shapes.begin(), item.shapes.end(), isLarger); });
}

/// Blocks and frames are never cut.
void warnOfLargeSheets(Options const& options, Drawing const& drawn) {
    for (std::size_t i = 0; i < drawn.sheets.size(); ++i)
        if (hasLarger(drawn.sheets[i], options.width.value_or(0), options.height.value_or(0)))
            std::cerr << "vrl: " << options.file << ": sheet " << i + 1
                      << " is larger than asked for, since one of its blocks or frames is\n";
}

Json report(Options const& options, PictureFormat format, PictureOutput const& output, Selection const& selection,
            Drawing const& drawn) {
    auto const shown = std::count(selection.shown.begin(), selection.shown.end(), true);
    Json json = jsonHead("draw", 1);
    json["file"] = options.file;
    json["output"] = options.output;
    json["pictureFormat"] = formatName(format);
    json["shown"] = shown;
    json["hidden"] = selection.shown.size() - static_cast<std::size_t>(shown);
    json["notes"] = selection.notes;
    json["width"] = 0;
    json["height"] = 0;
    json["sheets"] = Json::array();
    for (std::size_t i = 0; i < drawn.sheets.size(); ++i) {
        Scene const& sheet = drawn.sheets[i];
        json["width"] = std::max(json["width"].get<int>(), sheet.width);
        json["height"] = std::max(json["height"].get<int>(), sheet.height);
        json["sheets"].push_back(
            {{"output", output.fileOf(i, drawn.sheets.size())}, {"width", sheet.width}, {"height", sheet.height}});
    }
    json["domains"] = Json::array();
    for (auto const domain : drawn.domains) json["domains"].push_back(vrl::EnumList::getName(domain));
    return json;
}

void refuseSheets(Options const& options) {
    for (auto const& [given, option] :
         {std::pair(!options.page.empty(), "--page"), {options.height.has_value(), "--height"}})
        if (given)
            throw Failure(option, "makes several sheets, and a file of HTML has one",
                          "leave it out: a browser prints the picture on any paper");
}

/// The page of a picture. The whole design is in its lists, whatever the picture shows of it.
std::string pageOf(Options const& options, Design const& design, Picture const& picture, Selection const& selection,
                   Scene const& scene) {
    auto const report = check::checkFile(options.file, check::chooseRules({}), true, false);
    if (!report.failure.empty()) std::cerr << "vrl: " << report.failure << '\n';
    return page::pageText(design, report, picture, selection.notes, scene);
}

/// How many layers of composites are drawn; less than 0: all.
int depthOf(Options const& options, PictureFormat format) {
    if (options.depth) return static_cast<int>(*options.depth);
    return format == PictureFormat::kHtml && !options.placement ? -1 : 0;
}

std::size_t mostOf(Options const& options, PictureFormat format) {
    if (options.placement) return options.most.value_or(kMostPlaced);
    return options.most.value_or(format == PictureFormat::kHtml ? 0 : Picture().max);
}

/// What is asked for with what the design says of it. A graph has no sheets.
Picture pictureOf(Options const& options, PictureFormat format, vrl::Netlist const& netlist, Circuit const& circuit) {
    Picture picture = options.picture;
    picture.names = outerNames(netlist, circuit);
    picture.legend = !options.noLegend;
    picture.max = mostOf(options, format);
    picture.width =
        options.width.value_or(format == PictureFormat::kHtml ? page::widthForScreen(circuit) : picture.width);
    picture.height = options.height.value_or(0);
    if (!options.noSymbols && !options.placement && format != PictureFormat::kDot) picture.symbols = symbolsOf(circuit);
    if (picture.title.empty()) picture.title = std::filesystem::path(options.file).stem().string();
    if (format == PictureFormat::kDot)
        picture.height = 0;
    else if (!options.page.empty())
        picture.paper = paperOf(options.page);
    return picture;
}

/// A picture by placements has its notes, besides what is hidden, from these.
Drawing placedDrawingOf(Options const& options, vrl::Netlist const& netlist, Circuit const& circuit,
                        Picture const& picture, Selection& selection) {
    Placements const placements = placementsOf(netlist, circuit, selection.shown, options.file);
    selection.notes.insert(selection.notes.end(), placements.notes.begin(), placements.notes.end());
    return placedDrawing(circuit, placements, picture, selection);
}

Outcome work(Options const& options, Common const& common) {
    PictureFormat const format = formatOf(options);
    if (format == PictureFormat::kHtml) refuseSheets(options);
    if (options.placement && format == PictureFormat::kDot)
        throw Failure("--placement", "a graph has no places", "take svg, pdf, png or html");
    PictureOutput const output(options.output, format, options.file);
    if (common.json && output.isStandardOutput())
        throw Failure("standard output", "cannot take both the picture and the JSON that --json asks for",
                      "name a file for the picture with '-o FILE.svg'");
    refuseToReplace(options.output, {options.file});
    startLibrary(common);
    Design const design = readDesign(options.file);
    std::cerr << missingText(design);
    vrl::Netlist& netlist = circuitOf(design);
    Circuit const circuit = circuitFrom(netlist, depthOf(options, format));
    Picture const picture = pictureOf(options, format, netlist, circuit);
    Selection selection = selectionOf(circuit, picture);
    Drawing const drawn = options.placement ? placedDrawingOf(options, netlist, circuit, picture, selection)
                                            : drawingOf(circuit, picture, selection);
    for (std::string const& note : selection.notes) std::cerr << "vrl: " << options.file << ": " << note << '\n';
    warnOfSmallText(options, drawn);
    if (options.page.empty() && format != PictureFormat::kDot) warnOfLargeSheets(options, drawn);
    if (format == PictureFormat::kDot)
        output.write(graphText(circuit, selection, picture.names));
    else if (format == PictureFormat::kHtml)
        output.write(pageOf(options, design, picture, selection, drawn.sheets[0]));
    else
        output.write(drawn.sheets);
    if (common.json) writeJson(std::cout, report(options, format, output, selection, drawn));
    return Outcome::kFine;
}

}  // namespace

void addDraw(Grammar& grammar) {
    auto const options = std::make_shared<Options>();
    CLI::App& command =
        grammar.add("draw", "draws a picture of a circuit",
                    "  vrl draw modulator.vrl -o modulator.svg            # blocks and wires\n"
                    "  vrl draw modulator.vrl -o modulator.pdf --depth 1  # and inside composites\n"
                    "  vrl draw chip.vrl -o mod.png --around mod --hops 2 # one neighbourhood\n"
                    "  vrl draw chip.vrl -o chip.pdf --page a4            # pages to print\n"
                    "  vrl draw mzi.vrl -o mzi.svg --placement            # where its netlist placed them\n"
                    "  vrl draw chip.vrl -o chip.html                     # to look around in\n"
                    "  vrl draw chip.vrl --format dot                     # a plain graph for Graphviz\n"
                    "The address of a file of HTML takes #element=PATH, #search=TEXT, #open=PATH and\n"
                    "#closed=PATH, and several of them with & between.",
                    [options](Common const& common) { return work(*options, common); });
    command.add_option("file", options->file, "the saved design")->required()->type_name("FILE");
    command
        .add_option("-o,--output", options->output,
                    "the picture: .svg, .dot, .pdf, .png or .html; '-': standard output")
        ->type_name("FILE");
    command.add_option("--format", options->format, "its format, whatever the ending")
        ->type_name("svg|dot|pdf|png|html");
    CLI::Option* const depth =
        command
            .add_option("--depth", options->depth,
                        "how many layers of composites are drawn as frames; 0 otherwise, in HTML all")
            ->type_name("N")
            ->check(CLI::Range(0, 1000));
    CLI::Option* const around =
        command.add_option("--around", options->picture.around, "only this element and its neighbourhood")
            ->type_name("ELEMENT")
            ->check([](std::string const& name) { return std::string(name.empty() ? "names no element" : ""); });
    command.add_option("--hops", options->picture.hops, "how many connections that reaches; 1 otherwise")
        ->type_name("N")
        ->check(CLI::Range(0, kMostCounted))
        ->needs(around);
    command.add_option("--max", options->most, "the most elements; 200 otherwise, in HTML all; 0: no limit")
        ->type_name("N")
        ->check(CLI::Range(0, kMostCounted));
    CLI::Option* const width = command.add_option("--width", options->width,
                                                  "points, past which the picture is folded; 1600 otherwise, in HTML "
                                                  "as much as makes it about as wide as high");
    CLI::Option* const height = command.add_option(
        "--height", options->height, "points, past which it goes on on another sheet; one sheet otherwise");
    for (CLI::Option* const side : {width, height}) side->type_name("N")->check(CLI::Range(kLeastSide, kMostCounted));
    command.add_option("--page", options->page, "a paper for as many sheets as keep the text at 5 points at least")
        ->type_name("NAME")
        ->check(CLI::IsMember(paperNames()))
        ->excludes(width)
        ->excludes(height);
    CLI::Option* const parameters = command.add_flag("--parameters", options->picture.parameters,
                                                     "the values in each block that differ from those of a new one");
    command.add_option("--title", options->picture.title, "a title above the picture; the name of the file otherwise")
        ->type_name("TEXT");
    command.add_flag("--no-legend", options->noLegend, "no legend below it");
    command.add_flag("--no-symbols", options->noSymbols, "plain blocks, whatever symbols plug-ins choose for them");
    command
        .add_flag("--placement", options->placement, "the elements at the places that an imported netlist gave them")
        ->excludes(depth)
        ->excludes(parameters);
}

}  // namespace vrltool
