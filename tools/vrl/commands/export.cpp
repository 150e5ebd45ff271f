#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

#include "cli/grammar.h"
#include "commands/commands.h"
#include "design/design.h"
#include "design/missing_text.h"
#include "design/save.h"
#include "exchange/export.h"
#include "exchange/installed_maps.h"
#include "guard/quiet_output.h"
#include "host/start.h"
#include "text/json.h"
#include "text/table.h"
#include "text/utf8.h"

namespace vrltool {

using namespace exchange;

namespace {

struct Options {
    std::string file;
    std::string output;
    std::string map;
    std::string format;
};

Format formatOf(Options const& options) {
    std::string const& path = options.output;
    bool const jsonPath = path.size() > 5 && path.compare(path.size() - 5, 5, ".json") == 0;
    bool const json = options.format.empty() ? jsonPath : options.format == "json";
    return json ? Format::kJson : Format::kYaml;
}

/// Refuses what would not come back: JSON and YAML are UTF-8, and an import bounds the length of names and the levels.
void refuseOthers(Node const& node, std::string const& path, std::size_t depth = 1) {
    if (depth > kDeepest && node.kind >= Kind::kList)
        throw Failure(path, "a value is nested deeper than " + std::to_string(kDeepest) +
                                " levels, and has no place in a netlist");
    std::string const& text = node.text;
    if (firstStrayByte(text) < text.size())
        throw Failure(path, "the string '" + printable(text) + "' is no UTF-8, and has no place in a netlist",
                      "rename it or set it anew");
    for (auto const& part : node) {
        if (part.first.text.size() > kLongestName)
            throw Failure(path,
                          "the name '" + printable(part.first.text.substr(0, 60)) + "...' is longer than " +
                              std::to_string(kLongestName) + " bytes, and has no place in a netlist",
                          "shorten it");
        refuseOthers(part.first, path);
        refuseOthers(part.second, path, depth + 1);
    }
}

/// How many parts a netlist has, by their names.
Json countsOf(Node const& netlist) {
    std::size_t const nets = member(netlist, "nets").size() + member(netlist, "connections").size();
    return {
        {"instances", member(netlist, "instances").size()}, {"nets", nets}, {"ports", member(netlist, "ports").size()}};
}

Json reportJson(Options const& options, Node const& netlist, Findings const& findings, std::string const& text) {
    Json json = jsonHead("export", 1);
    json["file"] = options.file;
    json["map"] = options.map.empty() ? Json(nullptr) : Json(options.map);
    json["output"] = options.output.empty() ? Json(nullptr) : Json(options.output);
    json["netlistFormat"] = formatOf(options) == Format::kJson ? "json" : "yaml";
    json["counts"] = countsOf(netlist);
    json["findings"] = findings.json();
    if (options.output.empty()) json["netlist"] = text;
    return json;
}

void writeReport(Options const& options, Node const& netlist, Findings const& findings, std::string const& text) {
    if (options.output.empty()) {
        findings.write(std::cerr);
        std::cout << text;
        return;
    }
    findings.write(std::cout);
    Json const counts = countsOf(netlist);
    std::cout << options.output << ": " << counted(counts["instances"], "instance") << ", "
              << counted(counts["nets"], "net") << ", " << counted(counts["ports"], "outer port") << " written\n";
}

Outcome exportDesign(Options options, Common const& common) {
    if (options.output == "-") options.output.clear();
    refuseToReplace(options.output, {options.file, pathOfMap(options.map)});
    startLibrary(common);
    NameMap const map = readNameMap(options.map);
    Design const design = readDesign(options.file);
    leaveToTheEnd(design.object);
    std::cerr << missingText(design);
    vrl::Netlist& circuit = circuitOf(design);
    Findings findings;
    if (design.object.block())
        findings.add(Severity::kWarning, options.file, {},
                     "holds the composite '" + design.type +
                         "': its inside is exported, not its own ports and parameters");
    Kinds kinds;
    Node const netlist = [&] {
        QuietOutput const quiet;
        return exportNetlist(circuit, options.file, map, kinds, findings);
    }();
    refuseOthers(netlist, options.file);
    std::string const text = written(netlist, formatOf(options)) + '\n';
    if (!options.output.empty()) saveFile(options.output, text);
    if (common.json)
        writeJson(std::cout, reportJson(options, netlist, findings, text));
    else
        writeReport(options, netlist, findings, text);
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
    command.add_option("--map", options->map, "the file or installed map of an import; it is used the other way round")
        ->type_name("FILE");
}

}  // namespace vrltool
