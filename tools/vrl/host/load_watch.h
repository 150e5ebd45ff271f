#pragma once

#include <string>
#include <vector>

namespace vrltool {

/// A configured library that did not load, and why, in the system's words.
struct FailedLibrary {
    std::string path;
    std::string reason;
};

/// Begins to watch the loads of the library; called once, ahead of its start.
void watchLoads();

/// The libraries that failed while the library was started, in the order of trying.
std::vector<FailedLibrary> failedLibraries();

}  // namespace vrltool
