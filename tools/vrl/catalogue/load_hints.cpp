#include "catalogue/load_hints.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>
#include <vector>

#include "host/targets.h"
#include "text/near_names.h"

namespace vrltool::catalogue {

namespace {

namespace fs = std::filesystem;
using Result = Load::Result;

std::vector<std::string> namesIn(fs::path const& folder) {
    std::vector<std::string> names;
    std::error_code failed;
    for (fs::directory_iterator entry(folder, failed), end; !failed && entry != end; entry.increment(failed))
        names.push_back(entry->path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

/// The name up to ".so".
std::string stem(std::string const& name) { return name.substr(0, name.find(".so")); }

std::string hintOfAbsence(std::string const& path) {
    fs::path const file(path);
    if (path.empty()) return "name a library after the '='";
    if (path.find('/') == std::string::npos)
        return "no sodlldir_linux names a folder for it, so only the system's own folders were searched";
    std::error_code ignored;
    if (fs::is_symlink(file, ignored)) return "it is a link to a missing file";
    std::string const folder = file.parent_path().string();
    if (!fs::is_directory(folder, ignored)) return "there is no folder '" + folder + "': correct sodlldir_linux";
    auto const names = namesIn(folder);
    std::string const wanted = file.filename().string();
    for (std::string const& name : names)
        if (stem(name) == stem(wanted))
            return "'" + name + "' exists: correct sodllpostfix_linux, or the name of the file";
    std::vector<std::string> known;
    for (std::string const& name : names) known.push_back(pluginName(name));
    return didYouMean(pluginName(wanted), known);
}

/// What is before the first ":": the file that the message of the system is about.
std::string fileNamed(std::string const& text) { return text.substr(0, text.find(": ")); }

bool has(std::string const& text, char const* part) { return text.find(part) != std::string::npos; }

struct Hint {
    char const* words;  ///< of the system
    char const* text;
};

// In this order: the words of a later hint may occur in a message that an earlier one explains better.
constexpr Hint kHints[] = {
    {"Permission denied", "make it readable"},
    {"undefined symbol", "it was built against another version of a library, or lacks one: build it anew"},
    {"' not found", "it was built against newer libraries than are here: build it on this system"},
    {"wrong ELF class", "it was built for another kind of machine: build it for this one"},
    {"not a regular file", "give the path of a shared library"},
    {"Is a directory", "give the path of a shared library"},
    {"file too short", "the file is empty or was cut short: take a whole copy"},
    {"file damaged", "a part of the file was never written: take a whole copy"},
    {"invalid ELF header", "the file is no shared library: build it, or take a whole copy"},
    {"ELF", "the file is damaged or was built for another kind of machine: build it anew"},
};

std::string hintOfUnmapped(Load const& load) {
    std::error_code ignored;
    if (load.path.empty() || !fs::exists(load.path, ignored)) return hintOfAbsence(load.path);
    std::string const named = fileNamed(load.reason);
    if (has(load.reason, "cannot open shared object file") && named != load.path)
        return "it needs '" + named + "': install that, or name its folder in LD_LIBRARY_PATH";
    for (Hint const& hint : kHints)
        if (has(load.reason, hint.words)) return hint.text;
    return {};
}

/// An entry point that was compiled without C linkage: its name is in the file after "_Z" and its length.
std::string mangledEntry(std::string const& path) {
    std::ifstream file(path, std::ios::binary);
    std::string const bytes{std::istreambuf_iterator<char>(file), {}};
    for (TargetInfo const& target : kTargets) {
        std::string const entry = target.entry;
        if (has(bytes, ("_Z" + std::to_string(entry.size()) + entry).c_str())) return entry;
    }
    return {};
}

std::string hintOfNoEntry(std::string const& path) {
    if (std::string const entry = mangledEntry(path); !entry.empty())
        return entry + " has C++ linkage: declare it with VRL_PLUGIN_EXPORT";
    std::string names;
    for (TargetInfo const& target : kTargets) names += (names.empty() ? "" : ", ") + std::string(target.entry);
    return "export at least one of " + names;
}

}  // namespace

std::string hintOf(Load const& load) {
    switch (load.result) {
    case Result::kLoaded:
        return {};
    case Result::kUnmapped:
        return hintOfUnmapped(load);
    case Result::kRefused:
        return has(load.reason, "no getAPIversion") ? "have it export getAPIversion, and build it against that version"
                                                    : "build it anew against that version";
    case Result::kNoEntry:
        return hintOfNoEntry(load.file);
    case Result::kEnded:
        return "take it out of the configuration until it is mended; 'vrl validate' shows more";
    }
    return {};
}

}  // namespace vrltool::catalogue
