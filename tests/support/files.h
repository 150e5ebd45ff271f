#pragma once

#include <filesystem>
#include <string>

namespace vrl_test {

/// A fresh folder, removed with everything in it at the end.
class TemporaryFolder {
public:
    TemporaryFolder();
    TemporaryFolder(TemporaryFolder const&) = delete;
    TemporaryFolder& operator=(TemporaryFolder const&) = delete;
    ~TemporaryFolder();

    std::filesystem::path const& path() const { return folder; }
    std::filesystem::path operator/(std::filesystem::path const& name) const { return folder / name; }

private:
    std::filesystem::path folder;
};

/// Writes a file with its missing folders. Returns its path.
std::string writeFile(std::filesystem::path const& path, std::string const& text);

/// The bytes of a file; empty if there is none.
std::string readFile(std::filesystem::path const& path);

/// Writes the first bytes of a file into another one. Returns the path of that.
std::string copyPart(std::filesystem::path const& from, std::filesystem::path const& to, std::size_t bytes);

/// A text several times in a row.
std::string times(std::size_t count, std::string const& text);

}  // namespace vrl_test
