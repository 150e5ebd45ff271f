#include "tests/support/files.h"

#include <fstream>
#include <random>
#include <sstream>

namespace vrl_test {

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder() {
    std::random_device random;
    do {
        folder = fs::temp_directory_path() / ("vrllib-test-" + std::to_string(random()));
    } while (!fs::create_directory(folder));
    fs::permissions(folder, fs::perms::owner_all);
    folder = fs::canonical(folder);
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    fs::remove_all(folder, ignored);
}

std::string writeFile(fs::path const& path, std::string const& text) {
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << text;
    return path.string();
}

std::string readFile(fs::path const& path) {
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

std::string copyPart(fs::path const& from, fs::path const& to, std::size_t bytes) {
    return writeFile(to, readFile(from).substr(0, bytes));
}

std::string times(std::size_t count, std::string const& text) {
    std::string result;
    for (std::size_t i = 0; i < count; ++i) result += text;
    return result;
}

}  // namespace vrl_test
