#pragma once

#include <string>

namespace vrltool {

/// Writes a file, which has its new content whole or stays as it is: a temporary file in the same folder, flushed to
/// the disk and renamed, with the mode of the file before. A link is followed. A Failure says what went wrong.
void replaceFile(std::string const& path, std::string const& bytes);

}  // namespace vrltool
