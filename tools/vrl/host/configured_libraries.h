#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "host/load_watch.h"

namespace vrltool {

/// A line of the configuration that names libraries, and the loads that came of it.
struct ConfiguredLibrary {
    std::string key;   ///< "sodllfile" for a plug-in, "f" for a file, "e" for a variable, "d" for a folder
    std::string name;  ///< the value of the line
    std::string file;  ///< that the line stands in; empty if the line is not known
    unsigned line = 0;
    std::vector<std::string> paths;  ///< what it has the library try; a path may hold "*"
    std::vector<std::size_t> loads;  ///< the places of its loads

    /// Whether it was tried, and nothing of it was loaded.
    bool failed(std::vector<Load> const& all) const;
};

/// What the configuration names, in the order of the file and its includes, matched with what was tried. The library
/// tells no lines, so the files are read again; lines that do not agree with what the library reads are left out.
std::vector<ConfiguredLibrary> configuredLibraries(std::vector<Load> const& loads);

}  // namespace vrltool
