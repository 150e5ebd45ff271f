#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

#include "booklet/booklet.h"
#include "booklet/design_booklet.h"
#include "booklet/typeset.h"
#include "cli/grammar.h"
#include "commands/commands.h"
#include "design/design.h"
#include "design/missing_text.h"
#include "design/save.h"
#include "draw/picture.h"
#include "guard/quiet_output.h"
#include "host/start.h"
#include "text/json.h"
#include "text/near_names.h"
#include "text/table.h"

namespace vrltool {

using namespace booklet;

namespace {

struct Options {
    std::string subject;
    std::string output;
    std::vector<std::string> blocks;
    std::size_t most = draw::Picture().max;
    bool foundry = false;
    bool pdf = false;
};

bool endsWith(std::string const& text, std::string const& end) {
    return text.size() > end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

/// The files to write; empty for what is not asked for.
struct Files {
    std::string tex;
    std::string pdf;
};

Files filesOf(Options const& options) {
    if (endsWith(options.output, ".pdf")) return {"", options.output};
    if (!endsWith(options.output, ".tex"))
        throw Failure(options.output, "ends neither in .tex nor in .pdf", "give the file as -o booklet.tex");
    std::string const stem = options.output.substr(0, options.output.size() - 4);
    return {options.output, options.pdf ? stem + ".pdf" : ""};
}

/// Whether a design is asked for, and not a foundry.
bool isDesign(Options const& options) {
    if (options.foundry) return false;
    std::string const& name = options.subject;
    auto const foundries = foundryKeys();
    bool const isFoundry = std::find(foundries.begin(), foundries.end(), name) != foundries.end();
    std::error_code ignored;
    bool const isFile = std::filesystem::is_regular_file(name, ignored);
    if (isFoundry && isFile)
        throw Failure(name, "is a foundry, and a file",
                      "write './" + name + "' for the design, or '--foundry " + name + "' for the foundry");
    if (!isFoundry && isFile && !options.blocks.empty())
        throw Failure(name, "is a file, and --block chooses blocks of a foundry", "leave out --block for a design");
    if (isFoundry || std::filesystem::exists(name, ignored)) return !isFoundry;
    std::string const near = didYouMean(name, foundries);
    throw Failure(name, "there is no such file, and no loaded plug-in has a foundry of that name",
                  near.empty() ? "'vrl plugins' shows what is loaded" : near);
}

Json headJson(Files const& files, char const* subject, std::string const& name) {
    Json json = jsonHead("doc", 1);
    json[subject] = name;
    json["tex"] = files.tex.empty() ? Json(nullptr) : Json(files.tex);
    json["pdf"] = files.pdf.empty() ? Json(nullptr) : Json(files.pdf);
    return json;
}

Json reportJson(FoundryFacts const& facts, Files const& files) {
    Json json = headJson(files, "foundry", facts.name);
    for (char const* const kinds : {"flows", "crossSections", "blocks"}) json[kinds] = Json::array();
    for (FlowFacts const& flow : facts.flows) json["flows"].push_back(flow.kind);
    for (SectionFacts const& section : facts.sections) json["crossSections"].push_back(section.kind);
    for (BlockFacts const& block : facts.blocks) json["blocks"].push_back(block.kind);
    return json;
}

Json reportJson(DesignFacts const& facts, Files const& files) {
    Json json = headJson(files, "design", facts.report.path);
    json["type"] = facts.type;
    json["elements"] = facts.circuit.elements.size();
    json["nets"] = facts.circuit.nets.size();
    json["insides"] = Json::array();
    for (InsideFacts const& inside : facts.insides)
        json["insides"].push_back(Json{{"kind", inside.kind}, {"elements", inside.paths}});
    json["summary"] = Json{{"errors", facts.report.count(Severity::kError)},
                           {"warnings", facts.report.count(Severity::kWarning)},
                           {"notes", facts.report.count(Severity::kNote)},
                           {"excepted", facts.report.excepted.size()}};
    return json;
}

std::string reportText(FoundryFacts const& facts) {
    return printable(facts.name) + ": " + counted(facts.blocks.size(), "block") + ", " +
           counted(facts.flows.size(), "process flow") + ", " + counted(facts.sections.size(), "cross section");
}

std::string reportText(DesignFacts const& facts) {
    return printable(facts.report.path) + ": " + counted(facts.circuit.elements.size(), "element") + ", " +
           counted(facts.circuit.nets.size(), "net") + ", " + counted(facts.report.findings.size(), "finding");
}

template <class Facts>
Outcome writeBooklet(Facts const& facts, Files const& files, bool json) {
    std::string const tex = bookletTex(facts);
    std::string const pdf = files.pdf.empty() ? "" : typeset(tex);
    if (!files.tex.empty()) saveFile(files.tex, tex);
    if (!files.pdf.empty()) saveFile(files.pdf, pdf);
    if (json) {
        writeJson(std::cout, reportJson(facts, files));
        return Outcome::kFine;
    }
    std::cout << reportText(facts) << '\n';
    for (std::string const& file : {files.tex, files.pdf})
        if (!file.empty()) std::cout << "wrote " << printable(file) << '\n';
    return Outcome::kFine;
}

FoundryFacts askFoundry(Options const& options) {
    QuietOutput const quiet;
    return factsOf(options.subject, options.blocks);
}

/// The check reads the design by itself. What it cannot check has no booklet: half of it would be missing.
check::FileReport checkDesign(std::string const& path) {
    auto report = check::checkFile(path, check::chooseRules({}), true, false);
    if (report.failure.empty()) return report;
    auto const colon = report.failure.find(": ");
    throw Failure(report.failure.substr(0, colon), report.failure.substr(colon + 2), report.hint);
}

DesignFacts askDesign(Options const& options) {
    std::string const& path = options.subject;
    Design const design = readDesign(path);
    leaveToTheEnd(design.object);
    std::cerr << missingText(design);
    if (!design.object.block()) circuitOf(design);
    QuietOutput const quiet;
    return factsOf(design, checkDesign(path), options.most);
}

Outcome document(Options const& options, Common const& common) {
    Files const files = filesOf(options);
    startLibrary(common);
    if (!isDesign(options)) return writeBooklet(askFoundry(options), files, common.json);
    for (std::string const& file : {files.tex, files.pdf}) refuseToReplace(file, {options.subject});
    return writeBooklet(askDesign(options), files, common.json);
}

}  // namespace

void addDoc(Grammar& grammar) {
    auto const options = std::make_shared<Options>();
    CLI::App& command =
        grammar.add("doc", "writes a booklet of a design, or of a foundry, in LaTeX or as PDF",
                    "  vrl doc modulator.vrl -o modulator.pdf              # of a design, as PDF\n"
                    "  vrl doc modulator.vrl -o modulator.tex --pdf        # LaTeX, and the PDF beside it\n"
                    "  vrl doc SampleFab -o booklet.tex                    # of a foundry, in LaTeX\n"
                    "  vrl doc SampleFab -o bend.tex --block sfBend        # of one block\n"
                    "The booklet of a design has its picture, elements, nets, boundary and kinds, what\n"
                    "'vrl check' finds, and the insides of its composites: equal ones once.",
                    [options](Common const& common) { return document(*options, common); });
    command.add_option("subject", options->subject, "the file of a saved design, or the name of a foundry")
        ->required()
        ->type_name("SUBJECT");
    command.add_option("-o,--output", options->output, "the file to write, .tex or .pdf")
        ->required()
        ->type_name("FILE");
    command.add_flag("--pdf", options->pdf, "a PDF beside the LaTeX; needs pdflatex");
    command.add_flag("--foundry", options->foundry,
                     "takes the name as that of a foundry, also if there is such a file");
    command
        .add_option("--block", options->blocks, "of a foundry: the blocks to document, instead of all of its plug-in")
        ->type_name("KEY")
        ->allow_extra_args(false);
    command
        .add_option("--max", options->most, "of a design: the most elements in its picture, 200 otherwise; 0: no limit")
        ->type_name("N")
        ->check(CLI::Range(0, 1000000));
}

}  // namespace vrltool
