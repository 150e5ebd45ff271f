#pragma once

#include <cstddef>
#include <exception>
#include <string>
#include <vector>

#include "vrllib/base/export.h"

/// @file
/// The load report: what became of each library that was to be loaded.
///
/// A load is one library for one of the seven types that plug-ins extend (its target), so a line of the configuration
/// is at least seven loads. Each load ends in one event. The events of the whole process are kept; an observer receives
/// each one as it comes, and is asked before the code of a library runs.
/// Threads: one thread at a time; nothing is locked.

namespace Vorlane_v1_0 {

/// The types that plug-ins extend, in the order in which one library is loaded for all of them.
enum class LoadTarget { kAttribute, kFoundry, kBlock, kNetlist, kComponentView, kBlockView, kNetlistView, kOther };

/// How a load ended.
enum class LoadOutcome {
    kLoaded,           ///< the entry point was called
    kNotMapped,        ///< the system could not map the file, or found it damaged
    kNotARegularFile,  ///< a folder, a pipe or a device
    kVersionRefused,   ///< no getAPIversion, or one below the version that plug-ins need
    kNoEntryPoint,     ///< the library does not extend this type, which is ordinary
    kEntryThrew,       ///< code of the library threw
    kDeclined          ///< the observer declined it
};

/// A line of a configuration file that asks for libraries.
struct LoadLine {
    std::string file;     ///< as it was opened
    unsigned number = 0;  ///< of the line in its file, from 1
    std::string key;      ///< "sodllfile", "f" for a file, "e" for a variable, "d" for a folder
    std::string value;
};

/// A key that a library registered in a factory.
struct LoadedKey {
    LoadTarget target = LoadTarget::kOther;  ///< the factory, which may be another one than that of the load
    std::string key;
    std::string file;       ///< the file that holds the code of its class; empty if the system does not know
    std::string takenFrom;  ///< the file of the class that had the key before; empty for a new key
};

/// What one load did.
struct LoadEvent {
    static constexpr std::size_t kNoLine = static_cast<std::size_t>(-1);

    std::size_t line = kNoLine;  ///< its place in LoadReport::lines; kNoLine if a host or a plug-in asked for it
    std::string configFile;      ///< the file and the number of that line; empty and 0 without one
    unsigned configLine = 0;
    std::string path;  ///< as it was asked of the system
    std::string file;  ///< as the system mapped it; empty if it did not
    LoadTarget target = LoadTarget::kOther;
    LoadOutcome outcome = LoadOutcome::kNotMapped;
    std::string text;            ///< the system's reason, or what was thrown; empty if there is none
    std::exception_ptr thrown;   ///< what was thrown; null if nothing was
    unsigned neededVersion = 0;  ///< as needsLibaryVersion forms it; 0 if none was needed
    bool hasVersion = false;     ///< whether the library has getAPIversion; known only if a version was needed
    unsigned foundVersion = 0;
    std::vector<LoadedKey> keys;  ///< by target and key
    double seconds = 0;           ///< for mapping it and for its own code
};

/// The loads of this process and the lines that asked for them, in order. A load that another one caused comes first.
struct LoadReport {
    std::vector<LoadLine> lines;
    std::vector<LoadEvent> events;
};

/// Receives the events of the loader. What it does not override does nothing. Its operations must not throw.
class VRL_API LoadObserver {
public:
    LoadObserver() = default;
    LoadObserver(LoadObserver const&) = delete;
    LoadObserver& operator=(LoadObserver const&) = delete;
    virtual ~LoadObserver();

    /// Whether a library may be loaded; otherwise the load ends as kDeclined. Asked once for each target.
    virtual bool mayLoad(std::string const& path);

    /**@{*/
    /// Code of a library is about to run, and has run: `function` is its name, and empty while the file is mapped.
    /// An exception that leaves the code leaves out the second call. These calls may nest.
    virtual void beforeCall(std::string const& path, std::string const& function);
    virtual void afterCall(std::string const& path, std::string const& function);
    /**@}*/

    /// A load has ended.
    virtual void onLoad(LoadEvent const& event);

    /// Whether what an entry point threw ends here. Otherwise it passes through to the caller of the load.
    virtual bool absorbs(LoadEvent const& event);
};

}  // namespace Vorlane_v1_0

/// Sets the observer of all loads from now on, before start-up as well; null for none. It is not owned, and has to live
/// until it is replaced. Returns the previous one.
VRL_API Vorlane_v1_0::LoadObserver* vrlSetLoadObserver(Vorlane_v1_0::LoadObserver* observer);

/// The loads so far. The reference is valid for the life of the process, its content until the next load.
VRL_API Vorlane_v1_0::LoadReport const& vrlLoadReport();

/// The version that plug-ins need, as needsLibaryVersion forms it; 0 if any will do.
VRL_API unsigned int vrlNeededPluginVersion();
