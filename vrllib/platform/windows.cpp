#include "vrllib/platform/platform.h"

#include <algorithm>
#include <cstdlib>
#include <memory>

#include <direct.h>
#include <io.h>
#include <windows.h>

#include "vrllib/platform/wildcard.h"

namespace Vorlane_v1_0::platform {

char const kSeparator = '\\';
char const* const kLibraryFolderKey = "sodlldir_win";
char const* const kLibraryPostfixKey = "sodllpostfix_win";

namespace {

/// The system's words for a failure, in its default language.
std::string textOf(DWORD code) {
    char* buffer = nullptr;
    DWORD const length = ::FormatMessageA(
        FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, code,
        MAKELANGID(LANG_NEUTRAL, SUBLANG_DEFAULT), reinterpret_cast<char*>(&buffer), 0, nullptr);
    std::string const text(buffer ? buffer : "", buffer ? length : 0);
    ::LocalFree(buffer);
    return text;
}

SystemError lastError() {
    DWORD const code = ::GetLastError();
    if (code == 0) return {};
    return {static_cast<unsigned>(code), textOf(code), code == ERROR_PROC_NOT_FOUND};
}

/// A folder that the system tells by a call of its own, with a ";" behind it.
template <class Call>
std::string folderFrom(Call const& call) {
    char folder[MAX_PATH];
    unsigned const length = call(folder, MAX_PATH);
    return length > 0 && length < MAX_PATH ? std::string(folder, length) + ";" : std::string();
}

/// The folders in which the system looks for a bare name, but for the working directory.
std::string searchFolders() {
    std::string program = folderFrom([](char* text, DWORD size) { return ::GetModuleFileNameA(nullptr, text, size); });
    program.resize(program.find_last_of('\\') + 1);
    if (!program.empty()) program += ';';
    return program + folderFrom([](char* text, UINT size) { return ::GetSystemDirectoryA(text, size); }) +
           folderFrom([](char* text, UINT size) { return ::GetWindowsDirectoryA(text, size); }) +
           environment("PATH").value_or("");
}

/// Maps a library by its bare name: one that is mapped already, or the first of the search.
HMODULE loadBareName(char const* name) {
    HMODULE module = nullptr;
    if (::GetModuleHandleExA(0, name, &module)) return module;
    std::string const folders = searchFolders();
    char path[MAX_PATH];
    DWORD const length = ::SearchPathA(folders.c_str(), name, ".dll", MAX_PATH, path, nullptr);
    if (length > 0 && length < MAX_PATH) return ::LoadLibraryA(path);
    ::SetLastError(ERROR_MOD_NOT_FOUND);
    return nullptr;
}

/// Folded letters, since names of files differ by more than their case here.
std::string folded(std::string text) {
    ::CharUpperBuffA(text.data(), static_cast<DWORD>(text.size()));
    return text;
}

}  // namespace

void* loadLibrary(char const* path, SystemError& error) {
    error = {};
    if (!path || !*path) return nullptr;
    DWORD previousMode = 0;
    ::SetThreadErrorMode(SEM_FAILCRITICALERRORS, &previousMode);  // a broken file must not open a box of the system's
    bool const isBareName = std::string(path).find_first_of("\\/:") == std::string::npos;
    HMODULE const module = isBareName ? loadBareName(path) : ::LoadLibraryA(path);
    if (!module) error = lastError();
    ::SetThreadErrorMode(previousMode, nullptr);
    return reinterpret_cast<void*>(module);
}

void* findSymbol(void* module, char const* name, SystemError& error) {
    error = {};
    if (!module || !name) {
        error = {ERROR_PROC_NOT_FOUND, textOf(ERROR_PROC_NOT_FOUND), true};
        return nullptr;
    }
    FARPROC const symbol = ::GetProcAddress(static_cast<HMODULE>(module), name);
    if (!symbol) error = lastError();
    return reinterpret_cast<void*>(symbol);
}

std::vector<Match> listMatches(std::string const& pattern) {
    std::vector<Match> matches;
    std::string const wanted = folded(splitPattern(pattern, "\\/:").pattern);
    WIN32_FIND_DATAA entry;
    HANDLE const search = ::FindFirstFileA(pattern.c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE) return matches;
    do {
        // The system also matches the short names and longer endings, so each result is held against the pattern again.
        if (matchesWildcard(wanted, folded(entry.cFileName)))
            matches.push_back({entry.cFileName, (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0});
    } while (::FindNextFileA(search, &entry));
    ::FindClose(search);
    std::sort(matches.begin(), matches.end(), [](Match const& a, Match const& b) { return a.name < b.name; });
    return matches;
}

Button showMessageBox(char const* text, char const* caption) {
    int const pressed = ::MessageBoxA(nullptr, text ? text : "", caption ? caption : "", MB_OKCANCEL);
    return pressed == IDCANCEL ? Button::kCancel : Button::kOk;
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
