#include "host/loads.h"

#include <dlfcn.h>

#include <algorithm>
#include <exception>
#include <iterator>
#include <tuple>
#include <utility>

#include "guard/thrown.h"

namespace vrltool {

namespace {

using Result = Load::Result;
using vrl::LoadEvent;
using vrl::LoadOutcome;

std::map<std::string, std::string> skipped;

std::string refusalReason(LoadEvent const& event) {
    std::string const needed = "version " + versionText(event.neededVersion) + " of the interface is asked for";
    if (!event.hasVersion) return "it has no getAPIversion, and " + needed;
    return "it is of version " + versionText(event.foundVersion) + ", and " + needed;
}

Result resultOf(LoadEvent const& event) {
    switch (event.outcome) {
    case LoadOutcome::kLoaded:
        return Result::kLoaded;
    case LoadOutcome::kNotMapped:
    case LoadOutcome::kNotARegularFile:
        return Result::kUnmapped;
    case LoadOutcome::kVersionRefused:
        return Result::kRefused;
    case LoadOutcome::kNoEntryPoint:
        return Result::kNoEntry;
    case LoadOutcome::kEntryThrew:
    case LoadOutcome::kDeclined:
        break;
    }
    return Result::kEnded;
}

std::string reasonOf(LoadEvent const& event) {
    switch (resultOf(event)) {
    case Result::kLoaded:
        break;
    case Result::kUnmapped:
        return event.text.empty() ? "the system reports no reason" : event.text;
    case Result::kRefused:
        return refusalReason(event);
    case Result::kNoEntry:
        return "it has no entry point of a plug-in";
    case Result::kEnded:
        auto const known = skipped.find(event.path);
        return known == skipped.end() ? event.text : known->second;
    }
    return {};
}

/// What ended counts for all targets, and what was loaded for one target is loaded.
unsigned weight(Result result) { return result == Result::kEnded ? 2 : result == Result::kLoaded ? 1 : 0; }

void add(Load& load, LoadEvent const& event, bool isFirst) {
    Result const result = resultOf(event);
    if (isFirst || weight(result) > weight(load.result)) {
        load.result = result;
        load.reason = reasonOf(event);
    }
    if (load.file.empty()) load.file = event.file;
    if (result == Result::kLoaded) load.serves.push_back(static_cast<std::size_t>(event.target));
    load.keys.insert(load.keys.end(), event.keys.begin(), event.keys.end());
    load.milliseconds += event.seconds * 1000;
}

}  // namespace

bool ConfiguredLibrary::failed(std::vector<Load> const& all) const {
    return !loads.empty() &&
           std::none_of(loads.begin(), loads.end(), [&](std::size_t i) { return all[i].result == Result::kLoaded; });
}

std::vector<Load> loadsSoFar() {
    std::vector<Load> loads;
    // The last load of each path and line with its last target; a lower or equal target begins another load.
    std::map<std::pair<std::string, std::size_t>, std::pair<std::size_t, vrl::LoadTarget>> last;
    for (LoadEvent const& event : vrlLoadReport().events) {
        auto const [place, isNew] = last.try_emplace({event.path, event.line}, loads.size(), event.target);
        bool const isFirst = isNew || event.target <= place->second.second;
        if (isFirst) {
            place->second.first = loads.size();
            loads.emplace_back();
            loads.back().path = event.path;
            loads.back().line = event.line;
        }
        place->second.second = event.target;
        add(loads[place->second.first], event, isFirst);
    }
    auto const byTarget = [](vrl::LoadedKey const& a, vrl::LoadedKey const& b) {
        return std::tie(a.target, a.key) < std::tie(b.target, b.key);
    };
    for (Load& load : loads) std::stable_sort(load.keys.begin(), load.keys.end(), byTarget);
    return loads;
}

std::vector<ConfiguredLibrary> configuredLibraries(std::vector<Load> const& loads) {
    std::vector<ConfiguredLibrary> libraries;
    for (vrl::LoadLine const& line : vrlLoadReport().lines) libraries.push_back({line, {}});
    for (std::size_t i = 0; i < loads.size(); ++i)
        if (loads[i].line != LoadEvent::kNoLine) libraries[loads[i].line].loads.push_back(i);
    return libraries;
}

std::string versionText(unsigned version) {
    return std::to_string(version / 10000) + "." + std::to_string(version / 100 % 100) + "." +
           std::to_string(version % 100);
}

void skipPath(std::string const& path, std::string const& reason) { skipped[path] = reason; }

std::map<std::string, std::string> const& skippedPaths() { return skipped; }

std::string throwReason(vrl::LoadEvent const& event, std::string const& function) {
    return "the plug-in threw " + thrownBy([&] { std::rethrow_exception(event.thrown); }) + " in " + function;
}

std::vector<FailedLibrary> failedLibraries() {
    std::vector<FailedLibrary> failed;
    auto const loads = loadsSoFar();
    for (ConfiguredLibrary const& library : configuredLibraries(loads))
        if (library.failed(loads))
            for (std::size_t const place : library.loads) failed.push_back({loads[place].path, loads[place].reason});
    return failed;
}

std::string fileOfType(std::type_info const& type) {
    Dl_info info;
    return dladdr(&type, &info) != 0 && info.dli_fname ? info.dli_fname : "";
}

std::string pluginName(std::string const& file) {
    std::string name = file.substr(file.find_last_of('/') + 1);
    std::string const prefix = std::string("lib_") + soloader_getDllTag() + "_";
    if (name.compare(0, prefix.size(), prefix) == 0) name.erase(0, prefix.size());
    return name.substr(0, name.find(".so"));
}

}  // namespace vrltool
