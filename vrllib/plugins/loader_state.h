#pragma once

#include <cstddef>
#include <list>
#include <set>
#include <string>
#include <utility>

#include "vrllib/plugins/load_report.h"
#include "vrllib/plugins/registered_keys.h"

// The process-wide state of the loader. Private. It is made on first use and never destroyed, since other static
// objects may still use the library while the process ends. Nothing is locked.

namespace Vorlane_v1_0::detail {

inline constexpr std::size_t kListArray = 2048;
inline constexpr std::size_t kFileArray = 260;

struct LoaderState {
    unsigned requiredApiVersion = 0;  ///< 0 turns the version gate off
    char dllTag[4] = "wn";
    std::list<void*> loadedHandles;  ///< one for each entry point that was called; a list, which may grow in a walk
    std::set<std::string> loadedDlls;
    std::set<std::string> failedDlls;

    LoadReport report;
    LoadObserver* observer = nullptr;
    std::size_t line = LoadEvent::kNoLine;  ///< of the report, that asks for libraries now
    std::set<std::string> triedPaths;
    RegisteredKeys registeredKeys;
    unsigned* loadsLeft = nullptr;  ///< that the present reading of the configuration may ask for; null: no limit
};

LoaderState& loaderState();

/// Counts one load, or one scan of a folder. False if the configuration that is being read has asked for too many.
bool takeLoad();

/// While it lives, no more than so many loads and scans are done.
class LoadAllowanceScope {
public:
    explicit LoadAllowanceScope(unsigned loads)
        : left(loads + 1), previous(std::exchange(loaderState().loadsLeft, &left)) {}
    LoadAllowanceScope(LoadAllowanceScope const&) = delete;
    LoadAllowanceScope& operator=(LoadAllowanceScope const&) = delete;
    ~LoadAllowanceScope() { loaderState().loadsLeft = previous; }

    /// Whether one was asked for that was not done.
    bool isSpent() const { return left == 0; }

private:
    unsigned left;  // 1 once all are done, 0 once one more was asked for
    unsigned* previous;
};

/// While it lives, loads count as asked for by a line of the configuration, or by none.
class LoadLineScope {
public:
    LoadLineScope() : previous(std::exchange(loaderState().line, LoadEvent::kNoLine)) {}
    explicit LoadLineScope(LoadLine line);
    LoadLineScope(LoadLineScope const&) = delete;
    LoadLineScope& operator=(LoadLineScope const&) = delete;
    ~LoadLineScope() { loaderState().line = previous; }

private:
    std::size_t previous;
};

}  // namespace Vorlane_v1_0::detail
