#pragma once

#include <optional>
#include <string>
#include <vector>

#include "draw/scene.h"

namespace vrltool::draw {

/// What a picture can be written as.
enum class PictureFormat { kSvg, kDot, kPdf, kPng, kHtml };

/// The format of a name ("svg") in whatever case; nothing for another one.
std::optional<PictureFormat> pictureFormat(std::string const& name);

/// "svg", ...
std::string formatName(PictureFormat format);

/// "svg, dot, pdf, png or html".
char const* pictureFormats();

/// "; did you mean 'svg'?" after a hint, or nothing without a near one.
std::string nearFormats(std::string const& wrong);

/// The bytes of a picture as PDF, a page for each sheet, or of one sheet as PNG, made of its SVG by rsvg-convert: the
/// same for the same picture, since the time is taken out. A Failure says that the program is missing, or that it
/// failed; a line on standard error, that a bitmap is coarser than it should be.
std::string converted(std::vector<Scene> const& sheets, PictureFormat format);

}  // namespace vrltool::draw
