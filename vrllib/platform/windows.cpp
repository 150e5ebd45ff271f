#include "vrllib/platform/platform.h"

#include <algorithm>
#include <cstdlib>

#include <direct.h>
#include <io.h>
#include <windows.h>

#include "vrllib/platform/wildcard.h"

namespace Vorlane_v1_0::platform {

char const kSeparator = '\\';
char const* const kLibraryFolderKey = "sodlldir_win";
char const* const kLibraryPostfixKey = "sodllpostfix_win";

namespace {

/// Folded letters, since names of files differ by more than their case here.
std::string folded(std::string text) {
    ::CharUpperBuffA(text.data(), static_cast<DWORD>(text.size()));
    return text;
}

}  // namespace

std::vector<Match> listMatches(std::string const& pattern) {
    std::vector<Match> matches;
    std::string const wanted = folded(splitPattern(pattern, "\\/:").pattern);
    WIN32_FIND_DATAA entry;
    HANDLE const search = ::FindFirstFileA(pattern.c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE) return matches;
    do {
        // The system also matches the short names and longer endings, so each result is compared with the pattern
        // again.
        if (matchesWildcard(wanted, folded(entry.cFileName)))
            matches.push_back({entry.cFileName, (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0});
    } while (::FindNextFileA(search, &entry));
    ::FindClose(search);
    std::sort(matches.begin(), matches.end(), [](Match const& a, Match const& b) { return a.name < b.name; });
    return matches;
}

bool pathExists(std::string const& path) { return ::_access(path.c_str(), 0) == 0; }

void makeFolder(std::string const& path) { static_cast<void>(::_mkdir(path.c_str())); }

std::optional<std::string> environment(char const* name) {
    char const* const value = name ? std::getenv(name) : nullptr;
    return value ? std::optional<std::string>(value) : std::nullopt;
}

std::FILE* openForReading(char const* path) { return std::fopen(path, "rt"); }

std::vector<std::string> configFilePlaces() {
    return {"c:\\vorlane\\VRLConfig.ini", "d:\\vorlane\\VRLConfig.ini", "h:\\vorlane\\VRLConfig.ini",
            "u:\\vorlane\\VRLConfig.ini"};
}

std::string defaultConfigFile() { return "c:\\temp\\VRLConfig.ini"; }

void makeConfigFolders() {
    makeFolder("c:\\vorlane");
    makeFolder("c:\\temp");
}

std::FILE* openDefaultConfigFile() { return std::fopen(defaultConfigFile().c_str(), "wt"); }

}  // namespace Vorlane_v1_0::platform
