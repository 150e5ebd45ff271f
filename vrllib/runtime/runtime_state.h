#pragma once

#include <list>
#include <set>
#include <string>
#include <utility>
#include <vector>

// The process-wide state of the loader and of the configuration. Private. It is made on first use and never destroyed,
// since other static objects may still use the library while the process ends. Nothing is locked.

namespace Vorlane_v1_0::detail {

/// A text that fits a fixed array of the given size: what is too long is cut, and null counts as empty.
std::string fitted(char const* text, std::size_t arraySize);

/// As above, from a text that may hold anything.
std::string fitted(std::string const& text, std::size_t arraySize);

/// Copies a text into a fixed array; what is too long is cut. Yields the array.
template <std::size_t N>
char const* store(char (&target)[N], std::string const& text) {
    target[fitted(text.c_str(), N).copy(target, N - 1)] = '\0';
    return target;
}

inline constexpr std::size_t kPathArray = 1024;
inline constexpr std::size_t kLineArray = 1024;
inline constexpr std::size_t kListArray = 2048;
inline constexpr std::size_t kFileArray = 260;
inline constexpr std::size_t kUserArray = 256;

struct LoaderState {
    unsigned requiredApiVersion = 0;  ///< 0 turns the version gate off
    char dllTag[4] = "wn";
    std::list<void*>
        loadedHandles;  ///< one for each entry point that was called; a list, so that it may grow in a walk
    std::set<std::string> loadedDlls;
    std::set<std::string> failedDlls;
};

struct ConfigurationState {
    char configFileOverride[kPathArray] = "";
    char configFileFound[kPathArray] = "";
    char const* configFileInUse = nullptr;  ///< one of the two arrays, for good
    std::string versionText = "5.1.3";
    std::string userName = "unknown";
    std::vector<std::string> sodllDirs;  ///< prefixes of file names, up to and with the marker of the tag
    std::string sodllPostfix;
    std::vector<std::string> standardSoList;
    std::vector<std::pair<std::string, std::string>> aliasList;  ///< "${name}" and its value
    bool configReadWarning = true;                               ///< the warning for an unreadable file is still due
    std::string configPathCache;
    std::set<std::string> createdFolders;  ///< those whose creation was tried
    bool vrldllLoaded = false;
    unsigned openStreams = 0;  ///< configuration files that are open, those of all readers together
};

struct RuntimeState {
    LoaderState loader;
    ConfigurationState configuration;
};

RuntimeState& state();

inline LoaderState& loaderState() { return state().loader; }
inline ConfigurationState& configuration() { return state().configuration; }

}  // namespace Vorlane_v1_0::detail
