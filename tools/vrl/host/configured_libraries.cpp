#include "host/configured_libraries.h"

#include <fnmatch.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <filesystem>
#include <map>
#include <memory>
#include <utility>

#include "vrllib/vrllib.h"

namespace vrltool {

namespace {

/// A line with a key that has to do with libraries.
struct Line {
    std::string key;
    std::string text;  ///< of the line up to its value
    std::string value;
    std::string file;
    unsigned number;
};

// The keys that the library obeys on this system, in the order in which it compares them with the start of a line.
constexpr char kFolderScan[] = "d";
constexpr char kVariable[] = "e";
constexpr char kFile[] = "f";
constexpr char kClear[] = "sodlldir_clear";
constexpr char kFolder[] = "sodlldir_linux";
constexpr char kPostfix[] = "sodllpostfix_linux";
constexpr char kName[] = "sodllfile";
constexpr char const* kKeys[] = {kFolderScan, kVariable, kFile, kClear, kFolder, kPostfix, kName};

bool isSpace(char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; }

/// Reads the lines of a file and its includes in order, in pieces and within bounds like those of the library.
class ConfigScan {
public:
    explicit ConfigScan(std::string const& path) {
        open(path);
        while (!files.empty()) {
            char piece[1024];
            if (!std::fgets(piece, sizeof piece, files.back().stream.get())) {
                files.pop_back();
                continue;
            }
            if (std::exchange(files.back().lineEnded, std::strchr(piece, '\n') != nullptr)) ++files.back().number;
            take(piece);
        }
    }

    std::vector<Line> lines;

private:
    struct Close {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    struct File {
        std::string path;
        std::unique_ptr<std::FILE, Close> stream;
        unsigned number = 0;
        bool lineEnded = true;
    };

    void open(std::string const& path) {
        std::error_code ignored;
        if (opened > 10000 || files.size() >= 509 || !std::filesystem::is_regular_file(path, ignored)) return;
        File file{path, std::unique_ptr<std::FILE, Close>(std::fopen(path.c_str(), "re"))};
        if (!file.stream) return;
        ++opened;
        files.push_back(std::move(file));
    }

    void take(std::string text) {
        text.resize(std::min(text.size(), text.find_first_of("\r\n;")));
        text.resize(std::min(text.size(), text.find('#', 1)));
        if (text.compare(0, 9, "#include ") == 0) return include(text.substr(9));
        for (char const* const key : kKeys) {
            if (text.compare(0, std::strlen(key), key) != 0) continue;
            if (key != kClear && text.find('=') == std::string::npos) continue;
            return add(key, text);
        }
    }

    void include(std::string name) {
        name.erase(0, static_cast<std::size_t>(std::find_if_not(name.begin(), name.end(), isSpace) - name.begin()));
        if (name.empty()) return;
        if (name.front() == '~') name.replace(0, 1, vrlcfgPath());
        open(name);
    }

    void add(char const* key, std::string text) {
        std::size_t begin = key == kClear ? text.size() : text.find('=') + 1;
        while (begin < text.size() && isSpace(text[begin])) ++begin;
        while (text.size() > begin && isSpace(text.back())) text.pop_back();
        lines.push_back({key, text.substr(0, begin), text.substr(begin), files.back().path, files.back().number});
    }

    std::vector<File> files;
    unsigned opened = 0;
};

/// The lines as the library understands them, with their macros expanded; without places if they do not agree.
std::vector<Line> configuredLines() {
    std::vector<Line> lines = ConfigScan(vrlConfigFile()).lines;
    std::vector<Line> withoutPlaces;
    bool agrees = true;
    for (char const* const key : kKeys) {
        if (key == kClear) continue;
        auto const values = vrlInit_getList(key);
        std::size_t next = 0;
        for (Line& line : lines)
            if (line.key == key && next++ < values.size()) line.value = values[next - 1];
        agrees = agrees && next == values.size();
        for (std::string const& value : values) withoutPlaces.push_back({key, key, value, "", 0});
    }
    return agrees ? lines : withoutPlaces;
}

std::string withTag(std::string path) {
    auto const marker = path.find("lib_wX");
    if (marker != std::string::npos) path.replace(marker + 4, 2, soloader_getDllTag());
    return path;
}

std::vector<std::string> elementsOf(std::string const& list) {
    std::vector<std::string> elements;
    for (std::size_t begin = 0; begin <= list.size();) {
        std::size_t const end = std::min(list.find(';', begin), list.size());
        elements.push_back(withTag(list.substr(begin, end - begin)));
        begin = end + 1;
    }
    return elements;
}

/// Follows the lines as start-up does.
class Expectation {
public:
    std::vector<ConfiguredLibrary> libraries;

