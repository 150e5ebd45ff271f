#include "commands/picture_output.h"

#include <filesystem>
#include <iostream>
#include <system_error>
#include <utility>

#include "design/save.h"
#include "draw/svg.h"
#include "text/failure.h"
#include "text/phrases.h"

namespace vrltool {

using namespace draw;

PictureOutput::PictureOutput(std::string to, PictureFormat as, std::string of)
    : path(std::move(to)), format(as), design(std::move(of)) {}

std::string PictureOutput::fileOf(std::size_t sheet, std::size_t count) const {
    if (count == 1 || format == PictureFormat::kPdf) return path;
    std::filesystem::path const whole = path;
    std::string const name = whole.stem().string() + "-" + std::to_string(sheet + 1) + whole.extension().string();
    return (whole.has_parent_path() ? whole.parent_path() / name : std::filesystem::path(name)).string();
}

void PictureOutput::writeTo(std::string const& file, std::string const& bytes) const {
    if (isStandardOutput())
        std::cout << bytes;
    else
        saveFile(file, bytes);
}

void PictureOutput::noteStale(std::size_t sheets) const {
    if (isStandardOutput() || format == PictureFormat::kPdf) return;
    std::vector<std::string> stale;
    auto const note = [&](std::string const& file) {
        std::error_code ignored;
        bool const there = std::filesystem::exists(file, ignored);
        if (there) stale.push_back(file);
        return there;
    };
    if (sheets > 1) note(path);
    for (std::size_t i = sheets > 1 ? sheets : 0; note(fileOf(i, 2)); ++i) continue;
    if (stale.empty()) return;
    bool const one = stale.size() == 1;
    std::cerr << "vrl: " << listText(stale) << (one ? ": is no sheet" : ": are no sheets")
              << " of this picture; an earlier one may have left " << (one ? "it" : "them") << '\n';
}

void PictureOutput::write(std::vector<Scene> const& sheets) const {
    bool const inOne = sheets.size() == 1 || format == PictureFormat::kPdf;
    if (isStandardOutput() && !inOne)
        throw Failure("standard output", "takes one sheet, and the picture has " + std::to_string(sheets.size()),
                      "name a file with '-o FILE." + formatName(format) + "', or take '--format pdf'");
    std::size_t const files = inOne ? 1 : sheets.size();
    for (std::size_t i = 0; i < files; ++i) refuseToReplace(fileOf(i, sheets.size()), {design});
    for (std::size_t i = 0; i < files; ++i) {
        bool const isSvg = format == PictureFormat::kSvg;
        writeTo(fileOf(i, sheets.size()), isSvg   ? svgText(sheets[i])
                                          : inOne ? converted(sheets, format)
                                                  : converted({sheets[i]}, format));
    }
    noteStale(sheets.size());
}

}  // namespace vrltool
