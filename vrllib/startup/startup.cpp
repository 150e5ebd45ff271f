#include "vrllib/startup/startup.h"

#include <algorithm>
#include <cstring>

#include "vrllib/attributes/attributes.h"
#include "vrllib/core/fixed_text.h"
#include "vrllib/core/messages.h"
#include "vrllib/platform/platform.h"
#include "vrllib/plugins/factory_loader.h"
#include "vrllib/plugins/load_targets.h"
#include "vrllib/plugins/loader.h"
#include "vrllib/plugins/loader_state.h"
#include "vrllib/startup/config_reader.h"
#include "vrllib/startup/configuration.h"
#include "vrllib/startup/configuration_state.h"
#include "vrllib/startup/default_config.h"
#include "vrllib/startup/macros.h"

namespace Vorlane_v1_0::detail {

namespace {

constexpr unsigned kMostLoads = 35000;  // a library of one folder is seven loads

/// What one start-up does with the lines of the file.
class Startup {
public:
    explicit Startup(bool reportFailures) : verbose(reportFailures) {}

    /// Acts on the line that the reader is at; one without a known key is ignored.
    void act(std::string line, ConfigReader const& reader);

    /// Loads a library by its name, and the standard plug-ins before the first one. Without a name, only these.
    void loadNamed(std::string const& name);

private:
    struct Key {
        char const* text;  // compared over its whole length with the start of the line
        bool needsValue;
        bool asksForLibraries;
        void (*act)(Startup& startup, std::string const& line, std::string const& value);
    };
    static Key const* firstKey();

    static void scanFolder(std::string const& line);
    static void loadVariable(std::string const& value);
    static void addFolder(std::string const& value);

    void loadStandardPlugins();

