#include <dlfcn.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <sstream>

#include "system/process.h"
#include "text/near_names.h"
#include "validate/elf.h"
#include "validate/plugin.h"

// What is known of a plug-in without running anything of it.

namespace vrltool::validate {

namespace {

namespace fs = std::filesystem;

/// What is at the path in place of a regular file; null for a regular file.
char const* otherKind(mode_t mode) {
    if (S_ISREG(mode)) return nullptr;
    if (S_ISDIR(mode)) return "is a folder";
    if (S_ISFIFO(mode)) return "is a named pipe";
    if (S_ISSOCK(mode)) return "is a socket";
    return "is a device";
}

/// The library that this program runs with.
ElfFile ownLibrary() {
    Dl_info info;
    auto const address = reinterpret_cast<void const*>(&vrlInit_vrllib);
    return dladdr(address, &info) != 0 && info.dli_fname ? readElf(info.dli_fname) : ElfFile{};
}

std::string replaced(std::string text, std::string const& part, std::string const& by) {
    for (auto place = text.find(part); place != std::string::npos; place = text.find(part, place + by.size()))
        text.replace(place, part.size(), by);
    return text;
}

/// The folders in which the loader looks for what a plug-in names, before those of the system.
std::vector<fs::path> searchFolders(ElfFile const& elf, std::string const& plugin) {
    std::string const origin = fs::path(plugin).parent_path().string();
    std::vector<fs::path> folders;
    for (std::string const& folder : elf.folders)
        folders.emplace_back(replaced(replaced(folder, "${ORIGIN}", origin), "$ORIGIN", origin));
    char const* const variable = std::getenv("LD_LIBRARY_PATH");
    std::istringstream list(variable ? variable : "");
    for (std::string folder; std::getline(list, folder, ':');) folders.emplace_back(folder.empty() ? "." : folder);
    return folders;
}

bool isLibrary(fs::path const& path, std::string const& machine) {
    std::error_code ignored;
    if (!fs::is_regular_file(path, ignored)) return false;
    ElfFile const elf = readElf(path.string());
    return elf.error.empty() && elf.machine == machine;
}

/// Why the loader does not find a library, or not all that this one needs itself; empty if it does.
std::string whyNotFound(std::string const& name, ElfFile const& elf, std::vector<fs::path> const& folders,
                        Report& report) {
    constexpr char kNotFound[] = "which is not found";
    if (name.find('/') != std::string::npos) return isLibrary(name, elf.machine) ? "" : kNotFound;
    for (fs::path const& folder : folders)
        if (isLibrary(folder / name, elf.machine)) return {};
    // The system's own folders and its cache are searched by loading it, as the loader would.
    report.step("loading '" + name + "'");
    if (dlopen(name.c_str(), RTLD_LAZY | RTLD_LOCAL)) return {};
    char const* const reason = dlerror();
    std::string const words = reason ? reason : "";
    bool const itself = words.empty() || words.compare(0, name.size() + 2, name + ": ") == 0;
    return itself ? kNotFound : "which does not load: " + words;
}

/// Says what is wrong with how a plug-in names our own library.
void checkOwnLibrary(ElfFile const& elf, std::string const& own, Report& report) {
    std::string const stem = own.substr(0, own.find(".so"));
    for (std::string const& name : elf.needed) {
        if (name == own) return;
        if (!stem.empty() && name.compare(0, stem.size(), stem) == 0)
            return report.find("", "names '" + name + "', and this program has " + own,
                               "build it against the version of vrllib that its hosts have");
    }
    report.find("", "does not name vrllib, " + own + ", among its dependencies",
                "link it with vrllib::vrllib, as vrl_add_plugin does, or with `pkg-config --libs vrllib`");
}

/// The entry point or other plain name of the interface that a mangled name encodes; empty for another name.
std::string plainName(std::string const& name) {
    std::vector<std::string> known{"getAPIversion", "initLibraryPostLoad"};
    for (TargetInfo const& target : kTargets) known.emplace_back(target.entry);
    if (name.compare(0, 2, "_Z") != 0) return {};
    for (std::string const& plain : known)
        if (name.find(std::to_string(plain.size()) + plain) != std::string::npos) return plain;
    return {};
}

/// Whether a name looks as if somebody were to call it. Returns the names that it could mean.
std::string nearEntry(std::string const& name) {
    std::vector<std::string> known{"initLibraryPostLoad"};
    for (TargetInfo const& target : kTargets) known.emplace_back(target.entry);
    bool const looksSo = name.compare(0, 7, "initLib") == 0;
    if (!looksSo || std::find(known.begin(), known.end(), name) != known.end()) return {};
    return didYouMean(name, known);
}

}  // namespace

void checkRegularFile(Job const& job, Report& report) {
    struct stat status;
    if (stat(job.plugin.c_str(), &status) != 0) {
        int const reason = errno;
        if (reason != ENOENT) return report.find("", std::string("cannot be examined: ") + std::strerror(reason));
        bool const dangling = lstat(job.plugin.c_str(), &status) == 0;
        return report.find("", dangling ? "is a link to nothing" : "there is no such file");
    }
    if (char const* const kind = otherKind(status.st_mode)) return report.find("", kind);
    if (status.st_size == 0) return report.find("", "is empty", "build it again");
    if (access(job.plugin.c_str(), R_OK) != 0) return report.find("", "cannot be read", "make it readable: chmod a+r");
}

void checkFileName(Job const& job, Report& report) {
    std::string const name = fs::path(job.plugin).filename().string();
    std::string const start = std::string("lib_") + soloader_getDllTag() + "_";
    auto const ending = name.find(".so.", start.size());
    bool const fits = name.compare(0, start.size(), start) == 0 && ending != std::string::npos &&
                      ending > start.size() && ending + 4 < name.size();
    if (!fits) return report.find("", "is no " + start + "NAME.so.VERSION");
    report.note("sodllfile = " + name.substr(start.size(), ending - start.size()));
}

void checkMachine(Job const& job, Report& report) {
    ElfFile const elf = readElf(job.plugin);
    std::string const own = readElf(ownProgram()).machine;
    if (!elf.error.empty()) return report.find("", elf.error, elf.hint);
    if (elf.machine != own) return report.find("", "is for " + elf.machine + ", and this program for " + own);
    report.note(elf.machine);
}

void checkDependencies(Job const& job, Report& report) {
    ElfFile const elf = readElf(job.plugin);
    auto const folders = searchFolders(elf, job.plugin);
    std::string const own = ownLibrary().soname;
    checkOwnLibrary(elf, own, report);
    for (std::string const& name : elf.needed)
        if (std::string const why = whyNotFound(name, elf, folders, report); !why.empty())
            report.find("", "needs '" + name + "', " + why);
    report.note("with " + own);
}

void checkEntryPoints(Job const& job, Report& report) {
    ElfFile const elf = readElf(job.plugin);
    std::string found;
    for (ElfSymbol const& symbol : elf.exported) {
        std::string const plain = plainName(symbol.name);
        if (!plain.empty())
            report.find(symbol.name, "is the mangled name of '" + plain + "', which nobody finds",
                        "declare it extern \"C\", as VRL_PLUGIN_EXPORT does, in no namespace");
        if (std::string const near = nearEntry(symbol.name); !near.empty())
            report.find(symbol.name, "is no entry point", near);
        for (TargetInfo const& target : kTargets) {
            if (symbol.name != target.entry) continue;
            if (!symbol.function) report.find(symbol.name, "is no function");
            found += (found.empty() ? "" : ", ") + symbol.name;
        }
    }
    if (found.empty() && report.clean()) report.find("", "exports none of the seven entry points");
    report.note(found);
}

}  // namespace vrltool::validate
