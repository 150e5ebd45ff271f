#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <typeinfo>
#include <vector>

#include "vrllib/vrllib.h"

namespace vrltool {

/// A library that was tried under one path for all targets: the events of the library's load report taken together.
struct Load {
    enum class Result { kLoaded, kUnmapped, kRefused, kNoEntry, kEnded };

    std::string path;  ///< as the library asked for it
    Result result = Result::kUnmapped;
    std::string reason;                ///< why it is not loaded; empty if it is
    std::string file;                  ///< as the system mapped it; empty if it did not
    std::vector<std::size_t> serves;   ///< the targets whose entry points it has, by their places in kTargets
    std::vector<vrl::LoadedKey> keys;  ///< by target and key
    double milliseconds = 0;           ///< for mapping it and for its own code
    std::size_t line = vrl::LoadEvent::kNoLine;
};

/// A line of the configuration that asks for libraries, and the loads that came of it.
struct ConfiguredLibrary {
    vrl::LoadLine line;
    std::vector<std::size_t> loads;  ///< the places of its loads

    /// Whether it was tried, and nothing of it was loaded.
    bool failed(std::vector<Load> const& all) const;
};

/// What was tried so far, in order.
std::vector<Load> loadsSoFar();

/// The lines of the configuration that ask for libraries, in order, with their loads.
std::vector<ConfiguredLibrary> configuredLibraries(std::vector<Load> const& loads);

/// Paths that are not tried (again), with the reasons: what threw, or ended a program before. Their loads are reported
/// as ended.
void skipPath(std::string const& path, std::string const& reason);
std::map<std::string, std::string> const& skippedPaths();

/// The version in the form of needsLibaryVersion as text: "2.1.11" for 20111.
std::string versionText(unsigned version);

/// The reason for a library that threw from a function.
std::string throwReason(vrl::LoadEvent const& event, std::string const& function);

/// A configured library that did not load, and why.
struct FailedLibrary {
    std::string path;
    std::string reason;
};

/// The libraries that the configuration names and that failed, in the order of trying. Of one that was tried in several
/// folders, each try counts if none worked.
std::vector<FailedLibrary> failedLibraries();

/// The file that holds the code of a type. Empty if the system does not know.
std::string fileOfType(std::type_info const& type);

/// The short name of a plug-in: "foundrySampleFab" of ".../lib_wn_foundrySampleFab.so.5.1.3".
std::string pluginName(std::string const& file);

}  // namespace vrltool
