#include <cstring>
#include <set>
#include <utility>

#include <dlfcn.h>
#include <fcntl.h>
#include <link.h>

#include "vrllib/platform/elf_check.h"
#include "vrllib/platform/library_search.h"
#include "vrllib/platform/platform.h"
#include "vrllib/platform/posix_file.h"

namespace Vorlane_v1_0::platform {

namespace {

using Reason = SystemError::Reason;

constexpr unsigned kLoadFailed = 1;       // the system has words for its failures, but no numbers
constexpr unsigned kSymbolMissing = 127;  // the number of this case on Windows

/// Looks at a library, and at those that it depends on, before the system maps them.
class Inspection {
public:
    /// What the system's loader would wait for or crash on; an empty message if it can report by itself.
    SystemError of(std::string const& path);

private:
    SystemError ofDependencies(std::string const& path, ElfCheck const& check);

    std::set<std::string> seen;
};

SystemError refusal(std::string const& path, char const* why, Reason reason = Reason::kOther) {
    return {kLoadFailed, path + ": " + why, reason};
}

SystemError Inspection::of(std::string const& path) {
    if (!seen.insert(path).second) return {};
    File const file(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    struct stat status;
    if (!file || ::fstat(file.number(), &status) != 0 || S_ISDIR(status.st_mode)) return {};
    if (!S_ISREG(status.st_mode)) return refusal(path, "not a regular file", Reason::kNotARegularFile);
    ElfCheck const check = checkElf(file, static_cast<std::uint64_t>(status.st_size));
    return check.damage ? refusal(path, check.damage) : ofDependencies(path, check);
}

/// Whether a library is mapped under a path or a bare name. The system's loader, asked for it, might open the file.
bool isMapped(std::string const& name) {
    auto const compare = [](dl_phdr_info* info, std::size_t, void* wanted) {
        std::string const path = info->dlpi_name ? info->dlpi_name : "";
        std::string const& sought = *static_cast<std::string const*>(wanted);
        return sought == path || sought == path.substr(path.rfind('/') + 1) ? 1 : 0;
    };
    return ::dl_iterate_phdr(compare, const_cast<std::string*>(&name)) != 0;
}

/// A folder of a library's own, with the folder of that library in place of $ORIGIN.
std::string expanded(std::string folder, std::string const& origin) {
    for (char const* const name : {"$ORIGIN", "${ORIGIN}"}) {
        auto const place = folder.find(name);
        if (place != std::string::npos) folder.replace(place, std::strlen(name), origin);
    }
    return folder;
}

SystemError Inspection::ofDependencies(std::string const& path, ElfCheck const& check) {
    auto const slash = path.rfind('/');
    std::string const origin = slash == std::string::npos ? "." : path.substr(0, slash);
    std::vector<std::string> folders;
    for (std::string const& folder : check.folders) folders.push_back(expanded(folder, origin));
    for (std::string const& name : check.needed) {
        if (name.empty() || isMapped(name)) continue;
        std::string const found = findLibrary(name, folders);
        if (found.empty()) continue;
        if (SystemError error = of(found); error.code != 0) return error;
    }
    return {};
}

bool isFolder(char const* path) {
    struct stat status;
    return ::stat(path, &status) == 0 && S_ISDIR(status.st_mode);
}

/// Where the module that holds an address is mapped; null if none does.
void* baseOf(void const* address) {
    Dl_info info;
    return ::dladdr(address, &info) != 0 ? info.dli_fbase : nullptr;
}

/// Whether a symbol is the module's own: dlsym finds those of its dependencies as well.
bool isIn(void* module, void const* symbol) {
    link_map* map = nullptr;
    if (::dlinfo(module, RTLD_DI_LINKMAP, &map) != 0 || !map) return false;
    void* const base = baseOf(symbol);
    return base && base == baseOf(map->l_ld);
}

}  // namespace

void* loadLibrary(char const* path, SystemError& error) {
    error = {};
    if (!path || !*path) return nullptr;  // an empty name would open the program itself
    std::string const file = findLibrary(path);
    if (!file.empty() && !isMapped(path)) error = Inspection().of(file);
    if (error.code != 0) return nullptr;
    // At once, so that a missing symbol is a failure here and no crash later; local, so that equal names of two
    // plug-ins do not meet.
    void* const module = ::dlopen(path, RTLD_NOW | RTLD_LOCAL);
    if (module) return module;
    if (char const* const text = ::dlerror())
        error = {kLoadFailed, text, isFolder(file.c_str()) ? Reason::kNotARegularFile : Reason::kOther};
    return nullptr;
}

void* findSymbol(void* module, char const* name, SystemError& error) {
    error = {};
    void* const symbol = module && name ? ::dlsym(module, name) : nullptr;
    if (symbol && isIn(module, symbol)) return symbol;
    ::dlerror();  // forgotten, so that it is not taken for the reason of a later failure
    error = {kSymbolMissing, std::string("undefined symbol: ") + (name ? name : ""), Reason::kMissingSymbol};
    return nullptr;
}

std::string moduleFile(void* module) {
    link_map* map = nullptr;
    return module && ::dlinfo(module, RTLD_DI_LINKMAP, &map) == 0 && map && map->l_name ? map->l_name : "";
}

std::string fileWith(void const* address) {
    Dl_info info;
    return ::dladdr(address, &info) != 0 && info.dli_fname ? info.dli_fname : "";
}

}  // namespace Vorlane_v1_0::platform
