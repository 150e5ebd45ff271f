#pragma once

#include <functional>
#include <iosfwd>
#include <string>

namespace vrltool {

/// Writes a file, which has its new content whole or stays as it is: a temporary file in the same folder, flushed to
/// the disk and renamed, with the mode of the file before. A link is followed. A Failure says what went wrong.
void replaceFile(std::string const& path, std::string const& bytes);
/// The same with what `fill` writes, which goes to the temporary file at once; if it throws, the file stays as it is.
void replaceFile(std::string const& path, std::function<void(std::ostream&)> const& fill);

}  // namespace vrltool
