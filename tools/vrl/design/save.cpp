#include "design/save.h"

#include <sys/stat.h>

#include <filesystem>
#include <fstream>

#include "circuit/parameters.h"
#include "design/design.h"
#include "system/replace_file.h"
#include "text/failure.h"
#include "text/table.h"

namespace vrltool {

namespace {

void refuse(std::string const& path, std::string const& kind) {
    throw Failure(path, "not saved: a stand-in represents '" + printable(kind) + "', and what it keeps would be lost",
                  "load the plug-in that brings it; 'vrl plugins' shows what is loaded");
}

void refuseParameters(vrl::Attributes& list, std::string const& path) {
    for (ListedParameter const& parameter : listedParameters(list))
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
        throw Failure(path, "exists and cannot be read, so that it may be a saved design",
                      "give the output a name of its own");
    char head[2] = {};
    return file.read(head, sizeof head) && head[0] == '\x3D' && head[1] == '\x40';
}

/// The process-wide numbers of netlists, which reading sets and saving writes, as they were.
class KeptNumbers : vrl::Netlist_Vars {
public:
    KeptNumbers() : elements(numBB), nodes(nodeCount) {}
    KeptNumbers(KeptNumbers const&) = delete;
    KeptNumbers& operator=(KeptNumbers const&) = delete;
    ~KeptNumbers() {
        numBB = elements;
        nodeCount = nodes;
    }

private:
    unsigned int elements, nodes;
};

/// An existing file may keep kinds that are missing here, or more than can be read of it: it is not replaced then.
void refuseOver(std::string const& path) {
    if (!isSavedDesign(path)) return;
    KeptNumbers const numbers;
    Design before;
    try {
        before = readDesign(path);
    } catch (Failure const&) {
        throw Failure(path, "begins as a saved design and cannot be read whole, so it is not replaced",
                      "give the output a name of its own, or move the file away");
    }
    if (!before.missing.empty()) refuse(path, before.missing.front().name);
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
    refuseOver(path);
    replaceFile(path, [&](std::ostream& out) {
        vrl::BinaryStreamSerialiser writer(out);
        if (!netlist.write(&writer)) throw Failure(path, "the design cannot be written", "");
    });
}

}  // namespace vrltool
