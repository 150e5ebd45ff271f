#include "exchange/installed_maps.h"

#include <algorithm>
#include <filesystem>
#include <vector>

#include "system/process.h"
#include "text/failure.h"
#include "text/phrases.h"

namespace vrltool::exchange {

namespace {

namespace fs = std::filesystem;

/// The names of the maps in a folder, in their order.
std::vector<std::string> mapsIn(fs::path const& folder) {
    std::vector<std::string> names;
    std::error_code none;  // a folder that is missing has no maps
    for (fs::directory_iterator entry(folder, none), end; entry != end; entry.increment(none))
        if (entry->path().extension() == ".yml") names.push_back(entry->path().stem().string());
    std::sort(names.begin(), names.end());
    return names;
}

}  // namespace

std::string pathOfMap(std::string const& name) {
    std::error_code none;
    bool const plain = !name.empty() && name.find_first_of("/.") == std::string::npos;
    if (!plain || fs::exists(name, none)) return name;
    fs::path const folder = (fs::path(ownProgram()).parent_path() / VRL_DATA_FROM_PROGRAM / "maps").lexically_normal();
    auto const names = mapsIn(folder);
    if (std::find(names.begin(), names.end(), name) != names.end()) return (folder / (name + ".yml")).string();
    throw Failure(name, "there is no such file, and no such map is installed",
                  namesHint(name, names, "installed maps"));
}

}  // namespace vrltool::exchange