    void obey(Line const& line) {
        if (line.key == kClear)
            folders.clear();
        else if (line.key == kFolder)
            folders.push_back(line.value + "/lib_wX_");
        else if (line.key == kPostfix)
            postfix = line.value;
        else if (line.key != kName || !line.value.empty())
            libraries.push_back({line.key, line.value, line.file, line.number, pathsOf(line), {}});
    }

private:
    std::vector<std::string> pathsOf(Line const& line) const {
        if (line.key == kFile) return elementsOf(line.value);
        if (line.key == kFolderScan)  // the line is taken whole, as the name of a folder
            return {line.text + line.value + "*" + postfix + "/lib_" + soloader_getDllTag() + postfix};
        if (line.key == kVariable) {
            char const* const list = std::getenv(line.value.c_str());
            return list ? elementsOf(list) : std::vector<std::string>();
        }
        std::vector<std::string> paths;
        for (std::string const& folder : folders) paths.push_back(withTag(folder + line.value + postfix));
        if (folders.empty()) paths.push_back(withTag(line.value + postfix));
        return paths;
    }

    std::vector<std::string> folders;
    std::string postfix;
};

/// The loads that no line has yet.
class OpenLoads {
public:
    explicit OpenLoads(std::vector<Load> const& loads) {
        for (std::size_t i = 0; i < loads.size(); ++i) byPath[loads[i].path].push_back(i);
    }

    /// Gives a line the loads that it expects: the first of an exact path, all of a pattern or a folder.
    void moveTo(ConfiguredLibrary& library) {
        for (std::string const& path : library.paths) {
            bool const several = library.key == kFolderScan || path.find('*') != std::string::npos;
            if (several)
                moveMatches(library, path);
            else if (auto const found = byPath.find(path); found != byPath.end() && !found->second.empty())
                moveFirst(library, found->second);
        }
        std::sort(library.loads.begin(), library.loads.end());
    }

private:
    using Places = std::deque<std::size_t>;

    static void moveFirst(ConfiguredLibrary& library, Places& places) {
        library.loads.push_back(places.front());
        places.pop_front();
    }

    void moveMatches(ConfiguredLibrary& library, std::string const& pattern) {
        for (auto& entry : byPath)
            while (!entry.second.empty() && leadsTo(library.key, pattern, entry.first))
                moveFirst(library, entry.second);
    }

    /// Whether a pattern leads to a path: the library loads what a list finds under its bare name, and what a folder
    /// holds under its path.
    static bool leadsTo(std::string const& key, std::string const& pattern, std::string const& path) {
        std::size_t const folder = pattern.find_last_of('/') + 1;
        if (key == kFolderScan) return path.compare(0, folder, pattern, 0, folder) == 0;
        return path.find('/') == std::string::npos &&
               fnmatch(pattern.c_str() + folder, path.c_str(), FNM_NOESCAPE) == 0;
    }

    std::map<std::string, Places> byPath;
};

}  // namespace

bool ConfiguredLibrary::failed(std::vector<Load> const& all) const {
    return !loads.empty() && std::none_of(loads.begin(), loads.end(), [&](std::size_t place) {
        return all[place].result == Load::Result::kLoaded;
    });
}

std::vector<ConfiguredLibrary> configuredLibraries(std::vector<Load> const& loads) {
    Expectation expected;
    for (Line const& line : configuredLines()) expected.obey(line);
    OpenLoads open(loads);
    for (ConfiguredLibrary& library : expected.libraries) open.moveTo(library);
    return std::move(expected.libraries);
}

}  // namespace vrltool
