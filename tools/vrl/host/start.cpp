#include "host/start.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <sstream>
#include <vector>

#include "circuit/parameters.h"
#include "guard/foreign_work.h"
#include "guard/quiet_output.h"
#include "guard/thrown.h"
#include "host/loads.h"
#include "host/targets.h"
#include "system/supervised.h"
#include "text/failure.h"
#include "text/progress.h"
#include "text/table.h"
#include "vrllib/vrllib.h"

#include <sys/mman.h>
#include <unistd.h>

namespace vrltool {

namespace {

/// The warnings of the configuration; the reports of single libraries are left to those who miss a kind. One that
/// ends in the path of the file has no line end of its own.
void showWarnings(std::string const& messages, std::string const& configFile) {
    std::istringstream lines(messages);
    for (std::string line; std::getline(lines, line);) {
        if (line.compare(0, 12, "-- warning: ") != 0) continue;
        auto const path = line.find(" one in " + configFile);
        if (path != std::string::npos) line.resize(path + 8 + configFile.size());
        std::cerr << "vrl: warning: " << line.substr(12) << '\n';
    }
}

/// Text has no zero bytes, and a library begins with some.
void refuseOtherThanText(std::string const& config) {
    constexpr std::size_t kHead = 65536;
    std::ifstream file(config);
    std::string head(kHead, ' ');
    file.read(head.data(), kHead);
    if (head.find('\0') != std::string::npos)
        throw Failure(config, "is no text, and so no configuration file",
                      "it has lines such as 'sodllfile = myPlugin'; a plug-in is named with --plugin FILE");
}

}  // namespace

void checkConfig(std::string const& config) {
    std::error_code error;
    auto const status = std::filesystem::status(config, error);
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status))
        throw Failure(config, "is not a regular file", "give a configuration file with --config FILE");
    std::ifstream file(config);
    if (!file || file.peek() == std::ifstream::traits_type::eof())
        throw Failure(config, file.eof() ? "the configuration file is empty" : "cannot read this configuration file",
                      "give a readable file with --config FILE, or none");
    refuseOtherThanText(config);
}

namespace {

/// Knows which code of a plug-in runs, declines the libraries that are skipped, and skips those that throw.
class StartObserver : public vrl::LoadObserver {
public:
    bool mayLoad(std::string const& path) override { return skippedPaths().count(path) == 0; }

    void beforeCall(std::string const& path, std::string const& function) override {
        work.push_back(std::make_unique<ForeignWork>(path + ": " + (function.empty() ? "mapping it" : function)));
        if (parent) parent->report("call\t" + function + "\t" + askedPath(path));
    }
    void afterCall(std::string const&, std::string const&) override { endCall(); }

    bool absorbs(vrl::LoadEvent const& event) override {
        endCall();
        auto const target = static_cast<std::size_t>(event.target);
        skipPath(event.path, throwReason(event, target < kTargetCount ? kTargets[target].entry : "it"));
        return true;
    }

    Supervised const* parent = nullptr;  ///< to which it reports what runs

private:
    /// The hooks after all loading are called with the path of the file; the library was asked for it under another.
    static std::string askedPath(std::string const& path) {
        for (vrl::LoadEvent const& event : vrlLoadReport().events)
            if (event.file == path) return event.path;
        return path;
    }

    void endCall() {
        work.pop_back();
        if (parent) parent->report("done");
    }

    std::vector<std::unique_ptr<ForeignWork>> work;  ///< the innermost call last: a plug-in may load others
};

/// The path of a configuration that names nothing, as long as the process lives.
std::string emptyConfig() {
    char const text[] = "sodlldir_clear\n";
    int const file = memfd_create("VRLConfig.ini", 0);
    if (file < 0 || write(file, text, sizeof text - 1) < 0) throw Failure("--plugin", "no file in memory can be made");
    return "/proc/self/fd/" + std::to_string(file);
}

void checkPlugin(std::string const& path) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error))
        throw Failure(path, std::filesystem::exists(path, error) ? "is not a regular file" : "there is no such file",
                      "give the file of a plug-in with --plugin FILE");
}

/// The library takes a name without a folder for one to search for.
std::string loadPathOf(std::string const& plugin) { return std::filesystem::absolute(plugin).string(); }

/// Loads the plug-ins that the command line names, and lets all of them finish.
void loadNamed(std::vector<std::string> const& plugins) {
    for (std::string const& plugin : plugins)
        for (TargetInfo const& target : kTargets) target.load(loadPathOf(plugin).c_str());
    if (!plugins.empty()) soloader_PostLoad();
}

void needNamed(std::vector<std::string> const& plugins) {
    auto const loads = loadsSoFar();
    for (std::string const& plugin : plugins)
        for (Load const& load : loads)
            if (load.path == loadPathOf(plugin) && load.result != Load::Result::kLoaded)
                throw Failure(plugin, "is not loaded: " + load.reason, "'vrl validate' checks plug-ins");
}

