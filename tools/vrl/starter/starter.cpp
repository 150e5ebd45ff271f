#include "starter/starter.h"

#include <algorithm>
#include <cctype>
#include <filesystem>

#include "design/save.h"
#include "text/failure.h"
#include "text/table.h"

namespace vrltool::starter {

namespace {

namespace fs = std::filesystem;

constexpr char kPlaceholder[] = "PluginName";
constexpr std::size_t kLongest = 64;

bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool isNamePart(char c) { return isLetter(c) || (c >= '0' && c <= '9') || c == '_'; }

/// Whether a name has a meaning already, to the library or to CMake, in whatever case.
bool isTaken(std::string name) {
    static char const* const taken[] = {"all",        "all_build",      "clean",      "depend",
                                        "edit_cache", "help",           "install",    "list_install_components",
                                        "package",    "package_source", "preinstall", "rebuild_cache",
                                        "run_tests",  "test",           "vrldll",     "vrllib",
                                        "zero_check"};
    std::transform(name.begin(), name.end(), name.begin(), [](unsigned char c) { return std::tolower(c); });
    return std::find(std::begin(taken), std::end(taken), name) != std::end(taken);
}

void checkName(std::string const& name) {
    std::string const thing = "the name '" + printable(name) + "'";
    bool const valid = !name.empty() && isLetter(name[0]) && std::all_of(name.begin(), name.end(), isNamePart);
    if (!valid)
        throw Failure(thing, "cannot be that of a plug-in",
                      "use letters, digits and underscores, with a letter first: myFab");
    if (name.size() > kLongest) throw Failure(thing, "is too long", "use 64 characters at most");
    if (isTaken(name)) throw Failure(thing, "has a meaning of its own to CMake or vrllib", "use another one");
}

/// A dangling link exists, too, and must not be followed.
void checkFolder(std::string const& folder) {
    std::error_code error;
    auto const status = fs::symlink_status(folder, error);
    if (status.type() == fs::file_type::not_found) return;
    if (!fs::is_directory(folder, error)) throw Failure(folder, "is no folder", "name a new one");
    bool const empty = fs::is_empty(folder, error);
    if (error) throw Failure(folder, "cannot be read: " + error.message(), "name a new one");
    if (!empty) throw Failure(folder, "is not empty, and nothing is overwritten", "name a new one");
}

std::string filledIn(std::string text, std::string const& name) {
    for (auto place = text.find(kPlaceholder); place != std::string::npos;
         place = text.find(kPlaceholder, place + name.size()))
        text.replace(place, sizeof kPlaceholder - 1, name);
    return text;
}

void makeFolderFor(fs::path const& file) {
    std::error_code error;
    fs::create_directories(file.parent_path(), error);
    if (error) throw Failure(file.parent_path().string(), "cannot be made: " + error.message());
}

}  // namespace

std::vector<std::string> startPlugin(std::string const& name, std::string const& folder,
                                     std::vector<StarterFile> const& files) {
    checkName(name);
    checkFolder(folder);
    std::vector<std::string> written;
    for (StarterFile const& file : files) {
        fs::path const path = fs::path(folder) / file.path;
        makeFolderFor(path);
        saveFile(path.string(), filledIn(file.text, name));
        written.push_back(file.path);
    }
    return written;
}

}  // namespace vrltool::starter
