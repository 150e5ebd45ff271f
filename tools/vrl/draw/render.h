#pragma once

#include <optional>
#include <string>

namespace vrltool::draw {

/// What a picture can be written as.
enum class PictureFormat { kSvg, kDot, kPdf, kPng };

/// The format of a name ("svg") in whatever case; nothing for another one.
std::optional<PictureFormat> pictureFormat(std::string const& name);

/// "svg", ...
std::string formatName(PictureFormat format);

/// "svg, dot, pdf or png".
char const* pictureFormats();

/// "; did you mean 'svg'?" after a hint, or nothing without a near one.
std::string nearFormats(std::string const& wrong);

/// The bytes of a picture that Graphviz makes of its text: the same for the same text, since the time and the
/// maker are taken out. A Failure says that Graphviz is missing, or that it failed;
/// a line on standard error, that a bitmap is coarser than it should be.
std::string render(std::string const& dotText, PictureFormat format);

}  // namespace vrltool::draw
