#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

#include "cli/grammar.h"
#include "commands/commands.h"
#include "design/design.h"
#include "design/missing_text.h"
#include "design/save.h"
#include "exchange/from_netlist.h"
#include "exchange/scalar.h"
#include "exchange/tree_writer.h"
#include "guard/quiet_output.h"
#include "host/start.h"
#include "text/json.h"
#include "text/table.h"

namespace vrltool {

using namespace exchange;

namespace {

struct Options {
    std::string file;
    std::string output;
    std::string map;
    std::string format;
};

TextFormat formatOf(Options const& options) {
    std::string const& path = options.output;
    bool const jsonPath = path.size() > 5 && path.compare(path.size() - 5, 5, ".json") == 0;
    bool const json = options.format.empty() ? jsonPath : options.format == "json";
    return json ? TextFormat::kJson : TextFormat::kYaml;
}

/// JSON and YAML are UTF-8: other bytes would come back as others.
void refuseOtherBytes(Tree const& tree, std::string const& path) {
    auto const check = [&](std::string const& text) {
        if (!isUtf8(text))
            throw Failure(path, "the text '" + printable(text) + "' is no UTF-8, and has no place in a netlist",
                          "rename it or set it anew");
    };
    check(tree.text);
    for (Tree const& item : tree.items) refuseOtherBytes(item, path);
    for (Tree::Member const& member : tree.members) {
        check(member.name);
        refuseOtherBytes(member.value, path);
    }
}

Json reportJson(Options const& options, Document const& document, Findings const& findings, std::string const& text) {
    Json json = jsonHead("export", 1);
    json["file"] = options.file;
    json["map"] = options.map.empty() ? Json(nullptr) : Json(options.map);
    json["output"] = options.output.empty() ? Json(nullptr) : Json(options.output);
    json["netlistFormat"] = formatOf(options) == TextFormat::kJson ? "json" : "yaml";
    json["counts"] = Json{
        {"instances", document.instances.size()}, {"nets", document.nets.size()}, {"ports", document.ports.size()}};
    json["findings"] = findings.json();
    if (options.output.empty()) json["netlist"] = text;
    return json;
}

void writeReport(Options const& options, Document const& document, Findings const& findings, std::string const& text) {
    if (options.output.empty()) {
        findings.write(std::cerr);
        std::cout << text;
        return;
    }
    findings.write(std::cout);
    std::cout << options.output << ": " << counted(document.instances.size(), "instance") << ", "
              << counted(document.nets.size(), "net") << ", " << counted(document.ports.size(), "outer port")
              << " written\n";
}

Outcome exportDesign(Options options, Common const& common) {
    if (options.output == "-") options.output.clear();
    refuseToReplace(options.output, {options.file, options.map});
    startLibrary(common.config);
    NameMap const map = options.map.empty() ? NameMap() : readNameMap(options.map);
    Design const design = readDesign(options.file);
    std::cerr << missingText(design);
    vrl::Netlist& circuit = circuitOf(design);
    Findings findings;
    if (design.object.block())
        findings.warning(options.file, {},
                         "holds the composite '" + design.type + "': its inside is exported, not its own ports");
    Workshop workshop;
    Document const document = [&] {
        QuietOutput const quiet;
        return documentFrom(circuit, options.file, map, workshop, findings);
    }();
    Tree const tree = treeFrom(document);
    refuseOtherBytes(tree, options.file);
    std::string const text = treeText(tree, formatOf(options));
    if (!options.output.empty()) saveFile(options.output, text);
    if (common.json)
        writeJson(std::cout, reportJson(options, document, findings, text));
    else
        writeReport(options, document, findings, text);
    return findings.outcome();
}

}  // namespace

void addExport(Grammar& grammar) {
    auto const options = std::make_shared<Options>();
    CLI::App& command = grammar.add("export", "writes a design as a netlist in JSON or YAML",
                                    "  vrl export mzi.vrl                           # in our names, as YAML\n"
                                    "  vrl export mzi.vrl --map map.yml -o mzi.yml  # in the names of another tool\n"
                                    "  vrl export mzi.vrl -o mzi.json               # as JSON",
                                    [options](Common const& common) { return exportDesign(*options, common); });
    command.add_option("file", options->file, "the saved design")->required()->type_name("FILE");
    command.add_option("-o,--output", options->output, "the netlist to write; without it, or as -, to standard output")
        ->type_name("FILE");
    command.add_option("--format", options->format, "the language; without it that of the ending, or YAML")
        ->check(CLI::IsMember({"json", "yaml"}))
        ->type_name("json|yaml");
    command.add_option("--map", options->map, "from the names of another tool to ours; it is used the other way round")
        ->type_name("FILE");
}

}  // namespace vrltool
