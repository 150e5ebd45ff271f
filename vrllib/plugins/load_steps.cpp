#include "vrllib/plugins/load_steps.h"

#include <algorithm>
#include <chrono>
#include <ostream>
#include <utility>

#include "vrllib/core/fixed_text.h"
#include "vrllib/core/messages.h"
#include "vrllib/core/thrown_text.h"
#include "vrllib/platform/platform.h"
#include "vrllib/plugins/load_targets.h"
#include "vrllib/plugins/loader.h"
#include "vrllib/plugins/loader_state.h"
#include "vrllib/plugins/observed_call.h"

namespace Vorlane_v1_0::detail {

namespace {

using Clock = std::chrono::steady_clock;
using Reason = platform::SystemError::Reason;

/// One load: a file for a target.
class Load {
public:
    Load(char const* file, char const* entryName, char const* labelText, bool reportUnmapped);

    /// Maps the file, asks for its version, finds its entry point and calls it; then reports. What code of the library
    /// throws passes through unless the observer absorbs it.
    bool run(EntryCall call, void* factory);

private:
    bool succeeds(EntryCall call, void* factory);
    void* map();
    bool passesGate(void* module);
    void report();
    void writeMessage() const;
    std::ostream& writeFailure() const;

    std::string entry;
    std::string label;
    bool verbose;
    LoadEvent event;
    platform::SystemError error;
};

Load::Load(char const* file, char const* entryName, char const* labelText, bool reportUnmapped)
    : entry(entryName ? entryName : ""), label(labelText ? labelText : ""), verbose(reportUnmapped) {
    auto const& targets = loadTargets();
    auto const target =
        std::find_if(targets.begin(), targets.end(), [&](TargetLoads const& loads) { return loads.entry == entry; });
    event.target = static_cast<LoadTarget>(target - targets.begin());  // kOther comes after the seven
    event.path = file ? file : "";
    event.line = loaderState().line;
    if (event.line == LoadEvent::kNoLine) return;
    LoadLine const& line = loaderState().report.lines[event.line];
    event.configFile = line.file;
    event.configLine = line.number;
}

bool Load::run(EntryCall call, void* factory) {
    auto const began = Clock::now();
    auto const end = [&] {
        event.seconds = std::chrono::duration<double>(Clock::now() - began).count();
        report();
    };
    bool loaded = false;
    try {
        loaded = succeeds(call, factory);
    } catch (...) {
        event.outcome = LoadOutcome::kEntryThrew;
        event.text = thrownText();
        event.thrown = std::current_exception();
        end();
        LoadObserver* const observer = loaderState().observer;
        if (observer && observer->absorbs(event)) return false;
        throw;
    }
    (loaded ? InsertSuccessfullyLoadedDll : InsertUnsuccessfullyLoadedDll)(event.path);
    end();
    return loaded;
}

bool Load::succeeds(EntryCall call, void* factory) {
    void* const module = map();
    if (!module) return false;
    if (!passesGate(module)) {
        event.outcome = LoadOutcome::kVersionRefused;
        return false;
    }
    void* const found = platform::findSymbol(module, entry.c_str(), error);
    if (!found) {
        event.outcome = LoadOutcome::kNoEntryPoint;
        return false;
    }
    observedCall(event.path, entry, [&] {
        call(found, factory);
        return true;
    });
    soload_addSo(module);  // only now: the hooks after all loading leave out a library whose entry point threw
    event.outcome = LoadOutcome::kLoaded;
    return true;
}

// Static objects of a library may register keys while it is mapped, so the factories are looked at before that.
void* Load::map() {
    LoaderState& state = loaderState();
    if (state.observer && !state.observer->mayLoad(event.path)) {
        event.outcome = LoadOutcome::kDeclined;
        return nullptr;
    }
    if (state.triedPaths.insert(event.path).second) state.registeredKeys.update();
    void* const module = observedCall(event.path, {}, [&] { return platform::loadLibrary(event.path.c_str(), error); });
    if (module)
        event.file = platform::moduleFile(module);
    else if (error.reason == Reason::kNotARegularFile)
        event.outcome = LoadOutcome::kNotARegularFile;
    return module;
}

bool Load::passesGate(void* module) {
    event.neededVersion = loaderState().requiredApiVersion;
    if (event.neededVersion == 0) return true;
    auto const version = versionFunction(module);
    event.hasVersion = version != nullptr;
    if (version) event.foundVersion = observedCall(event.path, kVersionFunction, version);
    return version && event.foundVersion >= event.neededVersion;
}

/// Whether a plug-in just does not extend the type, which is nothing to report.
bool isUsualCase(platform::SystemError const& error) {
    return error.reason == Reason::kMissingSymbol || error.text == "The specified procedure could not be found.\r\n" ||
           error.text == "Procedure not found\n";
}

std::ostream& Load::writeFailure() const {
    return vrlCout() << "Can't load '" << event.path << "' as " << label << " dll";
}

void Load::writeMessage() const {
    switch (event.outcome) {
    case LoadOutcome::kLoaded:
    case LoadOutcome::kEntryThrew:
        return;
    case LoadOutcome::kVersionRefused:
        vrlCout() << "Old version: " << event.path << " : not loaded.\n";
        return;
    case LoadOutcome::kNoEntryPoint:
        if (error.code == 0)
            writeFailure() << ".\n";
        else if (!isUsualCase(error))
            writeFailure() << " (" << event.text << ")\n";
        return;
    case LoadOutcome::kNotMapped:
    case LoadOutcome::kNotARegularFile:
    case LoadOutcome::kDeclined:
        if (!verbose) return;
        if (error.code != 0)
            writeFailure() << " (" << event.text << ")\n";
        else
            vrlCout() << "Loading of '" << event.path << "' as " << label << " failed.\n";
    }
}

void Load::report() {
    LoaderState& state = loaderState();
    if (event.outcome == LoadOutcome::kLoaded || event.outcome == LoadOutcome::kEntryThrew)
        event.keys = state.registeredKeys.takeChanges();
    else
        event.text = error.text;
    writeMessage();
    state.report.events.push_back(event);
    if (state.observer) state.observer->onLoad(event);
}

/// A pattern that would leave no room for its terminator. Longer ones pass this test and are cut.
bool endsAtTheEdge(std::string const& pattern) {
    return pattern.size() == kFileArray - 2 || pattern.size() == kFileArray - 1;
}

/// Calls a function with each match that is a file. False if nothing matched, not even a folder.
template <class Use>
bool forEachFile(std::string const& pattern, Use const& use) {
    if (!takeLoad()) return false;
    auto const matches = platform::listMatches(pattern);
    for (auto const& match : matches)
        if (!match.isFolder) use(match.name);
    return !matches.empty();
}

}  // namespace

bool loadModule(char const* file, char const* entry, EntryCall call, void* factory, char const* label, bool verbose) {
    return takeLoad() && Load(file, entry, label, verbose).run(call, factory);
}

// A pattern that finds nothing or ends at the edge ends the whole list: what follows is not tried, and what
// was loaded before is not reported.
bool loadList(char const* list, bool verbose, FileLoad load) {
    std::string rest = fitted(list, kListArray);
    bool loaded = false;
    do {
        std::size_t const end = rest.find(';');
        std::string element = rest.substr(0, end);
        rest = end == std::string::npos ? std::string() : rest.substr(end + 1);
        replaceTag(element);
        if (element.find('*') == std::string::npos) {
            loaded = load(element.c_str(), verbose) || loaded;
            continue;
        }
        if (endsAtTheEdge(element)) return false;
        auto const loadMatch = [&](std::string const& name) { loaded = load(name.c_str(), verbose) || loaded; };
        if (!forEachFile(fitted(element, kFileArray), loadMatch)) return false;
    } while (!rest.empty());
    return loaded;
}

bool loadFolder(char const* dir, char const* postfix, bool verbose, FileLoad load) {
    std::string const folder = dir ? dir : "";
    if (endsAtTheEdge(folder)) return false;
    std::string const separator(1, platform::kSeparator);
    std::string const tail = fitted(separator + "lib_" + soloader_getDllTag() + (postfix ? postfix : ""), kFileArray);
    bool loaded = false;
    forEachFile(fitted(folder + tail, kFileArray), [&](std::string const& name) {
        loaded = load(fitted(folder + separator + name, kFileArray).c_str(), verbose) || loaded;
    });
    return loaded;
}

bool loadVariable(char const* name, bool verbose, FileLoad load) {
    auto const list = platform::environment(name);
    if (list) return loadList(list->c_str(), verbose, load);
    if (verbose) vrlCout() << "No env. setting for '" << (name ? name : "") << "'\n";
    return false;
}

void replaceTag(std::string& text) {
    auto const marker = text.find("lib_wX");
    if (marker != std::string::npos) text.replace(marker + 4, 2, soloader_getDllTag());
}

}  // namespace Vorlane_v1_0::detail
