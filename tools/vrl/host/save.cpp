#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>

#include "circuit/parameters.h"
#include "host/design.h"
#include "text/failure.h"
#include "text/table.h"

namespace vrltool {

namespace {

std::string cureOf(int code) {
    static std::map<int, char const*> const cures{{ENOENT, "make the folder first"},
                                                  {ENOTDIR, "name a file in a folder"},
                                                  {EACCES, "name a file in a folder that you may write to"},
                                                  {EPERM, "name a file in a folder that you may write to"},
                                                  {EROFS, "name a file in a folder that you may write to"},
                                                  {ENOSPC, "make room on the disk"},
                                                  {EDQUOT, "make room on the disk"},
                                                  {EFBIG, "raise the limit of the size of files"},
                                                  {ELOOP, "name the file itself"},
                                                  {ENAMETOOLONG, "give it a shorter name"}};
    auto const found = cures.find(code);
    return found == cures.end() ? "" : found->second;
}

[[noreturn]] void failSave(std::string const& path, std::string const& step) {
    int const code = errno;
    std::string cure = cureOf(code);
    if (std::error_code none; std::filesystem::is_regular_file(path, none))
        cure += std::string(cure.empty() ? "" : "; ") + "the file is as it was before";
    throw Failure(path, step + ": " + std::strerror(code), cure);
}

/// The file that a path leads to, which need not be there: what is replaced is never a link.
std::filesystem::path target(std::filesystem::path path) {
    constexpr int kMostLinks = 40;
    std::error_code error;
    for (int links = 0; std::filesystem::is_symlink(path, error); ++links) {
        if (links == kMostLinks) {
            errno = ELOOP;
            failSave(path.string(), "cannot be replaced");
        }
        path = path.parent_path() / std::filesystem::read_symlink(path, error);
    }
    return path;
}

/// A new file beside another one, removed again unless it was put in its place.
class Replacement {
public:
    explicit Replacement(std::filesystem::path const& path)
        : place(path.string()), name((path.parent_path() / ".vrl-XXXXXX").string()) {
        descriptor = mkostemp(name.data(), O_CLOEXEC);
        if (descriptor < 0) failSave(place, "cannot make a file in its folder");
    }
    Replacement(Replacement const&) = delete;
    Replacement& operator=(Replacement const&) = delete;
    ~Replacement() {
        if (descriptor >= 0) close(descriptor);
        if (!name.empty()) unlink(name.c_str());
    }

    void takeMode() {
        struct stat before {};
        mode_t const mask = umask(0);
        umask(mask);
        bool const exists = stat(place.c_str(), &before) == 0;
        if (exists && !S_ISREG(before.st_mode))
            throw Failure(place, S_ISDIR(before.st_mode) ? "is a folder" : "is no regular file", "name a regular file");
        if (fchmod(descriptor, exists ? before.st_mode & 07777 : 0666 & ~mask) != 0)
            failSave(place, "cannot set its mode");
    }

    void write(std::string const& bytes) {
        for (std::size_t done = 0; done < bytes.size();) {
            ssize_t const count = ::write(descriptor, bytes.data() + done, bytes.size() - done);
            if (count < 0 && errno != EINTR) failSave(place, "cannot be written");
            if (count > 0) done += static_cast<std::size_t>(count);
        }
    }

    void putInPlace() {
        if (fsync(descriptor) != 0) failSave(place, "cannot be flushed");
        int const closed = close(descriptor);
        descriptor = -1;
        if (closed != 0) failSave(place, "cannot be closed");
        if (rename(name.c_str(), place.c_str()) != 0) failSave(place, "cannot be put in its place");
        name.clear();
    }

private:
    std::string place;
    std::string name;
    int descriptor;
};

void refuse(std::string const& path, std::string const& kind) {
    throw Failure(path, "not saved: something stands in for '" + printable(kind) + "', and what it keeps would be lost",
                  "load the plug-in that brings it; 'vrl plugins' shows what is loaded");
}

void refuseParameters(vrl::Attributes& list, std::string const& path) {
    for (Parameter const& parameter : parametersOf(list))
        if (losesBySaving(*parameter.attribute)) refuse(path, parameter.name);
}

void refuseStandIns(vrl::Netlist& netlist, std::string const& path) {
    if (dynamic_cast<StandInNetlist*>(&netlist) || dynamic_cast<StandInBlock*>(&netlist))
        refuse(path, netlist.getName());
    refuseParameters(netlist, path);
    for (auto entry = netlist.beginElements(); entry != netlist.endElements(); ++entry) {
        if (!entry->second) continue;
        if (isStandIn(*entry->second)) refuse(path, entry->second->getName());
        refuseParameters(*entry->second, path);
        if (auto* const composite = dynamic_cast<vrl::CBB*>(entry->second.get()))
            refuseStandIns(*composite->getAsNetlist(), path);
    }
}

/// Whether a file begins as every saved design does.
bool isSavedDesign(std::string const& path) {
    std::error_code none;
    if (!std::filesystem::is_regular_file(path, none)) return false;  // to open a pipe would wait
    std::ifstream file(path, std::ios::binary);
    if (!file)
        throw Failure(path, "is there and cannot be read, so that it may be a saved design",
                      "give the output a name of its own");
    char head[2] = {};
    return file.read(head, sizeof head) && head[0] == '\x3D' && head[1] == '\x40';
}

/// A file that is there may keep kinds that are missing here, or more than can be read of it: it is not replaced then.
void refuseOver(std::string const& path) {
    if (!isSavedDesign(path)) return;
    Design before;
    try {
        before = readDesign(path);
    } catch (Failure const&) {
        throw Failure(path, "begins as a saved design and cannot be read whole, so it is not replaced",
                      "give the output a name of its own, or move the file away");
    }
    if (!before.missing.empty()) refuse(path, before.missing.front().name);
}

void replaceFile(std::string const& path, std::string const& bytes) {
    Replacement file(target(path));
    file.takeMode();
    file.write(bytes);
    file.putInPlace();
}

}  // namespace

void refuseToReplace(std::string const& output, std::vector<std::string> const& inputs) {
    struct stat written {};
    if (stat(output.c_str(), &written) != 0) return;
    for (std::string const& input : inputs) {
        struct stat read {};
        if (stat(input.c_str(), &read) == 0 && read.st_dev == written.st_dev && read.st_ino == written.st_ino)
            throw Failure(output, "is read as '" + printable(input) + "', and would be replaced",
                          "give the output a name of its own");
    }
}

void saveFile(std::string const& path, std::string const& bytes) {
    if (isSavedDesign(path))
        throw Failure(path, "is a saved design, which would be lost",
                      "give the output a name of its own, or move the design away");
    replaceFile(path, bytes);
}

void saveDesign(vrl::Netlist& netlist, std::string const& path) {
    refuseStandIns(netlist, path);
    std::ostringstream bytes;
    vrl::BinaryStreamSerialiser writer(bytes);
    if (!netlist.write(&writer) || !bytes) throw Failure(path, "the design cannot be written", "");
    refuseOver(path);  // reading sets the process-wide numbers, which are part of the bytes
    replaceFile(path, bytes.str());
}

}  // namespace vrltool
