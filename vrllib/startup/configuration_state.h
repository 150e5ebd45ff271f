#pragma once

#include <set>
#include <string>
#include <utility>
#include <vector>

// The process-wide state of start-up and configuration. Private. It is made on first use and never destroyed, since
// other static objects may still use the library while the process ends. Nothing is locked.

namespace Vorlane_v1_0::detail {

inline constexpr std::size_t kPathArray = 1024;
inline constexpr std::size_t kLineArray = 1024;
inline constexpr std::size_t kUserArray = 256;

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

ConfigurationState& configuration();

}  // namespace Vorlane_v1_0::detail
