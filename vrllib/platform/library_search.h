#pragma once

#include <string>
#include <vector>

namespace Vorlane_v1_0::platform {

/// The folders in which the system's loader looks for a bare name, in order.
std::vector<std::string> searchFolders();

/// The first path that a cache of the system's loader, given as the bytes of its file, has for a bare name; empty if it
/// has none.
std::string cachedPath(std::string const& cache, std::string const& name);

/// The file that the system's loader takes for a library: the name itself if it is a path, otherwise the first that the
/// given folders, the folders of the search and the cache of the system have. Empty if it is nowhere. The working
/// directory is none of these.
std::string findLibrary(std::string const& name, std::vector<std::string> const& folders = {});

}  // namespace Vorlane_v1_0::platform
