#include "design/save.h"

#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <utility>

#include "system/replace_file.h"
#include "text/failure.h"
#include "text/table.h"

namespace vrltool {

namespace {

/// Whether two names lead to one file that exists.
bool isSameFile(std::string const& a, std::string const& b) {
    struct stat first {
    }, second{};
    return stat(a.c_str(), &first) == 0 && stat(b.c_str(), &second) == 0 && first.st_dev == second.st_dev &&
           first.st_ino == second.st_ino;
}

std::string contentOf(std::string const& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream bytes;
    if (!file || !(bytes << file.rdbuf())) throw Failure(path, "cannot be read", "give the path of a saved design");
    return std::move(bytes).str();
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

/// Whether there is something in a file already.
bool hasContent(std::string const& path) {
    std::error_code none;
    return std::filesystem::is_regular_file(path, none) && std::filesystem::file_size(path, none) > 0;
}

/// An existing file may be no design, keep kinds that are missing here, or more than can be read of it: it is not
/// replaced then.
void refuseOver(std::string const& path) {
    bool const isDesign = isSavedDesign(path);
    if (!isDesign && hasContent(path))
        throw Failure(path, "is there already and is no saved design, so it is not replaced",
                      "give the output a name of its own, or remove that file");
    if (!isDesign) return;
    KeptNumbers const numbers;
    Design before;
    try {
        before = readDesign(path);
    } catch (Failure const&) {
        throw Failure(path, "begins as a saved design and cannot be read whole, so it is not replaced",
                      "give the output a name of its own, or move the file away");
    }
    if (!before.missing.empty())
        throw Failure(path,
                      "is a design with '" + printable(before.missing.front().name) +
                          "', which no loaded plug-in has, so it is not replaced",
                      "give the output a name of its own, or move the file away");
}

}  // namespace

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

void refuseToReplace(std::string const& output, std::vector<std::string> const& inputs) {
    for (std::string const& input : inputs)
        if (isSameFile(output, input))
            throw Failure(output, "is read as '" + printable(input) + "', and would be replaced",
                          "give the output a name of its own");
}

void saveFile(std::string const& path, std::string const& bytes) {
    if (isSavedDesign(path))
        throw Failure(path, "is a saved design, which would be lost",
                      "give the output a name of its own, or move the design away");
    replaceFile(path, bytes);
}

void saveDesign(vrl::Netlist& netlist, std::string const& path) {
    refuseOver(path);
    replaceFile(path, [&](std::ostream& out) {
        vrl::BinaryStreamSerialiser writer(out);
        if (!netlist.write(&writer)) throw Failure(path, "the design cannot be written", "");
    });
}

void saveDesign(Design const& design, SavedChanges const& changes, std::string const& path) {
    if (!isSameFile(path, design.path)) refuseOver(path);
    replaceFile(path, changes.madeIn(contentOf(design.path), design.path));
}

}  // namespace vrltool
