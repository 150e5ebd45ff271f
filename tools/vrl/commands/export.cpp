#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <vector>

#include "circuit/circuit.h"
#include "circuit/outer_names.h"
#include "cli/grammar.h"
#include "commands/commands.h"
#include "design/design.h"
#include "design/missing_text.h"
#include "design/save.h"
#include "exchange/export.h"
#include "exchange/installed_maps.h"
#include "guard/quiet_output.h"
#include "host/start.h"
#include "spice/netlist.h"
#include "text/failure.h"
#include "text/json.h"
#include "text/table.h"
#include "text/utf8.h"

namespace vrltool {

using namespace exchange;

namespace {

enum class Language { kYaml, kJson, kSpice };

struct LanguageName {
    Language language;
    char const* name;
    std::vector<char const*> endings;
};

std::vector<LanguageName> const& languages() {
    static std::vector<LanguageName> const all{{Language::kYaml, "yaml", {".yml", ".yaml"}},
                                               {Language::kJson, "json", {".json"}},
                                               {Language::kSpice, "spice", {".sp", ".spice", ".cir"}}};
    return all;
}

struct Options {
    std::string file;
    std::string output;
    std::string map;
    std::string format;
    std::string models;
};

/// The language that is asked for, or that of the ending, or YAML.
LanguageName const& languageOf(Options const& options) {
    std::string const ending = std::filesystem::path(options.output).extension().string();
    for (LanguageName const& language : languages()) {
        bool const ends = std::count(language.endings.begin(), language.endings.end(), ending) > 0;
        if (options.format.empty() ? ends : options.format == language.name) return language;
    }
    return languages().front();
}

/// A netlist in its language, and how many parts it has.
struct Written {
    std::string text;
    std::size_t instances, nets, ports;
};

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

Json reportJson(Options const& options, Written const& netlist, Findings const& findings) {
    Json json = jsonHead("export", 1);
    json["file"] = options.file;
    json["map"] = options.map.empty() ? Json(nullptr) : Json(options.map);
    json["output"] = options.output.empty() ? Json(nullptr) : Json(options.output);
    json["netlistFormat"] = languageOf(options).name;
    json["counts"] = Json{{"instances", netlist.instances}, {"nets", netlist.nets}, {"ports", netlist.ports}};
    json["findings"] = findings.json();
    if (options.output.empty()) json["netlist"] = netlist.text;
    return json;
}

void writeReport(Options const& options, Written const& netlist, Findings const& findings) {
    if (options.output.empty()) {
        findings.write(std::cerr);
        std::cout << netlist.text;
        return;
    }
    bool const spice = languageOf(options).language == Language::kSpice;
    findings.write(std::cout);
    std::cout << options.output << ": " << counted(netlist.instances, "instance") << ", "
              << counted(netlist.nets, spice ? "node" : "net") << ", "
              << counted(netlist.ports, spice ? "pin" : "outer port") << " written\n";
}

Written netlistOf(Options const& options, vrl::Netlist& circuit, NameMap const& map, Findings& findings) {
    Kinds kinds;
    Node const netlist = [&] {
        QuietOutput const quiet;
        return exportNetlist(circuit, options.file, map, kinds, findings);
    }();
    refuseOthers(netlist, options.file);
    Format const format = languageOf(options).language == Language::kJson ? Format::kJson : Format::kYaml;
    std::size_t const nets = member(netlist, "nets").size() + member(netlist, "connections").size();
    return {written(netlist, format) + '\n', member(netlist, "instances").size(), nets,
            member(netlist, "ports").size()};
}

Written spiceOf(Options const& options, vrl::Netlist& netlist, Findings& findings) {
    QuietOutput const quiet;
    Circuit const circuit = circuitFrom(netlist);
    OuterNames const names = outerNames(netlist, circuit);
    std::string const name = std::filesystem::path(options.file).stem().string();
    spice::Source source{options.file, name, circuit, names};
    if (!options.models.empty()) {
        source.defined = spice::subcircuitsIn(options.models);
        std::filesystem::path const folder = std::filesystem::path(options.output).parent_path();
        std::error_code none;  // a path that leads nowhere stays as it is
        source.models =
            folder.empty() ? options.models : std::filesystem::proximate(options.models, folder, none).string();
    }
    spice::Netlist const made = spice::netlistOf(source, findings);
    return {made.text, made.instances, made.nodes, made.pins};
}

void checkOptions(Options const& options) {
    bool const spice = languageOf(options).language == Language::kSpice;
    if (spice && !options.map.empty())
        throw Failure("--map", "is for netlists in YAML and JSON; SPICE has our names", "leave it out");
    if (!spice && !options.models.empty())
        throw Failure("--models", "is for SPICE", "write SPICE with --format spice, or leave it out");
}

Outcome exportDesign(Options options, Common const& common) {
    if (options.output == "-") options.output.clear();
    checkOptions(options);
    refuseToReplace(options.output, {options.file, pathOfMap(options.map), options.models});
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
    bool const spice = languageOf(options).language == Language::kSpice;
    Written const netlist = spice ? spiceOf(options, circuit, findings) : netlistOf(options, circuit, map, findings);
    if (!options.output.empty()) saveFile(options.output, netlist.text);
    if (common.json)
        writeJson(std::cout, reportJson(options, netlist, findings));
    else
        writeReport(options, netlist, findings);
    return findings.outcome();
}

}  // namespace

void addExport(Grammar& grammar) {
    auto const options = std::make_shared<Options>();
    CLI::App& command = grammar.add("export", "writes a design as a netlist in YAML, JSON or SPICE",
                                    "  vrl export mzi.vrl                           # in our names, as YAML\n"
                                    "  vrl export mzi.vrl --map map.yml -o mzi.yml  # in the names of another tool\n"
                                    "  vrl export mzi.vrl -o mzi.json               # as JSON\n"
                                    "  vrl export mzi.vrl -o mzi.sp                 # as subcircuits of SPICE",
                                    [options](Common const& common) { return exportDesign(*options, common); });
    command.add_option("file", options->file, "the saved design")->required()->type_name("FILE");
    command.add_option("-o,--output", options->output, "the netlist to write; without it, or as -, to standard output")
        ->type_name("FILE");
    command.add_option("--format", options->format, "the language; without it that of the ending, or YAML")
        ->check(CLI::IsMember({"json", "yaml", "spice"}))
        ->type_name("json|yaml|spice");
    command.add_option("--map", options->map, "the file or installed map of an import; it is used the other way round")
        ->type_name("FILE");
    command.add_option("--models", options->models, "of SPICE: a file to include, with subcircuits for kinds")
        ->type_name("FILE");
}

}  // namespace vrltool
