#include "text/table.h"
#include "validate/parameter_findings.h"
#include "validate/subjects.h"

// Views: made for nothing and for objects, registered with these, and destroyed.

namespace vrltool::validate {

namespace {

using ViewHandle = vrl::shared_ptr<vrl::View>;

/// Everything that hosts ask of a view, and its parameters.
void askView(std::string const& thing, vrl::View& view, Report& report) {
    if (view.describe().empty()) report.find(thing, "describe() gives nothing", "say in one line what the view holds");
    for (char const* const name : {"", "no such kind"}) static_cast<void>(view.applyOn(name));
    vrl::Attributes& data = view.getViewData();
    findWrongNames(thing, data, report);
    findWrongDefaults(thing, data, report);
}

/// Makes one view and asks it. `object` is what it is for, told as `with`, or null.
template <class Create>
void tryView(std::string const& key, std::string const& with, vrl::Component* object, Report& report,
             Create const& create) {
    std::string const thing = "view '" + key + "'";
    report.step("making the " + thing + " " + with);
    std::string const thrown = thrownBy([&] {
        ViewHandle const view(create());
        if (!view) return report.find(thing, "is not made " + with);
        askView(thing, *view, report);
        if (!object) return;
        if (view->getComponent() != object) report.find(thing, "does not know the object that it is made " + with);
        if (object->getView(key) != view.get()) report.find(thing, "is not registered under its key, made " + with);
        object->RegisterView::del(key);
    });
    if (!thrown.empty()) report.find(thing, thrown + ", made " + with);
}

void tryBlockViews(std::string const& key, Keys const& keys, Report& report) {
    auto const create = [&](vrl::BB* block) { return [=] { return vrl::TypeView<vrl::BB>::create(key, block); }; };
    tryView(key, "without a block", nullptr, report, create(nullptr));
    for (Maker const& maker : makersOf(Brings::kBlock, keys))
        if (Subject const subject = madeBy(maker, report))
            tryView(key, "for the " + maker.thing, subject.block, report, create(subject.block));
}

void tryNetlistViews(std::string const& key, Report& report) {
    vrl::Netlist netlist;
    auto const create = [&](vrl::Netlist* of) { return [=] { return vrl::TypeView<vrl::Netlist>::create(key, of); }; };
    tryView(key, "without a netlist", nullptr, report, create(nullptr));
    tryView(key, "for an empty netlist", &netlist, report, create(&netlist));
}

void tryViews(std::string const& key, Report& report) {
    vrlEmptyComponent component;
    auto const create = [&](vrl::Component* of) { return [=] { return vrl::View::create(key, of, key); }; };
    tryView(key, "without a component", nullptr, report, create(nullptr));
    tryView(key, "for a component", &component, report, create(&component));
}

}  // namespace

void checkViews(Job const& job, Report& report) {
    auto const keys = loadForCheck(job, report);
    if (!keys) return;
    std::size_t count = 0;
    for (Brings const what : {Brings::kView, Brings::kBlockView, Brings::kNetlistView})
        for (std::string const& key : (*keys)[what]) {
            if (key.empty()) continue;
            ++count;
            if (what == Brings::kView) tryViews(key, report);
            if (what == Brings::kBlockView) tryBlockViews(key, *keys, report);
            if (what == Brings::kNetlistView) tryNetlistViews(key, report);
        }
    if (count == 0) return report.notRun("it brings no views");
    report.note(counted(count, "view"));
}

}  // namespace vrltool::validate
