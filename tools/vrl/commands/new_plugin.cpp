#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

#include "cli/grammar.h"
#include "commands/commands.h"
#include "starter/block_table.h"
#include "starter/starter.h"
#include "starter/table_sources.h"
#include "text/json.h"
#include "text/table.h"

namespace vrltool {

using namespace starter;

namespace {

struct Options {
    std::string name;
    std::string folder;
    std::string table;
};

/// The files of a project: of the table, or an example. What does not fit in the table is printed.
std::vector<StarterFile> filesFor(Options const& options) {
    if (options.table.empty()) return starterFiles();
    values::Findings findings;
    BlockTable const table = readTable(options.table, findings);
    findings.write(std::cerr);
    if (findings.errors() > 0)
        throw Failure(options.table, "no plug-in is made of a table with " + counted(findings.errors(), "error"),
                      "mend the table; docs/plugin-guide.md describes it");
    return tableSources(table);
}

/// A path as a shell reads it back.
std::string quoted(std::string const& path) {
    bool const plain =
        path.find_first_not_of("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_./=,:+@%-") ==
        std::string::npos;
    if (plain) return path;
    std::string text = "'";
    for (char const c : path) text += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return text + "'";
}

constexpr char kBuild[] = "cmake --workflow --preset default";

Outcome newPlugin(Options const& options, Common const& common) {
    auto const written = startPlugin(options.name, options.folder, filesFor(options));
    if (common.json) {
        Json json = jsonHead("new-plugin", 1);
        json.update(Json{{"name", options.name}, {"folder", options.folder}, {"files", written}, {"build", kBuild}});
        writeJson(std::cout, json);
        return Outcome::kFine;
    }
    std::cout << "wrote into " << printable(options.folder) << ":\n";
    for (std::string const& file : written) std::cout << "  " << file << '\n';
    std::cout << "\nBuild it and run its tests:\n\n  cd " << printable(quoted(options.folder)) << " && " << kBuild
              << '\n';
    return Outcome::kFine;
}

}  // namespace

void addNewPlugin(Grammar& grammar) {
    auto const options = std::make_shared<Options>();
    CLI::App& command = grammar.add(
        "new-plugin", "starts a plug-in project that builds with one command",
        "  vrl new-plugin myFab my-fab                     # a foundry, a block, a view and a test in my-fab\n"
        "  vrl new-plugin myFab my-fab --from BLOCKS.yml   # the foundry and the blocks of a table\n"
        "'vrl describe FOUNDRY --table' writes such a table.",
        [options](Common const& common) { return newPlugin(*options, common); });
    command.add_option("name", options->name, "letters, digits and underscores, a letter first")
        ->required()
        ->type_name("NAME");
    command.add_option("folder", options->folder, "a new or an empty folder")->required()->type_name("DIR");
    command.add_option("--from", options->table, "a table of a foundry and its blocks, in YAML or JSON")
        ->type_name("FILE");
}

}  // namespace vrltool
