#include "vrllib/platform/platform.h"

#include <algorithm>
#include <cstdlib>
#include <memory>

#include <dirent.h>
#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include "vrllib/platform/posix_file.h"
#include "vrllib/platform/wildcard.h"

namespace Vorlane_v1_0::platform {

char const kSeparator = '/';
char const* const kLibraryFolderKey = "sodlldir_linux";
char const* const kLibraryPostfixKey = "sodllpostfix_linux";

namespace {

/// The home of the effective user; empty if there is none.
std::string homeFolder() {
    if (auto const home = environment("HOME"); home && !home->empty()) return *home;
    passwd entry;
    passwd* found = nullptr;
    std::vector<char> texts(16384);
    if (::getpwuid_r(::geteuid(), &entry, texts.data(), texts.size(), &found) != 0 || !found) return {};
    return found->pw_dir ? found->pw_dir : "";
}

constexpr char kConfigFileName[] = "VRLConfig.ini";

std::string defaultConfigFolder() {
    std::string const home = homeFolder();
    return home.empty() ? home : home + "/.cache/vorlane";
}

/// Whether only the effective user can change a file or a folder.
bool isPrivate(struct stat const& status) {
    return status.st_uid == ::geteuid() && (status.st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

/// Whether an open file is a regular one of this user that nobody else can write, which it then stays.
bool takeOver(File const& file) {
    struct stat status;
    if (::fstat(file.number(), &status) != 0 || !S_ISREG(status.st_mode) || !isPrivate(status)) return false;
    return ::fchmod(file.number(), 0600) == 0;
}

}  // namespace

std::vector<Match> listMatches(std::string const& pattern) {
    PatternPath const path = splitPattern(pattern, "/");
    std::unique_ptr<DIR, int (*)(DIR*)> const folder(::opendir(path.folder.empty() ? "." : path.folder.c_str()),
                                                     &::closedir);
    std::vector<Match> matches;
    if (!folder) return matches;
    while (dirent const* const entry = ::readdir(folder.get())) {
        if (!matchesWildcard(path.pattern, entry->d_name)) continue;
        struct stat status;
        bool const known = ::fstatat(::dirfd(folder.get()), entry->d_name, &status, 0) == 0;
        matches.push_back({entry->d_name, known && S_ISDIR(status.st_mode)});
    }
    std::sort(matches.begin(), matches.end(), [](Match const& a, Match const& b) { return a.name < b.name; });
    return matches;
}

bool pathExists(std::string const& path) { return ::access(path.c_str(), F_OK) == 0; }

void makeFolder(std::string const& path) { static_cast<void>(::mkdir(path.c_str(), 0777)); }

std::optional<std::string> environment(char const* name) {
    if (!name) return std::nullopt;
#if defined(__linux__)
    char const* const value = ::secure_getenv(name);
#else
    char const* const value = std::getenv(name);
#endif
    return value ? std::optional<std::string>(value) : std::nullopt;
}

std::FILE* openForReading(char const* path) {
    File file(::open(path, O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    struct stat status;
    // Folders cannot be read, pipes and terminals wait for somebody, and devices may never end.
    if (!file || ::fstat(file.number(), &status) != 0 || !S_ISREG(status.st_mode)) return nullptr;
    return file.toStream("r");
}

std::vector<std::string> configFilePlaces() {
    std::vector<std::string> places;
    if (std::string const home = homeFolder(); !home.empty()) places.push_back(home + "/.config/vorlane/VRLConfig.ini");
    places.insert(places.end(),
                  {"/etc/vorlane/VRLConfig.ini", "/usr/local/etc/vorlane/VRLConfig.ini", "/opt/vorlane/VRLConfig.ini"});
    return places;
}

std::string defaultConfigFile() {
    std::string const folder = defaultConfigFolder();
    return folder.empty() ? folder : folder + "/" + kConfigFileName;
}

// Private folders, since the file in them decides which code gets loaded.
void makeConfigFolders() {
    std::string const home = homeFolder();
    if (home.empty()) return;
    for (char const* const folder : {"/.config", "/.config/vorlane", "/.cache", "/.cache/vorlane"})
        static_cast<void>(::mkdir((home + folder).c_str(), 0700));
}

// The file decides which code gets loaded: a folder that others can write, a link or a file of somebody else is
// refused, and nothing is changed before that is known. O_NONBLOCK keeps a named pipe in this place from stopping the
// program.
std::FILE* openDefaultConfigFile() {
    File const folder(::open(defaultConfigFolder().c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    struct stat status;
    if (!folder || ::fstat(folder.number(), &status) != 0 || !isPrivate(status)) return nullptr;
    File file(::openat(folder.number(), kConfigFileName,
                       O_WRONLY | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, 0600));
    if (!file || !takeOver(file) || ::ftruncate(file.number(), 0) != 0) return nullptr;
    return file.toStream("w");
}

}  // namespace Vorlane_v1_0::platform
