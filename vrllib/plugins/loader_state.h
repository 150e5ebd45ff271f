#pragma once

#include <list>
#include <set>
#include <string>

// The process-wide state of the loader. Private. It is made on first use and never destroyed, since other static
// objects may still use the library while the process ends. Nothing is locked.

namespace Vorlane_v1_0::detail {

inline constexpr std::size_t kListArray = 2048;
inline constexpr std::size_t kFileArray = 260;

struct LoaderState {
    unsigned requiredApiVersion = 0;  ///< 0 turns the version gate off
    char dllTag[4] = "wn";
    std::list<void*>
        loadedHandles;  ///< one for each entry point that was called; a list, so that it may grow in a walk
    std::set<std::string> loadedDlls;
    std::set<std::string> failedDlls;
};

LoaderState& loaderState();

}  // namespace Vorlane_v1_0::detail
