#include "vrllib/startup/configuration.h"

#include <algorithm>
#include <utility>

#include "vrllib/core/fixed_text.h"
#include "vrllib/core/messages.h"
#include "vrllib/platform/platform.h"
#include "vrllib/plugins/load_steps.h"
#include "vrllib/plugins/load_targets.h"
#include "vrllib/plugins/loader.h"
#include "vrllib/plugins/loader_state.h"
#include "vrllib/startup/config_reader.h"
#include "vrllib/startup/configuration_state.h"
#include "vrllib/startup/macros.h"
#include "vrllib/startup/startup.h"

namespace Vorlane_v1_0::detail {

namespace {

std::string orEmpty(char const* text) { return text ? text : ""; }

void makeFolderOnce(std::string const& path) {
    if (configuration().createdFolders.insert(path).second) platform::makeFolder(path);
}

/// Loads the file whose name is formed of a prefix, a name and the postfix.
void loadFormed(std::string const& prefix, std::string const& name, bool verbose) {
    std::string path = prefix + name + configuration().sodllPostfix;
    expandMacros(path, std::max(kListArray, path.size() + 1));  // what does not fit is cut after the expansion
    path = fitted(path, kListArray);
    replaceTag(path);
    loadLibsForAll(path.c_str(), verbose);
}

}  // namespace

}  // namespace Vorlane_v1_0::detail

using namespace Vorlane_v1_0::detail;

std::vector<std::string> vrlInit_getList(std::string const& key) {
    Reading reading;
    return readValues(key, reading);
}

std::string vrlcfgPath() {
    Reading reading;
    return configFolder(reading);
}

std::string vrlcfgFolder(char const* name, bool appendSeparator) {
    std::string const base = vrlcfgPath();
    std::string levels = orEmpty(name);
    if (levels.empty()) return base;
    char const separator = Vorlane_v1_0::platform::kSeparator;
    for (auto slash = levels.find('/'); slash != std::string::npos; slash = levels.find('/', slash + 1)) {
        makeFolderOnce(base + separator + levels.substr(0, slash));
        levels[slash] = separator;
    }
    std::string folder = base + separator + levels;
    makeFolderOnce(folder);
    if (appendSeparator) folder += separator;
    return folder;
}

std::string vrlcfgFolder(std::string const& name, bool appendSeparator) {
    return vrlcfgFolder(name.c_str(), appendSeparator);
}

std::string vrlcfgFolderFile(char const* file, char const* folder) {
    return vrlcfgFolder(folder, true) + orEmpty(file);
}

std::string vrlcfgFolderFile(std::string const& file, std::string const& folder) {
    return vrlcfgFolder(folder, true) + file;
}

void vrlInit_config_alias(char const* name, char const* value) {
    configuration().aliasList.emplace_back("${" + orEmpty(name) + "}", orEmpty(value));
}

void vrlInit_loadSo(char const* name, bool verbose) {
    std::string const library = orEmpty(name);
    if (library.empty()) return;
    auto& settings = configuration();
    // The main plug-in is tried once in a process, whether or not it was found.
    if (library == "vrldll" && std::exchange(settings.vrldllLoaded, true)) return;
    auto const folders = settings.sodllDirs;  // a copy, since a plug-in may start the library again
    for (std::string const& folder : folders) loadFormed(folder, library, verbose);
    if (folders.empty()) loadFormed("", library, true);  // a failure is reported here even if `verbose` is false
}

void vrlInit_PDK(char const* name, bool verbose) { vrlInit_loadSo(name, verbose); }

void vrlInit_loadFoundry(char const* list, bool verbose) { loadLibsForAll(list, verbose); }

void vrlInit_StandardSo(std::string const& name) { configuration().standardSoList.push_back(name); }

// The path is asked for first: the search may write warnings of its own, and the report is to be one piece.
void vrlCoutShowAPIinfo() {
    std::string const file = vrlConfigFile();
    std::string postfix = configuration().sodllPostfix;
    expandMacros(postfix, kLineArray);
    std::ostream& out = vrlCout();
    out << "Using config file: " << file << "\nUsing dll/so: lib_" << soloader_getDllTag() << "_*" << postfix
        << "\nLoaded dll/so's:\n";
    GetSuccessfullyLoadedDlls(out);
    out << "\nLoading failed for configured dll/so's:\n";
    GetUnsuccessfullyLoadedDlls(out) << "\n";
}