void start(StartObserver& observer, StartOptions const& options) {
    bool const alone = options.config.empty() && !options.plugins.empty();
    std::string const config = alone ? emptyConfig() : options.config;
    if (!config.empty()) vrlConfigFile(config.c_str());
    watchStoredParameters();
    vrlSetLoadObserver(&observer);
    QuietOutput const quiet;
    std::string const thrown = thrownBy([&] {
        vrlInit_vrllib(false, true);
        loadNamed(options.plugins);
    });
    if (!thrown.empty())
        throw Failure(
            "the plug-ins", "initLibraryPostLoad threw " + thrown,
            "take it out of the configuration until it is mended; 'vrl plugins' and 'vrl validate' show more");
    std::string const messages = vrlGetCoutMsg();  // first, since the search for the file may write again
    showWarnings(messages, vrlConfigFile());
    needNamed(options.plugins);
}

/// The call that a copy did not come back from.
struct OpenCall {
    bool isOpen = false;
    std::string function;  ///< empty while the file is mapped
    std::string path;
};

OpenCall openCall(std::string const& reports) {
    std::vector<OpenCall> calls(1);
    std::istringstream lines(reports);
    for (std::string line; std::getline(lines, line);) {
        auto const tab = line.find('\t');
        auto const second = line.find('\t', tab + 1);
        if (second != std::string::npos)
            calls.push_back({true, line.substr(tab + 1, second - tab - 1), line.substr(second + 1)});
        else if (line == "done" && calls.size() > 1)
            calls.pop_back();
    }
    return calls.back();
}

std::string reasonText(OpenCall const& call, ProcessResult const& ended, unsigned seconds) {
    std::string const how = ended.timedOut ? "did not end within " + counted(seconds, "second") : ended.how();
    return how + (call.function.empty() ? " while it was mapped" : " in " + call.function);
}

/// Hands on what a copy wrote to standard error, but for the lines that the one before it began with as well.
void handOn(std::string const& text, std::string& before) {
    auto const differs = std::mismatch(text.begin(), text.end(), before.begin(), before.end()).first;
    auto const same = text.rfind('\n', static_cast<std::size_t>(differs - text.begin()));
    std::cerr << (differs == text.begin() || same == std::string::npos ? text : text.substr(same + 1)) << std::flush;
    before = text;
}

/// Ends this program as its copy ended; nothing of this one is undone, since it has done nothing.
[[noreturn]] void endAs(ProcessResult const& ended, int statusOfBadEnd) {
    if (ended.signal == 0) std::_Exit(ended.status);
    if (ended.signal == SIGINT || ended.signal == SIGTERM || ended.signal == SIGHUP || ended.signal == SIGPIPE) {
        std::signal(ended.signal, SIG_DFL);
        raise(ended.signal);
    }
    std::cerr << "vrl: the plug-ins are loaded, but a program with them does not end well: " << ended.how()
              << std::endl;
    std::_Exit(statusOfBadEnd);
}

/// In the copy.
void startIn(Supervised& copy, StartOptions const& options) {
    static StartObserver observer;
    observer.parent = &copy;
    leaveCrashesToParent();
    start(observer, options);
    observer.parent = nullptr;
    reportCrashes(options.json);
    copy.beReady();
    if (!options.reportsSkipped) return;
    for (auto const& [path, reason] : skippedPaths())
        std::cerr << "vrl: " << printable(path) << ": not loaded: " << reason << '\n';
}

/// In the parent. Returns if the start is to be repeated.
void watch(Supervised& copy, StartOptions const& options, std::string& errors) {
    Supervised::Start seen;
    {
        Progress progress("loading:", "s");
        seen = copy.waitUntilReady(options.seconds, [&](std::size_t passed) { progress.at(passed); });
    }
    handOn(seen.errors, errors);
    if (seen.ready) endAs(copy.waitForEnd(), options.statusOfBadEnd);
    OpenCall const call = openCall(seen.reports);
    if (!call.isOpen && seen.ended.signal == 0 && !seen.ended.timedOut) std::_Exit(seen.ended.status);  // it said why
    std::string const reason = reasonText(call, seen.ended, options.seconds);
    // A library that is skipped already and still stops the start would repeat it for ever.
    if (!call.isOpen || skippedPaths().count(call.path) != 0)
        throw Failure("the plug-ins", "cannot be loaded: " + reason);
    skipPath(call.path, reason);
}

}  // namespace

namespace {

/// What is searched for is tested like what is named, if there is any.
void checkNamed(StartOptions const& options) {
    for (std::string const& plugin : options.plugins) checkPlugin(plugin);
    if (!options.config.empty()) return checkConfig(options.config);
    std::error_code none;
    for (std::string const& path : options.plugins.empty() ? vrlConfigFilePlaces() : std::vector<std::string>())
        if (std::filesystem::exists(path, none)) return refuseOtherThanText(path);
}

}  // namespace

void startLibrary(StartOptions const& options) {
    checkNamed(options);
    std::string errors;
    for (;;) {
        static std::unique_ptr<Supervised> copy;  // the copy keeps it until its end
        copy = std::make_unique<Supervised>();
        if (copy->isCopy()) return startIn(*copy, options);
        watch(*copy, options, errors);
    }
}

void startLibraryHere(std::string const& config) {
    static StartObserver observer;
    if (!config.empty()) checkConfig(config);
    reportCrashes(false);
    StartOptions options;
    options.config = config;
    start(observer, options);
}

}  // namespace vrltool
