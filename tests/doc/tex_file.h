#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

#include <gtest/gtest.h>

#include "vrllib/doc/texstream.h"

/// The place of a file in a fresh folder of its own, which goes with the object.
class TexFile {
public:
    TexFile() {
        std::random_device random;
        do folder = std::filesystem::path(testing::TempDir()) / ("vrl_tex_" + std::to_string(random()));
        while (!std::filesystem::create_directory(folder));
    }
    TexFile(TexFile const&) = delete;
    TexFile& operator=(TexFile const&) = delete;
    ~TexFile() {
        std::error_code ignored;  // a folder that is left over does no harm
        std::filesystem::remove_all(folder, ignored);
    }

    std::string path() const { return (folder / "document.tex").string(); }

    /// The content of the file, byte for byte.
    std::string text() const {
        std::ifstream in(path(), std::ios_base::binary);
        return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    }

private:
    std::filesystem::path folder;
};

/// What `write` leaves in a file that has neither preamble nor footer.
template <class Write>
std::string texWrittenBy(Write write) {
    TexFile const file;
    texstream tex(file.path().c_str(), false);
    write(tex);
    tex.close(false);
    return file.text();
}
