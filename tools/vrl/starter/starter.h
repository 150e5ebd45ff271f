#pragma once

#include <string>
#include <vector>

namespace vrltool::starter {

/// A file of a new plug-in project, with "PluginName" where its name comes.
struct StarterFile {
    std::string path;  ///< below the folder of the project
    std::string text;
};

/// The files of templates/, in order of their paths.
std::vector<StarterFile> const& starterFiles();

/// Those of a plug-in that is made from a table, but for the sources that tableSources writes.
std::vector<StarterFile> const& tableFiles();

/// Makes a plug-in project in a folder, which must be empty or new. Returns the paths that it wrote, below the
/// folder.
///
/// A Failure says what is wrong with the name or the folder; nothing is overwritten.
std::vector<std::string> startPlugin(std::string const& name, std::string const& folder,
                                     std::vector<StarterFile> const& files);

}  // namespace vrltool::starter
