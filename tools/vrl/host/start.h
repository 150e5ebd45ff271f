#pragma once

#include <string>

namespace vrltool {

/// Refuses a configuration file that cannot be read, or is empty or no regular file: a pipe would keep its reader
/// waiting, and a folder opens like a file.
void checkConfig(std::string const& config);

/// Brings the library up with a configuration file, or with the one that it finds; once in a process.
///
/// What plug-ins print meanwhile goes to standard error, and warnings of the configuration do, too. Errors: a file that
/// was named and cannot be read is a Failure.
void startLibrary(std::string const& config);

}  // namespace vrltool
