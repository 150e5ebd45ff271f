#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

#include "cli/grammar.h"
#include "commands/commands.h"
#include "host/config_text.h"
#include "system/replace_file.h"
#include "text/json.h"
#include "text/table.h"
#include "vrllib/vrllib.h"

namespace vrltool {

namespace {

struct Options {
    std::string action;
    std::vector<std::string> plugins;
};

/// The named file, or the first of those that the library searches for.
std::string pathOf(Common const& common) {
    if (!common.config.empty()) return common.config;
    return vrlConfigFilePlaces().front();
}

Outcome init(Options const& options, Common const& common) {
    std::string const path = pathOf(common), text = configText(options.plugins);
    std::error_code error;
    if (std::filesystem::exists(std::filesystem::symlink_status(path, error)))
        throw Failure(path, "exists already", "edit it, or name another file with --config");
    auto const folder = std::filesystem::path(path).parent_path();
    if (!folder.empty()) std::filesystem::create_directories(folder, error);
    replaceFile(path, text);
    if (common.json) {
        Json json = jsonHead("config", 1);
        json["file"] = path;
        json["plugins"] = options.plugins;
        writeJson(std::cout, json);
    } else {
        std::cout << printable(path) << ": written, with " << counted(options.plugins.size(), "plug-in") << '\n';
        if (options.plugins.empty()) std::cout << "  add the folder of your plug-ins and a line for each of them\n";
    }
    return Outcome::kFine;
}

}  // namespace

void addConfig(Grammar& grammar) {
    auto const options = std::make_shared<Options>();
    CLI::App& command =
        grammar.add("config", "writes a configuration, which names the plug-ins to load",
                    "  vrl config init lib_wn_myFab.so.5.1.3              # where the library looks for it first\n"
                    "  vrl config init --config my.ini plugins/*.so.5.1.3 # into another file\n"
                    "  export VRL_CONFIG=my.ini                           # which all commands then use\n"
                    "An existing file is never replaced.",
                    [options](Common const& common) { return init(*options, common); });
    command.add_option("action", options->action, "what is to be done")
        ->required()
        ->check(CLI::IsMember({"init"}))
        ->type_name("");
    command.add_option("plugins", options->plugins, "the plug-ins, named lib_wn_NAME and an ending")->type_name("FILE");
}

}  // namespace vrltool
