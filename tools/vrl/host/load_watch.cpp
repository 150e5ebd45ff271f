#include "host/load_watch.h"

#include <dlfcn.h>
#include <link.h>

#include <algorithm>
#include <chrono>
#include <iostream>
#include <memory>
#include <tuple>
#include <utility>

#include "guard/foreign_work.h"
#include "guard/thrown.h"
#include "host/configured_libraries.h"
#include "text/table.h"
#include "vrllib/platform/platform.h"

// The library tells a host what failed as text for people only. The calls that it makes of the system can be replaced;
// watching them there is the one thing that this program takes from behind the public interface.
//
// One load of a file for one target is: loadLibrary; findSymbol of getAPIversion, if a version is asked for;
// findSymbol of the entry point; and, if that is there, its call, which ends unseen ahead of the next of these. A file
// is loaded for all seven targets.

namespace vrltool {

namespace {

namespace platform = Vorlane_v1_0::platform;
using Clock = std::chrono::steady_clock;
using Result = Load::Result;

constexpr char kVersionFunction[] = "getAPIversion";

/// The virtual table of the creator of each key, by target and key: it tells the class, and where its code lies.
using Keys = std::map<std::pair<std::size_t, std::string>, void const*>;

void const* tableOf(void const* creator) { return *static_cast<void const* const*>(creator); }

template <class T>
void addKeys(Keys& keys, std::size_t target) {
    for (auto entry = FactoryLoader<T>::begin(); entry != FactoryLoader<T>::end(); ++entry)
        keys[{target, entry->first}] = tableOf(entry->second);
}

Keys presentKeys() {
    Keys keys;
    addKeys<vrl::Attribute>(keys, 0);
    addKeys<vrl::Foundry>(keys, 1);
    addKeys<vrl::BB>(keys, 2);
    addKeys<vrl::Netlist>(keys, 3);
    addKeys<vrl::View>(keys, 4);
    addKeys<vrl::TypeView<vrl::BB>>(keys, 5);
    addKeys<vrl::TypeView<vrl::Netlist>>(keys, 6);
    return keys;
}

std::string fileWith(void const* address) {
    Dl_info info;
    return dladdr(address, &info) != 0 && info.dli_fname ? info.dli_fname : "";
}

std::string fileOfModule(void* module) {
    link_map* map = nullptr;
    return dlinfo(module, RTLD_DI_LINKMAP, &map) == 0 && map ? map->l_name : "";
}

struct Watch {
    platform::ReplaceableCalls system = platform::calls();
    WatchOptions options;
    std::vector<Load> loads;
    std::vector<unsigned> targetsTried;  ///< of each load, up to seven
    std::map<std::string, std::size_t> lastOfPath;
    std::map<void*, std::size_t> loadOfModule;
    std::size_t current = 0;  ///< the load that is under way
    bool gateAsked = false;   ///< the version gate looks at it, and has not let it pass
    void* versionFunction = nullptr;
    void (*entry)(void* factory) = nullptr;  ///< that callEntry calls
    bool entryCalled = false;                ///< its entry point was called since the keys were looked at
    Clock::time_point since;
    Keys keys;
    std::string work;
    std::unique_ptr<ForeignWork> foreign;
};

// Never destroyed: plug-ins may load others until the process ends.
Watch*& watchPlace() {
    static Watch* place = nullptr;
    return place;
}

Watch& watch() { return *watchPlace(); }

void beginWork(std::string const& path, std::string const& function) {
    Watch& w = watch();
    w.work = path + ": " + (function.empty() ? "mapping it" : function);
    w.foreign.reset();
    w.foreign = std::make_unique<ForeignWork>(w.work);
    w.since = Clock::now();
    if (w.options.observer) w.options.observer(path, function);
}

unsigned probedVersion = 0;
unsigned probe() { return probedVersion; }

/// Answers the version gate in the place of a plug-in.
void* findProbe(void*, char const*, platform::SystemError&) { return reinterpret_cast<void*>(&probe); }

/// The version that plug-ins need: the lowest that passes the gate. The library keeps it to itself.
unsigned neededVersion() {
    auto const usual = platform::calls().findSymbol;
    platform::calls().findSymbol = &findProbe;
    unsigned low = 0, high = ~0u;
    while (low < high) {
        probedVersion = low + (high - low) / 2;
        if (checkLibraryVersion(nullptr))
            high = probedVersion;
        else
            low = probedVersion + 1;
    }
    platform::calls().findSymbol = usual;
    return low;
}

std::string versionText(unsigned version) {
    return std::to_string(version / 10000) + "." + std::to_string(version / 100 % 100) + "." +
           std::to_string(version % 100);
}

std::string refusalText(void* versionFunction) {
    std::string const needed = "version " + versionText(neededVersion()) + " of the interface is asked for";
    if (!versionFunction) return "it has no getAPIversion, and " + needed;
    auto const ask = reinterpret_cast<unsigned (*)()>(versionFunction);
    return "it is of version " + versionText(ask()) + ", and " + needed;
}

/// The load whose file holds the code of a key; that under way for a file that was not loaded as a plug-in.
Load& ownerOf(std::string const& file) {
    auto& loads = watch().loads;
    auto const found = std::find_if(loads.begin(), loads.end(), [&](Load const& load) { return load.file == file; });
    return found == loads.end() ? loads[watch().current] : *found;
}

void noteKeys() {
    Keys now = presentKeys();
    for (auto const& entry : now) {
        auto const before = watch().keys.find(entry.first);
        bool const isNew = before == watch().keys.end();
        if (!isNew && before->second == entry.second) continue;
        std::string const file = fileWith(entry.second);
        std::string const from = isNew ? "" : fileWith(before->second);
        if (isNew || from != file) ownerOf(file).keys.push_back({entry.first.first, entry.first.second, file, from});
    }
    watch().keys = std::move(now);
}

/// Ends what was under way: notes its time and the keys that came.
void settle() {
    Watch& w = watch();
    w.foreign.reset();
    if (w.loads.empty()) return;
    Load& load = w.loads[w.current];
    std::chrono::duration<double, std::milli> const time = Clock::now() - w.since;
    if (std::exchange(w.entryCalled, false)) {
        load.milliseconds += time.count();
        noteKeys();
    }
    if (std::exchange(w.gateAsked, false)) {
        if (load.result != Result::kLoaded) load.result = Result::kRefused;
        load.reason = refusalText(w.versionFunction);
    }
}

/// The load that a path belongs to: the last one of that path, unless it was tried for all targets; then a new one.
std::size_t placeOf(std::string const& path) {
    Watch& w = watch();
    auto const last = w.lastOfPath.find(path);
    if (last != w.lastOfPath.end() && w.targetsTried[last->second] < kTargets.size()) return last->second;
    w.loads.push_back({});
    w.loads.back().path = path;
    w.targetsTried.push_back(0);
    return w.lastOfPath[path] = w.loads.size() - 1;
}

void* loadLibrary(char const* path, platform::SystemError& error) {
    settle();
    Watch& w = watch();
    w.current = placeOf(path);
    ++w.targetsTried[w.current];
    auto const skipped = w.options.skipped.find(path);
    if (skipped != w.options.skipped.end()) {
        w.loads[w.current].result = Result::kEnded;
        w.loads[w.current].reason = skipped->second;
        error = {};
        return nullptr;
    }
    std::size_t const own = w.current;  // its static objects may load others
    beginWork(path, "");
    void* const module = w.system.loadLibrary(path, error);
    std::chrono::duration<double, std::milli> const time = Clock::now() - w.since;
    w.foreign.reset();
    w.current = own;
    Load& load = w.loads[own];
    load.milliseconds += time.count();
    if (!module) {
        load.reason = error.text.empty() ? "the system gives no reason" : error.text;
        return nullptr;
    }
    if (load.result == Result::kUnmapped) {
        load.result = Result::kNoEntry;
        load.reason = "it has no entry point of a plug-in";
    }
    load.file = fileOfModule(module);
    w.loadOfModule[module] = own;
    return module;
}

void takeEntry(Load& load, std::size_t target) {
    watch().entryCalled = true;
    if (load.result != Result::kLoaded) load.reason.clear();
    load.result = Result::kLoaded;
    if (std::find(load.serves.begin(), load.serves.end(), target) == load.serves.end()) load.serves.push_back(target);
}

/// Stands in for an entry point, and keeps what that throws from ending the whole start.
void callEntry(void* factory) {
    Watch& w = watch();
    std::size_t const own = w.current;  // the entry point may load others
    std::string const work = w.work;
    try {
        w.entry(factory);
    } catch (...) {
        settle();
        w.current = own;
        Load& load = w.loads[own];
        load.result = Result::kEnded;
        load.reason = "the plug-in threw " + printable(thrownText()) + " in " + work.substr(load.path.size() + 2);
        w.options.skipped[load.path] = load.reason;
        std::cerr << "vrl: " << printable(load.path) << ": not loaded: " << load.reason << '\n';
    }
}

void* findSymbol(void* module, char const* name, platform::SystemError& error) {
    Watch& w = watch();
    auto const target =
        static_cast<std::size_t>(std::find_if(kTargets.begin(), kTargets.end(),
                                              [&](TargetWords const& t) { return t.entry == std::string(name); }) -
                                 kTargets.begin());
    if (target < kTargets.size()) w.gateAsked = false;  // it has passed
    settle();
    void* const symbol = w.system.findSymbol(module, name, error);
    auto const owner = w.loadOfModule.find(module);
    if (owner == w.loadOfModule.end()) return symbol;
    w.current = owner->second;
    if (name == std::string(kVersionFunction)) {
        w.gateAsked = true;
        w.versionFunction = symbol;
    }
    if (!symbol) return symbol;
    if (target < kTargets.size()) takeEntry(w.loads[w.current], target);
    beginWork(w.loads[w.current].path, name);
    if (target == kTargets.size() || !w.options.enduresThrows) return symbol;
    w.entry = reinterpret_cast<void (*)(void*)>(symbol);
    return reinterpret_cast<void*>(&callEntry);
}

}  // namespace

void watchLoads(WatchOptions options) {
    watchPlace() = new Watch;
    watch().options = std::move(options);
    vrl::Attributes::factory();  // the library's own types are nobody's
    watch().keys = presentKeys();
    platform::calls().loadLibrary = &loadLibrary;
    platform::calls().findSymbol = &findSymbol;
}

bool watchesLoads() { return watchPlace() != nullptr; }

std::vector<Load> const& watchedLoads() {
    settle();
    auto const byTarget = [](BroughtKey const& a, BroughtKey const& b) {
        return std::tie(a.target, a.key) < std::tie(b.target, b.key);
    };
    for (Load& load : watch().loads) std::stable_sort(load.keys.begin(), load.keys.end(), byTarget);
    return watch().loads;
}

std::string lastWork() { return watch().work; }

std::vector<FailedLibrary> failedLibraries() {
    std::vector<FailedLibrary> failed;
    if (!watchesLoads()) return failed;
    auto const& loads = watchedLoads();
    for (ConfiguredLibrary const& library : configuredLibraries(loads))
        if (library.failed(loads))
            for (std::size_t const place : library.loads) failed.push_back({loads[place].path, loads[place].reason});
    return failed;
}

std::string pluginOf(void const* creator) { return fileWith(tableOf(creator)); }

std::string pluginName(std::string const& file) {
    std::string name = file.substr(file.find_last_of('/') + 1);
    std::string const prefix = std::string("lib_") + soloader_getDllTag() + "_";
    if (name.compare(0, prefix.size(), prefix) == 0) name.erase(0, prefix.size());
    return name.substr(0, name.find(".so"));
}

std::vector<std::string> configFilePlaces() { return platform::calls().configFilePlaces(); }

}  // namespace vrltool
