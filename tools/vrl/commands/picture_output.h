#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "draw/render.h"
#include "draw/scene.h"

namespace vrltool {

/// Where a picture goes: standard output, a file, or a file for each of its sheets.
class PictureOutput {
public:
    /// An empty path and "-" are standard output. `design` is the file that is drawn, which no picture replaces.
    PictureOutput(std::string path, draw::PictureFormat as, std::string design);

    bool isStandardOutput() const { return path.empty() || path == "-"; }
    /// The file of a sheet: pages of a PDF are in one, other sheets have their number before the ending.
    std::string fileOf(std::size_t sheet, std::size_t count) const;

    void write(std::string const& bytes) const { writeTo(path, bytes); }
    /// Writes all sheets. Files that an earlier picture with more or fewer of them left are named on standard error. A
    /// Failure reports several sheets for standard output.
    void write(std::vector<draw::Scene> const& sheets) const;

private:
    void writeTo(std::string const& file, std::string const& bytes) const;
    void noteStale(std::size_t sheets) const;

    std::string path;
    draw::PictureFormat format;
    std::string design;
};

}  // namespace vrltool
