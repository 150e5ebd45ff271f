#include <dlfcn.h>

#include <cxxabi.h>

#include <cstdlib>
#include <memory>
#include <sstream>

#include "host/loads.h"
#include "text/table.h"
#include "validate/child.h"
#include "validate/key_watch.h"
#include "validate/plugin.h"
#include "validate/process_state.h"

// What happens while a plug-in is loaded and its entry points are called.

namespace vrltool::validate {

namespace {

/// The loader's words with the names of C++ as people write them.
std::string demangled(std::string text) {
    auto const start = text.find("_Z");
    auto const end =
        std::min(text.find_first_not_of("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_.$",
                                        std::min(start, text.size())),
                 text.size());
    if (start == std::string::npos) return text;
    int state = 0;
    std::unique_ptr<char, decltype(&std::free)> const name(
        abi::__cxa_demangle(text.substr(start, end - start).c_str(), nullptr, nullptr, &state), &std::free);
    return name ? text.replace(start, end - start, name.get()) : text;
}

/// The loader's message without the path of the plug-in, which is in the heading.
std::string withoutPath(std::string const& text, std::string const& path) {
    std::string const head = path + ": ";
    return text.compare(0, head.size(), head) == 0 ? text.substr(head.size()) : text;
}

/// Calls each entry point, reported first; `after` gets each one that came back, with what it threw.
template <class After>
void enter(Job const& job, Report& report, After const& after) {
    for (TargetInfo const& target : kTargets) {
        report.step(std::string("calling ") + target.entry);
        bool called = false;
        std::string const thrown = throwsText([&] { called = target.load(job.plugin.c_str()); });
        if (called || !thrown.empty()) after(target, thrown);
    }
}

}  // namespace

void checkLoads(Job const& job, Report& report) {
    report.step("loading it");
    std::string error;
    if (!mapPlugin(job.plugin, error)) report.find("", demangled(withoutPath(error, job.plugin)));
}

void checkVersionFunction(Job const& job, Report& report) {
    report.step("loading it");
    std::string error;
    void* const module = mapPlugin(job.plugin, error);
    if (!module) return report.notRun("it does not load");
    auto const getAPIversion = reinterpret_cast<unsigned (*)()>(dlsym(module, "getAPIversion"));
    if (!getAPIversion) return report.find("", "exports no getAPIversion: hosts that ask for a version refuse it");
    report.step("calling getAPIversion");
    unsigned version = 0;
    std::string const thrown = throwsText([&] { version = getAPIversion(); });
    if (!thrown.empty()) return report.find("getAPIversion", thrown);
    if (version == 0) return report.find("getAPIversion", "returns the version 0");
    if (version > vrlLibraryVersion())
        return report.find("getAPIversion",
                           "returns " + versionText(version) + ", and this library is " + vrlLibraryVersionText());
    report.note(versionText(version));
}

void checkEntryReturns(Job const& job, Report& report) {
    std::size_t count = 0;
    enter(job, report, [&](TargetInfo const& target, std::string const& thrown) {
        ++count;
        if (!thrown.empty()) report.find(target.entry, thrown);
    });
    if (count == 0 && report.clean()) report.find("", "none of its entry points was called");
    report.note(counted(count, "entry point"));
}

void checkEntryQuiet(Job const& job, Report& report) {
    report.step("loading it");
    std::string error;
    printedSoFar();
    mapPlugin(job.plugin, error);
    if (std::string const text = printedSoFar(); !text.empty()) report.find("loading", "prints " + firstLine(text));
    vrlCoutReset();
    enter(job, report, [&](TargetInfo const& target, std::string const&) {
        if (std::string const text = printedSoFar(); !text.empty())
            report.find(target.entry, "prints " + firstLine(text));
    });
    if (std::string const text = vrlGetCoutMsg(); !text.empty()) report.note("message channel: " + firstLine(text));
}

void checkOneClassPerKey(Job const& job, Report& report) {
    KeyWatch watched;
    enter(job, report, [](TargetInfo const&, std::string const&) {});
    for (ReplacedClass const& replaced : watched.end())
        report.find(replaced.thing, "is registered for " + replaced.first + ", then for " + replaced.last +
                                        ", of which only the last is ever made");
}

void checkBringsKeys(Job const& job, Report& report) {
    Keys keys;
    std::string const thrown = throwsText([&] { keys = loadPlugin(job.plugin, report); });
    if (!thrown.empty()) return report.notRun("an entry point " + thrown);
    for (std::size_t i = 0; i < kTargetCount; ++i)
        for (std::string const& key : keys.of[i])
            if (key.empty())
                report.find(kTargets[i].entry, "registers a class under the empty key, under which nothing is made");
    if (keys.empty()) report.find("", "registers nothing in its entry points");
    report.note(keysText(keys));
}

void checkPostLoad(Job const& job, Report& report) {
    auto const loaded = loadForCheck(job, report);
    if (!loaded) return;
    Keys const before = presentKeys();
    printedSoFar();
    std::string error;
    void* const module = mapPlugin(job.plugin, error);
    char const* const hook = "initLibraryPostLoad";
    auto const call = reinterpret_cast<void (*)()>(dlsym(module, hook));
    if (!call) return report.note("it has none");
    // Each start of the library calls the hook, so it has to work repeatedly.
    for (char const* const time : {"first", "second", "third"}) {
        report.step(std::string("calling ") + hook + " for the " + time + " time");
        std::string const thrown = throwsText(call);
        if (!thrown.empty()) return report.find(hook, thrown + ", called for the " + time + " time");
        if (std::string const text = printedSoFar(); !text.empty())
            report.find(hook, "prints " + firstLine(text) + ", called for the " + time + " time",
                        "write messages with vrlPrintf or vrlCout(), the message channel");
    }
    if (!(presentKeys() == before)) report.find(hook, "registers or removes keys", "do that in the entry points");
}

void checkProcessEnd(Job const& job, Report& report) {
    if (!loadForCheck(job, report)) return;
    static_cast<void>(throwsText([] { soloader_PostLoad(); }));
    report.step("the program ends");
}

void checkProcessState(Job const& job, Report& report) {
    auto const before = processState();
    if (!loadForCheck(job, report)) return;
    report.step("calling initLibraryPostLoad");
    static_cast<void>(throwsText([] { soloader_PostLoad(); }));
    auto const after = processState();
    for (std::size_t i = 0; i < before.size(); ++i)
        if (after[i].state != before[i].state) report.find("", std::string("changes ") + before[i].name);
}

}  // namespace vrltool::validate
