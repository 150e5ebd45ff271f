#include "vrllib/platform/platform.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>

#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <link.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include "vrllib/platform/wildcard.h"

namespace Vorlane_v1_0::platform {

char const kSeparator = '/';
char const* const kLibraryFolderKey = "sodlldir_linux";
char const* const kLibraryPostfixKey = "sodllpostfix_linux";

namespace {

constexpr unsigned kLoadFailed = 1;       // the system has words for its failures, but no numbers
constexpr unsigned kSymbolMissing = 127;  // the number that Windows gives to this case

/// An open file, closed with this object.
class File {
public:
    explicit File(int number) : descriptor(number) {}
    File(File const&) = delete;
    File& operator=(File const&) = delete;
    ~File() {
        if (descriptor >= 0) ::close(descriptor);
    }

    explicit operator bool() const { return descriptor >= 0; }
    int number() const { return descriptor; }

    /// Hands the file over to a stream; null if that fails.
    std::FILE* toStream(char const* mode) {
        std::FILE* const stream = ::fdopen(descriptor, mode);
        if (stream) descriptor = -1;
        return stream;
    }

private:
    int descriptor;
};

template <class T>
bool readAt(File const& file, off_t offset, T& target) {
    return ::pread(file.number(), &target, sizeof target, offset) == static_cast<ssize_t>(sizeof target);
}

/// Whether a library lacks a part that would be mapped. The system maps it all the same, and the first touch beyond the
/// end of the file would end the program.
bool isTruncated(File const& file, off_t size) {
    ElfW(Ehdr) header;
    if (!readAt(file, 0, header) || std::memcmp(header.e_ident, ELFMAG, SELFMAG) != 0) return false;
    if (header.e_phentsize != sizeof(ElfW(Phdr))) return false;
    auto const fileSize = static_cast<std::uint64_t>(size);
    for (unsigned i = 0; i < header.e_phnum; ++i) {
        ElfW(Phdr) segment;
        if (!readAt(file, static_cast<off_t>(header.e_phoff + i * sizeof segment), segment)) return true;
        if (segment.p_type != PT_LOAD) continue;
        if (segment.p_offset > fileSize || segment.p_filesz > fileSize - segment.p_offset) return true;
    }
    return false;
}

/// Where the system's loader looks for a bare name, its cache of system libraries left out.
std::vector<std::string> searchFolders() {
    void* const program = ::dlopen(nullptr, RTLD_LAZY);
    Dl_serinfo size;
    if (!program || ::dlinfo(program, RTLD_DI_SERINFOSIZE, &size) != 0) return {};
    std::vector<char> buffer(size.dls_size);
    auto* const info = reinterpret_cast<Dl_serinfo*>(buffer.data());
    info->dls_size = size.dls_size;
    info->dls_cnt = size.dls_cnt;
    if (::dlinfo(program, RTLD_DI_SERINFO, info) != 0) return {};
    Dl_serpath const* const first = info->dls_serpath;
    std::vector<std::string> folders;
    for (unsigned i = 0; i < info->dls_cnt; ++i) folders.emplace_back((first + i)->dls_name);
    return folders;
}

/// The file that the system's loader will take; the name itself if it finds none.
std::string fileOf(char const* name) {
    if (std::strchr(name, '/')) return name;
    for (std::string const& folder : searchFolders()) {
        std::string path = folder + "/" + name;
        if (pathExists(path)) return path;
    }
    return name;
}

/// What is wrong with a file that the system's loader would wait for or fall over; empty if it may have a look itself.
std::string whyNotLoadable(char const* name) {
    std::string const found = fileOf(name);
    char const* const path = found.c_str();
    File const file(::open(path, O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    struct stat status;
    if (!file || ::fstat(file.number(), &status) != 0) return {};
    if (!S_ISREG(status.st_mode) && !S_ISDIR(status.st_mode)) return found + ": not a regular file";
    if (S_ISREG(status.st_mode) && isTruncated(file, status.st_size)) return found + ": file too short";
    return {};
}

/// Where the module that holds an address is mapped; null if none does.
void* baseOf(void const* address) {
    Dl_info info;
    return ::dladdr(address, &info) != 0 ? info.dli_fbase : nullptr;
}

bool liesIn(void* module, void const* symbol) {
    link_map* map = nullptr;
    if (::dlinfo(module, RTLD_DI_LINKMAP, &map) != 0 || !map) return false;
    void* const base = baseOf(symbol);
    return base && base == baseOf(map->l_ld);
}

/// Whether a question would reach a person: both streams are a terminal and the program does not run in its background,
/// where reading would stop it.
bool somebodyWatches() {
    if (!::isatty(STDIN_FILENO) || !::isatty(STDERR_FILENO)) return false;
    pid_t const foreground = ::tcgetpgrp(STDIN_FILENO);
    return foreground < 0 || foreground == ::getpgrp();
}

/// Reads one line of the answer: Cancel for a line that starts with "c" and for the end of input.
Button askForButton() {
    std::fputs("[Enter] OK, [c] Cancel: ", stderr);
    int const first = std::getc(stdin);
    int next = first;
    while (next != '\n' && next != EOF) next = std::getc(stdin);
    if (next == EOF) std::clearerr(stdin);  // so that the next question can be answered
    return first == EOF || first == 'c' || first == 'C' ? Button::kCancel : Button::kOk;
}

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
bool isOurs(struct stat const& status) {
    return status.st_uid == ::geteuid() && (status.st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

/// Whether an open file is a regular one of this user that nobody else can write, which it then stays.
bool takeOver(File const& file) {
    struct stat status;
    if (::fstat(file.number(), &status) != 0 || !S_ISREG(status.st_mode) || !isOurs(status)) return false;
    return ::fchmod(file.number(), 0600) == 0;
}

}  // namespace

void* loadLibrary(char const* path, SystemError& error) {
    error = {};
    if (!path || !*path) return nullptr;  // an empty name would open the program itself
    if (std::string const reason = whyNotLoadable(path); !reason.empty()) {
        error = {kLoadFailed, reason, false};
        return nullptr;
    }
    void* const module = ::dlopen(path, RTLD_NOW | RTLD_LOCAL);
    if (module) return module;
    if (char const* const text = ::dlerror()) error = {kLoadFailed, text, false};
    return nullptr;
}

void* findSymbol(void* module, char const* name, SystemError& error) {
    error = {};
    void* const symbol = module && name ? ::dlsym(module, name) : nullptr;
    if (symbol && liesIn(module, symbol)) return symbol;
    ::dlerror();  // forgotten, so that it is not taken for the reason of a later failure
    error = {kSymbolMissing, std::string("undefined symbol: ") + (name ? name : ""), true};
    return nullptr;
}

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

Button showMessageBox(char const* text, char const* caption) {
    std::string shown = std::string(caption ? caption : "") + "\n" + (text ? text : "");
    if (shown.back() != '\n') shown += '\n';
    std::fwrite(shown.data(), 1, shown.size(), stderr);
    return somebodyWatches() ? askForButton() : Button::kOk;
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
    if (!folder || ::fstat(folder.number(), &status) != 0 || !isOurs(status)) return nullptr;
    File file(::openat(folder.number(), kConfigFileName,
                       O_WRONLY | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, 0600));
    if (!file || !takeOver(file) || ::ftruncate(file.number(), 0) != 0) return nullptr;
    return file.toStream("w");
}

}  // namespace Vorlane_v1_0::platform
