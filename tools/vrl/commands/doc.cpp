#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

#include "booklet/booklet.h"
#include "booklet/typeset.h"
#include "cli/grammar.h"
#include "commands/commands.h"
#include "design/save.h"
#include "guard/quiet_output.h"
#include "host/start.h"
#include "text/json.h"
#include "text/table.h"

namespace vrltool {

using namespace booklet;

namespace {

struct Options {
    std::string foundry;
    std::string output;
    std::vector<std::string> blocks;
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

Json reportJson(FoundryFacts const& facts, Files const& files) {
    Json json = jsonHead("doc", 1);
    json["foundry"] = facts.name;
    json["tex"] = files.tex.empty() ? Json(nullptr) : Json(files.tex);
    json["pdf"] = files.pdf.empty() ? Json(nullptr) : Json(files.pdf);
    for (char const* const kinds : {"flows", "crossSections", "blocks"}) json[kinds] = Json::array();
    for (FlowFacts const& flow : facts.flows) json["flows"].push_back(flow.kind);
    for (SectionFacts const& section : facts.sections) json["crossSections"].push_back(section.kind);
    for (BlockFacts const& block : facts.blocks) json["blocks"].push_back(block.kind);
    return json;
}

void writeReport(FoundryFacts const& facts, Files const& files) {
    std::cout << printable(facts.name) << ": " << counted(facts.blocks.size(), "block") << ", "
              << counted(facts.flows.size(), "process flow") << ", " << counted(facts.sections.size(), "cross section")
              << '\n';
    for (std::string const& file : {files.tex, files.pdf})
        if (!file.empty()) std::cout << "wrote " << printable(file) << '\n';
}

FoundryFacts askFoundry(Options const& options) {
    QuietOutput const quiet;
    return factsOf(options.foundry, options.blocks);
}

Outcome document(Options const& options, Common const& common) {
    Files const files = filesOf(options);
    startLibrary(common);
    FoundryFacts const facts = askFoundry(options);
    std::string const tex = bookletTex(facts);
    std::string const pdf = files.pdf.empty() ? "" : typeset(tex);
    if (!files.tex.empty()) saveFile(files.tex, tex);
    if (!files.pdf.empty()) saveFile(files.pdf, pdf);
    if (common.json)
        writeJson(std::cout, reportJson(facts, files));
    else
        writeReport(facts, files);
    return Outcome::kFine;
}

}  // namespace

void addDoc(Grammar& grammar) {
    auto const options = std::make_shared<Options>();
    CLI::App& command = grammar.add("doc", "writes a booklet of a foundry and its blocks in LaTeX or as PDF",
                                    "  vrl doc SampleFab -o booklet.tex                    # one file of LaTeX\n"
                                    "  vrl doc SampleFab -o booklet.tex --pdf              # booklet.pdf beside it\n"
                                    "  vrl doc SampleFab -o booklet.pdf                    # the PDF alone\n"
                                    "  vrl doc SampleFab -o bend.tex --block sfBend        # of one block",
                                    [options](Common const& common) { return document(*options, common); });
    command.add_option("foundry", options->foundry, "the foundry")->required()->type_name("FOUNDRY");
    command.add_option("-o,--output", options->output, "the file to write, .tex or .pdf")
        ->required()
        ->type_name("FILE");
    command.add_flag("--pdf", options->pdf, "a PDF beside the LaTeX; needs pdflatex");
    command.add_option("--block", options->blocks, "the blocks to document, instead of all that come with the foundry")
        ->type_name("KEY")
        ->allow_extra_args(false);
}

}  // namespace vrltool
