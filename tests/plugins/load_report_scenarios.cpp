#include <iostream>
#include <string>

#include "tests/support/load_texts.h"
#include "tests/support/scenario.h"
#include "vrllib/vrllib.h"

namespace {

using namespace Vorlane_v1_0;

constexpr char const* kOutcomes[] = {
    "loaded", "not mapped", "not a regular file", "version refused", "no entry point", "entry threw", "declined"};

std::string bare(std::string const& path) { return path.substr(path.rfind('/') + 1); }

/// One line for an event: target, outcome, path, and what else is known.
void write(LoadEvent const& event) {
    std::cout << static_cast<int>(event.target) << " " << kOutcomes[static_cast<int>(event.outcome)] << " "
              << bare(event.path);
    if (!event.file.empty() && bare(event.file) != bare(event.path)) std::cout << ", file " << bare(event.file);
    if (event.configLine != 0) std::cout << ", line " << event.configLine << " of " << bare(event.configFile);
    if (event.neededVersion != 0) std::cout << ", needed " << event.neededVersion;
    if (event.hasVersion) std::cout << ", found " << event.foundVersion;
    if (!event.text.empty()) std::cout << ", text <" << event.text << ">";
    for (LoadedKey const& key : event.keys) {
        std::cout << ", key " << static_cast<int>(key.target) << " " << key.key << " of " << bare(key.file);
        if (!key.takenFrom.empty()) std::cout << " from " << bare(key.takenFrom);
    }
    std::cout << (event.seconds > 0 ? "\n" : ", no time\n");
}

void writeReport() {
    for (LoadLine const& line : vrlLoadReport().lines)
        std::cout << bare(line.file) << ":" << line.number << ": " << line.key << " <" << line.value << ">\n";
    for (LoadEvent const& event : vrlLoadReport().events) write(event);
}

/// Writes what it is called with. It declines the library onlyFoundry and absorbs what entry points throw.
class Witness : public LoadObserver {
public:
    bool mayLoad(std::string const& path) override { return path.find("onlyFoundry") == std::string::npos; }
    void beforeCall(std::string const& path, std::string const& function) override {
        std::cout << "before " << bare(path) << " " << function << "\n";
    }
    void afterCall(std::string const& path, std::string const& function) override {
        std::cout << "after " << bare(path) << " " << function << "\n";
    }
    void onLoad(LoadEvent const& event) override { write(event); }
    bool absorbs(LoadEvent const&) override { return true; }
};

template <class T>
void load(std::string const& name) {
    FactoryLoader<T>::loadLibs(vrl_test::pluginFile(name).c_str(), true);
}

}  // namespace

/// Loads blocks from each plug-in that is named and writes the report.
VRL_SCENARIO(ReportOfBlocks) {
    for (auto const& name : arguments) load<BB>(name);
    writeReport();
}

/// The same for files.
VRL_SCENARIO(ReportOfFiles) {
    for (auto const& file : arguments) FactoryLoader<BB>::loadLibs(file.c_str(), true);
    writeReport();
}

/// Starts with a file and writes the report.
VRL_SCENARIO(ReportOfStart) {
    vrlConfigFile(arguments[0].c_str());
    vrlInit_StandardSo("noEntry");
    vrlInit_vrllib(false, false);
    writeReport();
}

VRL_SCENARIO(ReportOfVersions) {
    std::cout << vrlNeededPluginVersion() << "\n";
    needsLibaryVersion(2, 1, 11);
    std::cout << vrlNeededPluginVersion() << "\n";
    for (char const* const name : {"version20110", "version20111", "onlyFoundry"}) load<BB>(name);
    writeReport();
}

VRL_SCENARIO(ReportOfAThrow) {
    try {
        load<Foundry>("throwing");
    } catch (std::exception const& error) {
        std::cout << "thrown: " << error.what() << "\n";
    }
    writeReport();
}

VRL_SCENARIO(ObservedLoads) {
    Witness witness;
    std::cout << (vrlSetLoadObserver(&witness) == nullptr) << "\n";
    load<Foundry>("onlyFoundry");
    load<Foundry>("throwing");
    load<Foundry>("threeEntries");
    soloader_PostLoad();
    std::cout << (vrlSetLoadObserver(nullptr) == &witness) << "\n";
    load<Foundry>("noEntry");
    std::cout << vrlGetCoutMsg();
}
