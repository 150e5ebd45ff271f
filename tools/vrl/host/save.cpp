#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <sstream>

#include "circuit/parameters.h"
#include "host/design.h"
#include "text/failure.h"
#include "text/table.h"

namespace vrltool {

namespace {

[[noreturn]] void failSave(std::string const& path, std::string const& step) {
    throw Failure(path, step + ": " + std::strerror(errno), "the file is as it was before");
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
    explicit Replacement(std::string const& path) : place(path), name(path + ".XXXXXX") {
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
        if (exists && !S_ISREG(before.st_mode)) {
            errno = S_ISDIR(before.st_mode) ? EISDIR : EINVAL;
            failSave(place, "cannot be replaced");
        }
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
        if (rename(name.c_str(), place.c_str()) != 0) failSave(place, "cannot be replaced");
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

/// A file that is there keeps kinds that are missing here: it is not replaced. One that is no design may be.
void refuseOver(std::string const& path) {
    if (access(path.c_str(), F_OK) != 0) return;
    Design before;
    try {
        before = readDesign(path);
    } catch (Failure const&) {
        return;
    }
    if (!before.missing.empty()) refuse(path, before.missing.front().name);
}

}  // namespace

void saveFile(std::string const& path, std::string const& bytes) {
    Replacement file(target(path).string());
    file.takeMode();
    file.write(bytes);
    file.putInPlace();
}

void saveDesign(vrl::Netlist& netlist, std::string const& path) {
    refuseStandIns(netlist, path);
    std::ostringstream bytes;
    vrl::BinaryStreamSerialiser writer(bytes);
    if (!netlist.write(&writer) || !bytes) throw Failure(path, "the design cannot be written", "");
    refuseOver(path);  // reading sets the process-wide numbers, which are part of the bytes
    saveFile(path, bytes.str());
}

}  // namespace vrltool