    bool verbose;
    bool standardSoPending = true;
};

// The first key that matches, and finds the value that it needs, ends the line. Keys of other systems match none.
// A key is compared with the start of the line: "d" also takes every word that begins with it, as none of the longer
// keys does.
Startup::Key const* Startup::firstKey() {
    using Text = std::string const&;
    static Key const keys[] = {
        {"d", true, true, [](Startup&, Text line, Text) { scanFolder(line); }},
        {"e", true, true, [](Startup&, Text, Text value) { loadVariable(value); }},
        {"f", true, true, [](Startup&, Text, Text value) { loadLibsForAll(value.c_str(), true); }},
        {"sodlldir_clear", false, false, [](Startup&, Text, Text) { configuration().sodllDirs.clear(); }},
        {platform::kLibraryFolderKey, true, false, [](Startup&, Text, Text value) { addFolder(value); }},
        {platform::kLibraryPostfixKey, true, false,
         [](Startup&, Text, Text value) { configuration().sodllPostfix = value; }},
        {"sodllfile", true, true, [](Startup& startup, Text, Text value) { startup.loadNamed(value); }},
        {nullptr, false, false, nullptr}};
    return keys;
}

// Before the first name, the standard plug-ins are loaded, which no line asks for.
void Startup::act(std::string line, ConfigReader const& reader) {
    for (Key const* key = firstKey(); key->text; ++key) {
        if (line.compare(0, std::strlen(key->text), key->text) != 0) continue;
        auto const value = key->needsValue ? takeValue(line) : std::string();
        if (!value) continue;
        if (!key->asksForLibraries) return key->act(*this, line, *value);
        LoadLineScope const scope({reader.file(), reader.lineNumber(), key->text, *value});
        return key->act(*this, line, *value);
    }
}

// The line is taken unchanged, key and "=" included, so the scan reads a folder of that whole name.
void Startup::scanFolder(std::string const& line) {
    std::string const postfix = configuration().sodllPostfix;
    std::string folder = line + "*" + postfix;
    expandMacros(folder, kLineArray);
    for (TargetLoads const& target : loadTargets()) target.loadDir(folder.c_str(), postfix.c_str(), true);
}

void Startup::loadVariable(std::string const& value) {
    for (TargetLoads const& target : loadTargets()) target.loadEnvString(value.c_str(), true);
}

void Startup::addFolder(std::string const& value) {
    configuration().sodllDirs.push_back(value + platform::kSeparator + "lib_wX_");
}

// That this view is there is the mark that the main plug-in was loaded. Names that plug-ins add meanwhile are loaded as
// well, but only new ones, so that a plug-in that adds itself comes to an end.
void Startup::loadStandardPlugins() {
    if (FactoryLoader<View>::factory().find("KSR/Parser")) return;
    LoadLineScope const none;
    vrlInit_loadSo("vrldll", verbose);
    auto const& names = configuration().standardSoList;
    std::size_t const known = names.size();
    for (std::size_t i = 0; i < names.size(); ++i) {
        std::string const name = names[i];  // a copy, since the list may grow
        auto const here = names.begin() + static_cast<std::ptrdiff_t>(i);
        if (i < known || std::find(names.begin(), here, name) == here) vrlInit_loadSo(name.c_str(), verbose);
    }
}

void Startup::loadNamed(std::string const& name) {
    if (standardSoPending) {
        loadStandardPlugins();
        standardSoPending = false;
    }
    auto const& standard = configuration().standardSoList;
    if (!name.empty() && std::find(standard.begin(), standard.end(), name) == standard.end())
        vrlInit_loadSo(name.c_str(), verbose);
}

void removeAll(std::string& text, std::string const& part) {
    for (auto place = text.find(part); place != std::string::npos; place = text.find(part))
        text.erase(place, part.size());
}

// The place is not one of those that are searched: the next search writes the file again, and says so again. A path
// that `found` would cut is not written, since `found` would then name another file.
char const* writeDefaultFile() {
    auto& found = configuration().configFileFound;
    platform::makeConfigFolders();
    std::string const path = platform::defaultConfigFile();
    vrlCout() << "-- warning: no config file found, writing default one in " << path;
    store(found, path);
    std::FILE* const file = path.size() < kPathArray ? platform::openDefaultConfigFile() : nullptr;
    if (file) {
        std::fputs(kDefaultConfigText, file);
        std::fclose(file);
    } else {
        found[0] = '\0';
    }
    return found;
}

/// The file of this process: chosen on the first call, since later starts keep it even if another one is set.
std::string chosenConfigFile() {
    auto& settings = configuration();
    if (!settings.configFileInUse) {
        settings.configFileInUse = vrlConfigFile();
        Attributes::factory();  // registers the value types of the library before any plug-in registers a key
    }
    return settings.configFileInUse;
}

/// Reads the file and acts on its lines. False if it cannot be opened.
bool actOnFile(std::string const& path, Startup& startup) {
    Reading reading;
    ConfigReader reader(LineOrder::kCutFirst, reading);
    if (!reader.open(path)) return false;
    LoadAllowanceScope const allowance(kMostLoads);
    while (auto line = reader.nextLine()) {
        startup.act(std::move(*line), reader);
        reading.loadsSpent = allowance.isSpent();
    }
    return true;
}

void warnUnreadable(std::string const& path) {
    bool& due = configuration().configReadWarning;
    if (due) vrlCout() << "-- warning: no dll/so being loaded, config file <" << path << "> can not be read.\n";
    due = false;
}

}  // namespace

}  // namespace Vorlane_v1_0::detail

using namespace Vorlane_v1_0::detail;

void vrlInit_vrllib(bool showMessages, bool verbose) {
    vrlCoutReset();
    std::string const path = chosenConfigFile();
    Startup startup(verbose);
    removeAll(configuration().versionText, " beta");
    if (!actOnFile(path, startup)) return warnUnreadable(path);
    if (showMessages) vrlShowCoutMsg();
    // A file without names still gets the standard plug-ins, but after the box: their messages stay in the channel.
    startup.loadNamed("");
    soloader_PostLoad();
}

std::vector<std::string> vrlConfigFilePlaces() { return Vorlane_v1_0::platform::configFilePlaces(); }

char const* vrlConfigFile() {
    auto& settings = configuration();
    if (settings.configFileOverride[0]) return settings.configFileOverride;
    for (std::string const& place : Vorlane_v1_0::platform::configFilePlaces())
        if (Vorlane_v1_0::platform::pathExists(place)) return store(settings.configFileFound, place);
    return writeDefaultFile();
}

void vrlConfigFile(char const* path) {
    store(configuration().configFileOverride, path ? path : "");
    configuration().configPathCache.clear();  // the folder was that of the file before
}

void vrlInit_setVersion(char const* version) {
    std::string& text = configuration().versionText;
    text = fitted(version, kPathArray);
    std::size_t patch = text.find(" patch");
    if (patch == std::string::npos) patch = text.find(".patch");
    if (patch != std::string::npos) text.erase(patch);
}

void vrlInit_setUsername(char const* name) { configuration().userName = fitted(name, kUserArray); }
