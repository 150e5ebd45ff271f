#include <windows.h>

#include "vrllib/platform/platform.h"

namespace Vorlane_v1_0::platform {

namespace {

using Reason = SystemError::Reason;

/// The system's text for a failure, in its default language.
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
    return {static_cast<unsigned>(code), textOf(code),
            code == ERROR_PROC_NOT_FOUND ? Reason::kMissingSymbol : Reason::kOther};
}

/// A folder that the system reports by a call of its own, with a ";" after it.
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

std::string fileOf(HMODULE module) {
    char path[MAX_PATH];
    DWORD const length = ::GetModuleFileNameA(module, path, MAX_PATH);
    return length > 0 && length < MAX_PATH ? std::string(path, length) : std::string();
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
        error = {ERROR_PROC_NOT_FOUND, textOf(ERROR_PROC_NOT_FOUND), Reason::kMissingSymbol};
        return nullptr;
    }
    FARPROC const symbol = ::GetProcAddress(static_cast<HMODULE>(module), name);
    if (!symbol) error = lastError();
    return reinterpret_cast<void*>(symbol);
}

std::string moduleFile(void* module) { return module ? fileOf(static_cast<HMODULE>(module)) : std::string(); }

std::string fileWith(void const* address) {
    HMODULE module = nullptr;
    bool const found =
        ::GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                             static_cast<char const*>(address), &module);
    return found ? fileOf(module) : std::string();
}

}  // namespace Vorlane_v1_0::platform
