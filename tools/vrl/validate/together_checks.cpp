#include <algorithm>
#include <filesystem>
#include <functional>
#include <set>

#include "host/load_watch.h"
#include "host/start.h"
#include "text/table.h"
#include "validate/apart.h"
#include "validate/plugin.h"

// A plug-in among others. Nothing is ever unloaded, so each order of loading has a process of its own.

namespace vrltool::validate {

namespace {

/// What is loaded besides, at once.
struct Other {
    std::string name;
    std::function<void(Report&)> load;
};

std::vector<Other> othersOf(Job const& job) {
    std::vector<Other> others;
    for (std::string const& path : job.others)
        others.push_back({std::filesystem::path(path).filename().string(),
                          [path](Report& report) { static_cast<void>(loadPlugin(path, report)); }});
    if (!job.config.empty())
        others.push_back({std::filesystem::path(job.config).filename().string(), [config = job.config](Report& report) {
                              report.step("loading what the configuration names");
                              startLibrary(config);
                          }});
    return others;
}

/// The file in which the code of a creator lies.
std::string fileOf(void const* creator) {
    std::error_code ignored;
    return std::filesystem::canonical(pluginOf(creator), ignored).string();
}

std::string told(Target const& target, std::string const& key) { return std::string(target.one) + " '" + key + "'"; }

std::vector<std::string> presentKinds() {
    std::vector<std::string> kinds;
    for (Target const& target : targets())
        for (auto const& entry : target.creators()) kinds.push_back(told(target, entry.first));
    return kinds;
}

/// The kinds whose code lies in the file, or those whose code lies elsewhere.
std::set<std::string> kindsIn(std::string const& path, bool there, std::set<std::string> const& before) {
    std::error_code ignored;
    std::string const file = std::filesystem::canonical(path, ignored).string();
    std::set<std::string> kinds;
    for (Target const& target : targets())
        for (auto const& [key, creator] : target.creators())
            if ((fileOf(creator) == file) == there && (there || !before.count(told(target, key))))
                kinds.insert(told(target, key));
    return kinds;
}

void reportMissing(std::vector<std::string> const& has, std::vector<std::string> const& lacks, std::string const& when,
                   Report& report) {
    for (std::string const& kind : has)
        if (std::find(lacks.begin(), lacks.end(), kind) == lacks.end()) report.find(kind, "is not there " + when);
}

void tryOrders(Job const& job, Other const& other, Report& report) {
    auto const own = [&] { static_cast<void>(loadPlugin(job.plugin, report)); };
    Apart const before = workApart([&] {
        own();
        other.load(report);
        soloader_PostLoad();
        return presentKinds();
    });
    Apart const behind = workApart([&] {
        other.load(report);
        own();
        soloader_PostLoad();
        return presentKinds();
    });
    if (!before.trouble.empty()) report.find("", before.trouble + ", loaded before " + other.name);
    if (!behind.trouble.empty()) report.find("", behind.trouble + ", loaded behind " + other.name);
    if (!before.trouble.empty() || !behind.trouble.empty()) return;
    reportMissing(before.texts, behind.texts, "when it is loaded behind " + other.name, report);
    reportMissing(behind.texts, before.texts, "when it is loaded before " + other.name, report);
}

/// The kinds that an other one has, and of which none is the plug-in's own.
Apart kindsOf(Job const& job, Other const& other, Report& report) {
    return workApart([&] {
        auto const standard = presentKinds();
        other.load(report);
        auto const kinds = kindsIn(job.plugin, false, {standard.begin(), standard.end()});
        return std::vector<std::string>(kinds.begin(), kinds.end());
    });
}

constexpr char kAlone[] = "no other plug-in was given";

}  // namespace

void checkTwoPlugins(Job const& job, Report& report) {
    auto const others = othersOf(job);
    if (others.empty()) return report.notRun(kAlone);
    for (Other const& other : others) tryOrders(job, other, report);
    report.note("with " + counted(others.size(), "other"));
}

void checkKeyClash(Job const& job, Report& report) {
    auto const others = othersOf(job);
    if (others.empty()) return report.notRun(kAlone);
    Apart const own = workApart([&] {
        Keys const keys = loadPlugin(job.plugin, report);
        std::vector<std::string> kinds;
        for (std::size_t i = 0; i < kTargetCount; ++i)
            for (std::string const& key : keys.of[i]) kinds.push_back(told(targets()[i], key));
        return kinds;
    });
    for (Other const& other : others)
        for (std::string const& kind : kindsOf(job, other, report).texts)
            if (std::count(own.texts.begin(), own.texts.end(), kind))
                report.find(kind, "is one of " + other.name + " as well");
    report.note("with " + counted(others.size(), "other"));
}

}  // namespace vrltool::validate
