#include "vrllib/plugins/load_steps.h"

#include <ostream>

#include "vrllib/core/fixed_text.h"
#include "vrllib/core/messages.h"
#include "vrllib/platform/platform.h"
#include "vrllib/plugins/loader.h"
#include "vrllib/plugins/loader_state.h"

namespace Vorlane_v1_0::detail {

namespace {

/// What a message about one load says of it.
struct Load {
    std::string file;
    std::string label;

    std::ostream& writeFailure() const { return vrlCout() << "Can't load '" << file << "' as " << label << " dll"; }
};

void reportUnmapped(Load const& load, platform::SystemError const& error) {
    if (error.code != 0)
        load.writeFailure() << " (" << error.text << ")\n";
    else
        vrlCout() << "Loading of '" << load.file << "' as " << load.label << " failed.\n";
}

/// Whether a plug-in just does not serve the type, which is nothing to report.
bool isUsualCase(platform::SystemError const& error) {
    return error.missingSymbol || error.text == "The specified procedure could not be found.\r\n" ||
           error.text == "Procedure not found\n";
}

void reportMissingEntry(Load const& load, platform::SystemError const& error) {
    if (error.code == 0)
        load.writeFailure() << ".\n";
    else if (!isUsualCase(error))
        load.writeFailure() << " (" << error.text << ")\n";
}

/// Maps the file and finds its entry point; reports why that fails.
void* findEntry(Load const& load, char const* entry, bool verbose, void*& module) {
    platform::SystemError error;
    module = platform::calls().loadLibrary(load.file.c_str(), error);
    if (!module) {
        if (verbose) reportUnmapped(load, error);
        return nullptr;
    }
    if (!checkLibraryVersion(module)) {
        vrlCout() << "Old version: " << load.file << " : not loaded.\n";
        return nullptr;
    }
    void* const found = platform::calls().findSymbol(module, entry, error);
    if (!found) reportMissingEntry(load, error);
    return found;
}

/// A pattern that would leave no room for its terminator. Longer ones pass this test and are cut.
bool endsAtTheEdge(std::string const& pattern) {
    return pattern.size() == kFileArray - 2 || pattern.size() == kFileArray - 1;
}

/// Calls a function with each match that is a file. False if nothing matched, not even a folder.
template <class Use>
bool forEachFile(std::string const& pattern, Use const& use) {
    auto const matches = platform::listMatches(pattern);
    for (auto const& match : matches)
        if (!match.isFolder) use(match.name);
    return !matches.empty();
}

}  // namespace

bool loadModule(char const* file, char const* entry, EntryCall call, void* factory, char const* label, bool verbose) {
    Load const load{file ? file : "", label ? label : ""};
    void* module = nullptr;
    void* const entryPoint = findEntry(load, entry ? entry : "", verbose, module);
    if (!entryPoint) {
        InsertUnsuccessfullyLoadedDll(load.file);
        return false;
    }
    call(entryPoint, factory);
    soload_addSo(module);
    InsertSuccessfullyLoadedDll(load.file);
    return true;
}

// A pattern that finds nothing or ends at the edge ends the whole list: what stands behind it is not tried, and what
// was loaded before it is not told.
bool loadList(char const* list, bool verbose, FileLoad load) {
    std::string rest = fitted(list, kListArray);
    bool loaded = false;
    do {
        std::size_t const end = rest.find(';');
        std::string element = rest.substr(0, end);
        rest = end == std::string::npos ? std::string() : rest.substr(end + 1);
        replaceTag(element);
        if (element.find('*') == std::string::npos) {
            loaded = load(element.c_str(), verbose) || loaded;
            continue;
        }
        if (endsAtTheEdge(element)) return false;
        auto const loadMatch = [&](std::string const& name) { loaded = load(name.c_str(), verbose) || loaded; };
        if (!forEachFile(fitted(element, kFileArray), loadMatch)) return false;
    } while (!rest.empty());
    return loaded;
}

bool loadFolder(char const* dir, char const* postfix, bool verbose, FileLoad load) {
    std::string const folder = dir ? dir : "";
    if (endsAtTheEdge(folder)) return false;
    std::string const separator(1, platform::kSeparator);
    std::string const tail = fitted(separator + "lib_" + soloader_getDllTag() + (postfix ? postfix : ""), kFileArray);
    bool loaded = false;
    forEachFile(fitted(folder + tail, kFileArray), [&](std::string const& name) {
        loaded = load(fitted(folder + separator + name, kFileArray).c_str(), verbose) || loaded;
    });
    return loaded;
}

bool loadVariable(char const* name, bool verbose, FileLoad load) {
    auto const list = platform::environment(name);
    if (list) return loadList(list->c_str(), verbose, load);
    if (verbose) vrlCout() << "No env. setting for '" << (name ? name : "") << "'\n";
    return false;
}

void replaceTag(std::string& text) {
    auto const marker = text.find("lib_wX");
    if (marker != std::string::npos) text.replace(marker + 4, 2, soloader_getDllTag());
}

}  // namespace Vorlane_v1_0::detail
