#include <algorithm>
#include <filesystem>
#include <functional>

#include "host/loads.h"
#include "host/start.h"
#include "text/table.h"
#include "validate/isolated.h"
#include "validate/plugin.h"

// A plug-in among others. Nothing is ever unloaded, so each order of loading has a process of its own.

namespace vrltool::validate {

namespace {

/// What is loaded besides, at once.
struct Other {
    std::string name;
    std::function<void(Report&)> load;
    std::vector<std::string> kinds{};  ///< those that it has, and of which none is the plug-in's own
};

std::vector<Other> othersOf(Job const& job) {
    std::vector<Other> others;
    for (std::string const& path : job.others)
        others.push_back({std::filesystem::path(path).filename().string(),
                          [path](Report& report) { static_cast<void>(loadPlugin(path, report)); }});
    if (!job.config.empty())
        others.push_back({std::filesystem::path(job.config).filename().string(), [config = job.config](Report& report) {
                              report.step("loading what the configuration names");
                              startLibraryHere(config);
                          }});
    return others;
}

/// The file that holds the code of a type, without links.
std::string fileOf(std::type_info const& type) {
    std::error_code ignored;
    return std::filesystem::canonical(fileOfType(type), ignored).string();
}

std::vector<std::string> presentKinds() {
    std::vector<std::string> kinds;
    for (TargetInfo const& target : kTargets)
        for (auto const& entry : target.creators()) kinds.push_back(keyText(target, entry.first));
    return kinds;
}

using Kinds = std::vector<std::string>;

bool has(Kinds const& kinds, std::string const& kind) {
    return std::find(kinds.begin(), kinds.end(), kind) != kinds.end();
}

/// The kinds whose code is in the file, or those whose code is elsewhere; without those that are left out.
Kinds kindsIn(std::string const& path, bool there, Kinds const& leftOut = {}) {
    std::error_code ignored;
    std::string const file = std::filesystem::canonical(path, ignored).string();
    Kinds kinds;
    for (TargetInfo const& target : kTargets)
        for (auto const& [key, creator] : target.creators())
            if ((fileOf(*creator) == file) == there && !has(leftOut, keyText(target, key)))
                kinds.push_back(keyText(target, key));
    std::sort(kinds.begin(), kinds.end());
    return kinds;
}

void loadOwn(Job const& job, Report& report) { static_cast<void>(loadPlugin(job.plugin, report)); }

IsolatedResult ownKinds(Job const& job, Report& report) {
    return workIsolated(
        [&] {
            loadOwn(job, report);
            soloader_PostLoad();
            return kindsIn(job.plugin, true);
        },
        job.seconds);
}

/// Waits for a part of the time only: an other one that hangs is no fault of this one.
IsolatedResult otherKinds(Job const& job, Other const& other, Report& report) {
    return workIsolated(
        [&] {
            auto const standard = presentKinds();
            other.load(report);
            soloader_PostLoad();
            return kindsIn(job.plugin, false, standard);
        },
        std::max<unsigned>(1, job.seconds / (job.others.size() + 2)));
}

/// What a plug-in is compared with.
struct Partners {
    Kinds own;                  ///< the kinds that it has when it is alone
    std::vector<Other> others;  ///< those that load by themselves, and bring kinds
    std::string troubles;       ///< why the rest is not among them
};

/// Whether there is anything to compare; says why if not.
bool meet(Job const& job, Partners& partners, Report& report) {
    auto const others = othersOf(job);
    if (others.empty()) return report.notRun("no other plug-in was given"), false;
    IsolatedResult const own = ownKinds(job, report);
    if (!own.trouble.empty()) return report.notRun("it does not load by itself: " + own.trouble), false;
    if (own.strings.empty()) return report.notRun("it brings no keys"), false;
    partners.own = own.strings;
    for (Other other : others) {
        IsolatedResult const alone = otherKinds(job, other, report);
        other.kinds = alone.strings;
        bool const counts = alone.trouble.empty() && !alone.strings.empty();
        if (counts) partners.others.push_back(other);
        if (!counts) partners.troubles += (partners.troubles.empty() ? "" : "; ") + other.name;
        if (!counts) partners.troubles += alone.trouble.empty() ? " brings no keys" : " does not load by itself";
    }
    if (partners.others.empty()) report.notRun(partners.troubles);
    return !partners.others.empty();
}

void noteOthers(Partners const& partners, Report& report) {
    report.note("with " + counted(partners.others.size(), "other") +
                (partners.troubles.empty() ? "" : "; " + partners.troubles));
}

/// Reports the kinds of a list that another one lacks.
void reportMissing(Kinds const& whole, Kinds const& part, Kinds const& allowed, std::string const& when,
                   Report& report) {
    for (std::string const& kind : whole)
        if (!has(part, kind) && !has(allowed, kind)) report.find(kind, "is not registered " + when);
}

/// The later one keeps a key that both have, so that nothing is known of such a key where the other comes later.
void tryOrders(Job const& job, Partners const& partners, Other const& other, Report& report) {
    auto const kindsAfter = [&](std::function<void()> const& first, std::function<void()> const& second) {
        return workIsolated(
            [&] {
                first();
                second();
                soloader_PostLoad();
                return kindsIn(job.plugin, true);
            },
            job.seconds);
    };
    auto const loadThis = [&] { loadOwn(job, report); };
    auto const loadOther = [&] { other.load(report); };
    IsolatedResult const before = kindsAfter(loadThis, loadOther);
    IsolatedResult const after = kindsAfter(loadOther, loadThis);
    if (!before.trouble.empty()) report.find("", before.trouble + ", loaded before " + other.name);
    if (!after.trouble.empty()) report.find("", after.trouble + ", loaded after " + other.name);
    if (!before.trouble.empty() || !after.trouble.empty()) return;
    reportMissing(partners.own, after.strings, {}, "when it is loaded after " + other.name, report);
    reportMissing(after.strings, before.strings, other.kinds, "when it is loaded before " + other.name, report);
}

}  // namespace

void checkTwoPlugins(Job const& job, Report& report) {
    Partners partners;
    if (!meet(job, partners, report)) return;
    for (Other const& other : partners.others) tryOrders(job, partners, other, report);
    noteOthers(partners, report);
}

void checkKeyClash(Job const& job, Report& report) {
    Partners partners;
    if (!meet(job, partners, report)) return;
    for (Other const& other : partners.others)
        for (std::string const& kind : other.kinds)
            if (has(partners.own, kind)) report.find(kind, "is one of " + other.name + " as well");
    noteOthers(partners, report);
}

}  // namespace vrltool::validate
