#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

#include "cli/grammar.h"
#include "commands/commands.h"
#include "design/save.h"
#include "exchange/composites.h"
#include "exchange/import.h"
#include "exchange/installed_maps.h"
#include "exchange/map_template.h"
#include "guard/quiet_output.h"
#include "host/start.h"
#include "text/json.h"
#include "text/table.h"

namespace vrltool {

using namespace exchange;

namespace {

constexpr std::size_t kMostAllowed = 1000000000;

struct Options {
    std::string netlist;
    std::string output;
    std::string map;
    bool partial = false;
    bool mapTemplate = false;
    DocumentLimits limits;
};

Outcome writeTemplate(Options const& options, Document const& document, Findings const& findings) {
    std::string const text = mapTemplate(document);
    findings.write(std::cerr);
    if (options.output.empty() || options.output == "-") {
        std::cout << text;
        return findings.outcome();
    }
    std::error_code none;  // of what cannot be looked at, as when it is written
    if (std::filesystem::exists(options.output, none))
        throw Failure(options.output, "is there already, and may be a map that somebody has filled in",
                      "name a new file, or remove that one");
    saveFile(options.output, text);
    std::cout << options.output << ": written\n";
    return findings.outcome();
}

Json reportJson(Options const& options, std::size_t instances, Import const& import, Findings const& findings,
                bool written) {
    Json json = jsonHead("import", 1);
    json["file"] = options.netlist;
    json["map"] = options.map.empty() ? Json(nullptr) : Json(options.map);
    json["output"] = written ? Json(options.output) : Json(nullptr);
    std::string const name = import.document.name();
    json["name"] = name.empty() ? Json(nullptr) : Json(name);
    json["counts"] = Json{{"instances", instances},
                          {"elements", import.netlist->sizeElements()},
                          {"nets", import.nets()},
                          {"ports", import.portCount},
                          {"settings", import.settings},
                          {"parameters", import.parameters},
                          {"skipped", import.skipped.count()},
                          {"leftOut", import.leftOut.count()}};
    json["findings"] = findings.json();
    return json;
}

void writeReport(Options const& options, Import const& import, Findings const& findings, bool written) {
    findings.write(std::cout);
    std::cout << options.netlist << ": " << counted(import.netlist->sizeElements(), "element") << ", "
              << counted(import.nets(), "net") << ", " << counted(import.portCount, "outer port") << ", "
              << counted(import.settings, "setting") << " (" << import.parameters << " to parameters)";
    if (import.skipped.count() > 0) std::cout << "; " << import.skipped.count() << " skipped";
    if (import.leftOut.count() > 0) std::cout << "; " << import.leftOut.count() << " left out";
    std::cout << '\n';
    if (written)
        std::cout << options.output << ": written\n";
    else if (!options.output.empty())
        std::cout << options.output << ": not written, for " << counted(findings.errors(), "error")
                  << "; --partial imports the rest\n";
}

void refuseOutput(Options const& options) {
    if (options.output == "-" && !options.mapTemplate)
        throw Failure("-", "a design is written into a file, not to standard output", "give the file a name");
    refuseToReplace(options.output, {options.netlist, pathOfMap(options.map)});
}

Outcome importNetlist(Options const& options, Common const& common) {
    refuseOutput(options);
    if (isSavedDesign(options.netlist))
        throw Failure(options.netlist, "is a saved design, and no netlist", "'vrl export' makes a netlist of it");
    startLibrary(common);
    Findings findings;
    Document document = readDocument(options.netlist, findings, options.limits);
    std::size_t const instances = document.instances.size();
    if (options.mapTemplate) return writeTemplate(options, document, findings);
    NameMap const map = readNameMap(options.map);
    resetUniqueIDs();
    Kinds kinds;
    Node const composites = expandComposites(document, map, findings, options.limits.elements);
    Import import{document, map, kinds, findings, composites};
    {
        QuietOutput const quiet;
        importDocument(import);
    }
    bool const good = options.partial || findings.errors() == 0;
    bool const written = good && !options.output.empty();
    if (written) saveDesign(*import.netlist, options.output);
    if (common.json)
        writeJson(std::cout, reportJson(options, instances, import, findings, written));
    else
        writeReport(options, import, findings, written);
    return findings.outcome();
}

}  // namespace

void addImport(Grammar& grammar) {
    auto const options = std::make_shared<Options>();
    options->limits.values.hint = "--max-values and --max-aliased raise the limits";
    CLI::App& command =
        grammar.add("import", "makes a design of a netlist in JSON or YAML",
                    "  vrl import --map-template mzi.yml -o map.yml  # a map to begin with\n"
                    "  vrl import mzi.yml --map map.yml              # only reports what it finds\n"
                    "  vrl import mzi.yml --map map.yml -o mzi.vrl   # writes the design\n"
                    "Installed map: gdsfactory-generic, from the generic kit of gdsfactory to SampleFab.",
                    [options](Common const& common) { return importNetlist(*options, common); });
    command.add_option("netlist", options->netlist, "the netlist: instances, connections or nets, ports")
        ->required()
        ->type_name("FILE");
    command.add_option("-o,--output", options->output, "the design to write; without it nothing is written")
        ->type_name("FILE");
    auto* const map =
        command.add_option("--map", options->map, "from the names in the netlist to ours: a file, or an installed map")
            ->type_name("FILE");
    command.add_flag("--partial", options->partial, "import what can be, and leave out the rest");
    command.add_flag("--map-template", options->mapTemplate, "write a map to begin with instead of a design")
        ->excludes(map);
    auto const limit = [&](char const* name, std::size_t& value, std::string const& what) {
        command.add_option(name, value, what + "; " + std::to_string(value) + " otherwise")
            ->type_name("N")
            ->check(CLI::Range(std::size_t{1}, kMostAllowed));
    };
    limit("--max-elements", options->limits.elements, "the most elements that arrays may make");
    limit("--max-values", options->limits.values.values, "the most values in the netlist");
    limit("--max-aliased", options->limits.values.aliased, "the most values that its aliases may repeat");
}

}  // namespace vrltool
