#include <set>

#include "text/table.h"
#include "validate/made_objects.h"
#include "validate/parameter_findings.h"

// Whether what a plug-in registered can be made, and is what its key says.

namespace vrltool::validate {

namespace {

char const kUnknown[] = "no such name";

using BlockHandle = vrl::shared_ptr<vrl::BB>;
using FoundryHandle = vrl::shared_ptr<vrl::Foundry>;

/// Makes and destroys a block, reported first, and says why if that fails. An empty hint is that of the check. Returns
/// whether it was made.
bool tryBlock(vrl::Foundry const* foundry, std::string const& with, std::string const& hint, std::string const& key,
              Report& report) {
    std::string const thing = keyText(kTargets[kBlock], key);
    report.step("making the " + thing + with, thing, hint);
    BlockHandle block;
    std::string const thrown = throwsText([&] { block = BlockHandle(vrl::BB::create(foundry, key)); });
    bool const made = static_cast<bool>(block);
    if (!thrown.empty())
        report.find(thing, thrown + " when it is made" + with, hint);
    else if (!made)
        report.find(thing, "is not made" + with, hint);
    report.step("destroying the " + thing + ", made" + with, thing, kDestroyingHint);
    block = BlockHandle();
    return made;
}

/// Calls a function with each foundry of the plug-in that can be made.
template <class Use>
void forEachFoundry(Keys const& keys, Report& report, Use const& use) {
    for (std::string const& key : keys[kFoundry]) {
        if (key.empty()) continue;
        std::string const thing = keyText(kTargets[kFoundry], key);
        report.step("making the " + thing, thing, kMakingHint);
        FoundryHandle foundry;
        static_cast<void>(throwsText([&] { foundry = FoundryHandle(vrl::Foundry::create(key)); }));
        if (foundry) use(key, *foundry);
        report.step("destroying the " + thing, thing, kDestroyingHint);
    }
}

/// Reports a call that throws, or returns an object where it has to return null.
template <class T, class Call>
void expectNothing(std::string const& thing, std::string const& call, Report& report, Call const& make) {
    report.step("calling " + call + " of " + thing);
    std::unique_ptr<T> made;
    std::string const thrown = throwsText([&] { made.reset(make()); });
    if (!thrown.empty()) report.find(thing, call + " " + thrown + " for a name that is not known");
    if (made) report.find(thing, call + " returns something for a name that is not known");
}

/// Widths and radii that hosts ask with: explicit ones, the standard, zero, and ones out of any range.
struct Geometry {
    double width, radius;
};
constexpr Geometry kGeometries[] = {{0.5, 0.0}, {-1.0, 0.0}, {0.0, 0.0}, {1e9, 5.0}, {0.5, -5.0}};

void askFlow(vrl::Foundry const& foundry, std::string const& thing, std::string const& key, Report& report) {
    for (Geometry const& geometry : kGeometries) {
        std::string const thrown = throwsText([&] {
            std::unique_ptr<vrl::ProcessFlow> const flow(foundry.createFlow(key));
            std::unique_ptr<vrl::CrossSection> const section(flow ? flow->createCS(geometry.width, geometry.radius)
                                                                  : nullptr);
            if (section) static_cast<void>(section->describe());
        });
        if (!thrown.empty()) return report.find(thing, "createCS " + thrown);
    }
}

void askSection(vrl::Foundry const& foundry, std::string const& thing, std::string const& key, Report& report) {
    for (Geometry const& geometry : kGeometries) {
        std::string const thrown = throwsText([&] {
            std::unique_ptr<vrl::CrossSection> const section(foundry.createCS(key, geometry.width, geometry.radius));
            if (section) static_cast<void>(section->describe());
        });
        if (!thrown.empty()) return report.find(thing, thrown + " for a width or radius");
    }
}

/// Why something is not made; empty if it is.
std::string whyNotMade(Maker const& maker, Report& report) {
    report.step("making the " + maker.thing, maker.thing, kMakingHint);
    MadeObject made;
    std::string const thrown = throwsText([&] { made = maker.make(); });
    std::string const why = !thrown.empty() ? thrown + " when it is made" : made ? "" : "is not made";
    destroyMade(maker, made, report);
    return why;
}

void reportUnmade(std::vector<Maker> const& makers, Report& report) {
    for (Maker const& maker : makers)
        if (std::string const why = whyNotMade(maker, report); !why.empty()) report.find(maker.thing, why);
}

}  // namespace

void checkNullFoundry(Job const& job, Report& report) {
    auto const keys = loadForCheck(job, report);
    if (!keys) return;
    auto const& blocks = (*keys)[kBlock];
    if (blocks.empty()) return report.notRun("it brings no blocks");
    // With a foundry first: a block that fails with one would fail without, and for another reason.
    std::set<std::string> failed{""};
    forEachFoundry(*keys, report, [&](std::string const& name, vrl::Foundry const& foundry) {
        for (std::string const& key : blocks)
            if (failed.count(key) == 0 &&
                !tryBlock(&foundry, " with the foundry '" + name + "'", kMakingHint, key, report))
                failed.insert(key);
    });
    std::string const hint = (*keys)[kFoundry].empty() ? kMakingHint + std::string("; the foundry may be null") : "";
    for (std::string const& key : blocks)
        if (failed.count(key) == 0) tryBlock(nullptr, " without a foundry", hint, key, report);
    report.note(counted(blocks.size(), "block"));
}

void checkFoundryKept(Job const& job, Report& report) {
    auto const keys = loadForCheck(job, report);
    if (!keys) return;
    if ((*keys)[kFoundry].empty()) return report.notRun("it brings no foundry");
    if ((*keys)[kBlock].empty()) return report.notRun("it brings no blocks");
    forEachFoundry(*keys, report, [&](std::string const& name, vrl::Foundry const& foundry) {
        for (std::string const& key : (*keys)[kBlock]) {
            if (key.empty()) continue;
            report.step("making the block '" + key + "' with the foundry '" + name + "'");
            BlockHandle const block(vrl::BB::create(&foundry, key));
            bool const kept =
                !block || (block->getFoundry() == &foundry && block->getFoundryName() == foundry.getName());
            if (!kept) report.find("block '" + key + "'", "does not know the foundry '" + name + "'");
        }
    });
}

void checkFoundryParts(Job const& job, Report& report) {
    auto const keys = loadForCheck(job, report);
    if (!keys) return;
    if ((*keys)[kFoundry].empty()) return report.notRun("it brings no foundry");
    reportUnmade(makersOf(kFoundry, *keys), report);
    auto const parts = foundryPartMakers(*keys);
    reportUnmade(parts, report);
    forEachFoundry(*keys, report, [&](std::string const& name, vrl::Foundry const& foundry) {
        std::string const of = "' of foundry '" + name + "'";
        for (auto entry = foundry.beginFlow(); entry != foundry.endFlow(); ++entry) {
            report.step("asking the flow '" + entry->first + "' for cross sections");
            askFlow(foundry, "flow '" + entry->first + of, entry->first, report);
        }
        for (auto entry = foundry.beginCrossSection(); entry != foundry.endCrossSection(); ++entry) {
            report.step("making the cross section '" + entry->first + "'");
            askSection(foundry, "cross section '" + entry->first + of, entry->first, report);
        }
    });
    report.note(counted(parts.size(), "flow or cross section", "flows and cross sections"));
}

void checkKeyMatchesName(Job const& job, Report& report) {
    auto const keys = loadForCheck(job, report);
    if (!keys) return;
    reportUnmade(makersOf(kAttribute, *keys), report);
    reportUnmade(makersOf(kNetlist, *keys), report);
    forEachMade(allMakers(*keys), report, [&](Maker const& maker, MadeObject const& made) {
        if (made.name != maker.key) report.find(maker.thing, "returns the name '" + made.name + "'");
    });
}

void checkUnknownKey(Job const& job, Report& report) {
    auto const keys = loadForCheck(job, report);
    if (!keys) return;
    bool const anything = BlockHandle(vrl::BB::create(nullptr, kUnknown)) ||
                          FoundryHandle(vrl::Foundry::create(kUnknown)) ||
                          vrl::shared_ptr<vrl::Netlist>(vrl::Netlist::create(kUnknown)) ||
                          vrl::shared_ptr<vrl::Attribute>(vrl::Attributes::factory().create(kUnknown)) ||
                          vrl::shared_ptr<vrl::View>(vrl::View::create(kUnknown, nullptr, kUnknown));
    if (anything) report.find("", std::string("registers the key '") + kUnknown + "'");
    forEachFoundry(*keys, report, [&](std::string const& name, vrl::Foundry const& foundry) {
        std::string const thing = "foundry '" + name + "'";
        expectNothing<vrl::CrossSection>(thing, "createCS", report,
                                         [&] { return foundry.createCS(kUnknown, 0.5, 0.0); });
        expectNothing<vrl::ProcessFlow>(thing, "createFlow", report, [&] { return foundry.createFlow(kUnknown); });
    });
}

}  // namespace vrltool::validate
