#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "host/targets.h"
#include "vrllib/vrllib.h"

namespace vrltool {

using TargetWords = TargetInfo;

/// A key that an entry point entered into a factory.
struct BroughtKey {
    std::size_t target;  ///< the factory, by its place in kTargets
    std::string key;
    std::string file;       ///< in which the creator's code lies
    std::string takenFrom;  ///< the file of the creator that was there before; empty if the key is new
};

/// One library that was tried under one path, and what came of it.
struct Load {
    enum class Result { kLoaded, kUnmapped, kRefused, kNoEntry, kEnded };

    std::string path;  ///< as the library asked for it
    Result result = Result::kUnmapped;
    std::string reason;               ///< of what is not loaded: the system's text, or ours
    std::string file;                 ///< as the system mapped it; empty if it did not
    std::vector<std::size_t> serves;  ///< the targets whose entry points it has
    std::vector<BroughtKey> keys;     ///< by target and key
    double milliseconds = 0;          ///< of mapping it and of its entry points
};

/// How the loads are watched.
struct WatchOptions {
    /// Is told what is about to work: the path, and "" for mapping it, otherwise the function that is called.
    std::function<void(std::string const& path, std::string const& function)> observer;
    /// Paths that are not to be tried, since they ended a program before; with the words for that.
    std::map<std::string, std::string> skipped;
    /// Whether an entry point that throws is told on standard error, and the other libraries are loaded all the same.
    bool enduresThrows = false;
};

/// Begins to watch the loads of the library; called once, ahead of its start.
void watchLoads(WatchOptions options = {});

/// Whether the loads are watched already.
bool watchesLoads();

/// What was tried so far, in order.
std::vector<Load> const& watchedLoads();

/// The path and the function of the library that is at work, or was at last: "PATH: initLibraryBB".
std::string lastWork();

/// A configured library that did not load, and why, in the system's words.
struct FailedLibrary {
    std::string path;
    std::string reason;
};

/// The libraries that the configuration names and that failed, in the order of trying. Of one that was tried in several
/// folders, each try counts if none worked.
std::vector<FailedLibrary> failedLibraries();

/// The file in which the code of a creator lies, which is the second of an entry of a factory. Empty if the system does
/// not know.
std::string pluginOf(void const* creator);

/// The short name of a plug-in: "foundrySampleFab" of ".../lib_wn_foundrySampleFab.so.5.1.3".
std::string pluginName(std::string const& file);

/// Where the library searches for a configuration file, in order.
std::vector<std::string> configFilePlaces();

}  // namespace vrltool
