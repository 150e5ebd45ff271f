#include "system/temporary_folder.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "text/failure.h"

namespace vrltool {

namespace {

std::string folderForAll() {
    std::error_code error;
    auto const path = std::filesystem::temp_directory_path(error);
    if (error)
        throw Failure("TMPDIR", "leads to no folder: " + error.message(), "set it to a folder that can be written");
    return path.string();
}

}  // namespace

TemporaryFolder::TemporaryFolder() : folder(folderForAll() + "/vrl-XXXXXX") {
    if (!mkdtemp(folder.data()))
        throw Failure(folder, std::string("cannot make a temporary folder: ") + std::strerror(errno),
                      "set TMPDIR to a folder that can be written");
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
}

std::string TemporaryFolder::read(std::string const& name) const {
    std::ifstream const file(*this / name, std::ios::binary);
    std::ostringstream bytes;
    bytes << file.rdbuf();
    return bytes.str();
}

}  // namespace vrltool
