#include <algorithm>

#include "text/table.h"
#include "validate/made_objects.h"
#include "validate/parameter_findings.h"

// Views: made for nothing and for objects, registered with these, and destroyed.

namespace vrltool::validate {

namespace {

using ViewHandle = vrl::shared_ptr<vrl::View>;

/// Everything that hosts ask of a view, and its parameters.
void askView(std::string const& thing, vrl::View& view, Report& report) {
    if (view.describe().empty())
        report.find(thing, "describe() returns nothing", "say in one line what the view holds");
    for (char const* const name : {"", "no such kind"}) static_cast<void>(view.applyOn(name));
    vrl::Attributes& data = view.getViewData();
    findWrongNames(thing, data, report);
    findWrongDefaults(thing, data, report);
}

/// The names under which an object has a view.
std::vector<std::string> namesOfView(vrl::Component& object, vrl::View const& view) {
    std::vector<std::string> names;
    for (auto entry = object.beginView(); entry != object.endView(); ++entry)
        if (entry->second == &view) names.push_back(entry->first);
    return names;
}

/// What a view that was made for an object lacks. Its constructor may register it under another name than its kind:
/// TypeView::alloc puts it under the kind as well. Where the host passes a name, that one counts.
void askRegistered(std::string const& thing, std::string const& with, vrl::View& view, vrl::Component& object,
                   std::string const& givenName, Report& report) {
    auto const names = namesOfView(object, view);
    if (view.getComponent() != &object)
        report.find(thing, "does not know the object that it is made " + with);
    else if (names.empty())
        report.find(thing, "is not registered with its object, made " + with);
    bool const found = givenName.empty() || std::find(names.begin(), names.end(), givenName) != names.end();
    if (!names.empty() && !found) report.find(thing, "is not registered under the name that was passed, made " + with);
    for (std::string const& name : names) object.RegisterView::del(name);
}

/// How a view is made: of which kind, for which object, and under which name if the host passes one.
struct ViewCase {
    Target target;
    std::string key;
    std::string with;                  ///< "for the block 'sfBend'", "without a block"
    vrl::Component* object = nullptr;  ///< null for a view of nothing
    std::string givenName{};
};

/// Makes one view and asks it. Returns whether nothing is wrong with it.
template <class Create>
bool tryView(ViewCase const& tried, Report& report, Create const& create) {
    std::string const thing = keyText(kTargets[tried.target], tried.key);
    report.step("making the " + thing + " " + tried.with, thing);
    unsigned const before = report.findingCount();
    std::string const thrown = throwsText([&] {
        ViewHandle const view(create());
        if (!view) return report.find(thing, "is not made " + tried.with);
        askView(thing, *view, report);
        if (tried.object) askRegistered(thing, tried.with, *view, *tried.object, tried.givenName, report);
    });
    if (!thrown.empty()) report.find(thing, thrown + ", made " + tried.with);
    return report.findingCount() == before;
}

void tryBlockViews(std::string const& key, Keys const& keys, Report& report) {
    auto const create = [&](vrl::BB* block) { return [=] { return vrl::TypeView<vrl::BB>::create(key, block); }; };
    bool good = tryView({kBlockView, key, "without a block"}, report, create(nullptr));
    for (Maker const& maker : makersOf(kBlock, keys)) {
        MadeObject const made = good ? madeBy(maker, report) : MadeObject();
        vrl::BB* const block = made.object.block();
        if (block) good = tryView({kBlockView, key, "for the " + maker.thing, block}, report, create(block));
    }
}

void tryNetlistViews(std::string const& key, Report& report) {
    vrl::Netlist netlist;
    auto const create = [&](vrl::Netlist* of) { return [=] { return vrl::TypeView<vrl::Netlist>::create(key, of); }; };
    tryView({kNetlistView, key, "without a netlist"}, report, create(nullptr));
    tryView({kNetlistView, key, "for an empty netlist", &netlist}, report, create(&netlist));
}

void tryViews(std::string const& key, Report& report) {
    vrlEmptyComponent component;
    auto const create = [&](vrl::Component* of) { return [=] { return vrl::View::create(key, of, key); }; };
    tryView({kComponentView, key, "without a component"}, report, create(nullptr));
    tryView({kComponentView, key, "for a component", &component, key}, report, create(&component));
}

}  // namespace

void checkViews(Job const& job, Report& report) {
    auto const keys = loadForCheck(job, report);
    if (!keys) return;
    std::size_t count = 0;
    for (Target const what : {kComponentView, kBlockView, kNetlistView})
        for (std::string const& key : (*keys)[what]) {
            if (key.empty()) continue;
            ++count;
            if (what == kComponentView) tryViews(key, report);
            if (what == kBlockView) tryBlockViews(key, *keys, report);
            if (what == kNetlistView) tryNetlistViews(key, report);
        }
    if (count == 0) return report.notRun("it brings no views");
    report.note(counted(count, "view"));
}

}  // namespace vrltool::validate
