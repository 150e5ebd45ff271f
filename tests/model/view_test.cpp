#include "vrllib/model/view.h"

#include <iterator>
#include <sstream>
#include <type_traits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/doc/tex_file.h"
#include "tests/model/listener.h"
#include "tests/model/sample_views.h"
#include "tests/support/sample_design.h"
#include "tests/support/slots.h"
#include "tests/support/thrown.h"

namespace {

using namespace Vorlane_v1_0;
using sample::PlainNote;
using testing::ElementsAre;
using vrl_test::slotsOf;
using vrl_test::thrownText;

Component* const kNoComponent = nullptr;

std::vector<std::string> namesIn(RegisterView const& views) {
    std::vector<std::string> names;
    for (auto entry = views.begin(); entry != views.end(); ++entry) names.push_back(entry->first);
    return names;
}

TEST(RegisterView, KeepsTheFirstViewOfAName) {
    PlainNote first(kNoComponent, "");
    auto* const second = new PlainNote(kNoComponent, "");
    int const alive = PlainNote::alive;
    RegisterView views;
    views.add("tool", &first);
    views.add("tool", second);

    EXPECT_EQ(views.get("tool"), &first);
    EXPECT_EQ(std::distance(views.begin(), views.end()), 1);
    EXPECT_EQ(PlainNote::alive, alive);
    delete second;
}

TEST(RegisterView, KeepsTheFirstViewOfANameAlsoUnderTheOtherNamesOfAdd) {
    PlainNote first(kNoComponent, "");
    PlainNote second(kNoComponent, "");
    RegisterView views;
    views.addView("a", &first);
    views.addAllocatedView("b", &second);
    views.addView("b", &first);
    views.addAllocatedView("a", &second);

    EXPECT_EQ(views.get("a"), &first);
    EXPECT_EQ(views.get("b"), &second);
    EXPECT_THAT(namesIn(views), ElementsAre("a", "b"));
}

TEST(RegisterView, IgnoresAnAllocatedViewWithoutAName) {
    auto* const note = new PlainNote(kNoComponent, "");
    int const alive = PlainNote::alive;
    {
        RegisterView views;
        views.addAllocatedView(note);
        EXPECT_EQ(views.begin(), views.end());
    }
    EXPECT_EQ(PlainNote::alive, alive);
    delete note;
}

TEST(RegisterView, LeavesItsViewsAliveWhenItEnds) {
    PlainNote* const allocated = new PlainNote(kNoComponent, "");
    PlainNote* const plain = new PlainNote(kNoComponent, "");
    int const alive = PlainNote::alive;
    {
        RegisterView views;
        views.addAllocatedView("allocated", allocated);
        views.add("plain", plain);
    }
    EXPECT_EQ(PlainNote::alive, alive);
    delete allocated;
    delete plain;
}

TEST(RegisterView, RemovesAnEntryAndLeavesTheViewAlive) {
    PlainNote note(kNoComponent, "");
    int const alive = PlainNote::alive;
    RegisterView views;
    views.add("a", &note);
    views.add("b", &note);
    views.del("a");

    EXPECT_THAT(namesIn(views), ElementsAre("b"));
    EXPECT_EQ(PlainNote::alive, alive);
}

TEST(RegisterView, ChangesNothingWhenAnUnknownNameIsRemoved) {
    PlainNote note(kNoComponent, "");
    RegisterView views;
    views.add("a", &note);
    vrlCoutReset();
    views.del("b");
    views.del("");

    EXPECT_THAT(namesIn(views), ElementsAre("a"));
    EXPECT_EQ(vrlGetCoutMsg(), "");
}

TEST(RegisterView, FindsAViewByItsNameOrReturnsNull) {
    PlainNote note(kNoComponent, "");
    RegisterView views;
    views.add("tool", &note);
    RegisterView const& constant = views;

    EXPECT_EQ(views.get("tool"), &note);
    EXPECT_EQ(views.getView("tool"), &note);
    EXPECT_EQ(constant.get("tool"), &note);
    EXPECT_EQ(constant.getView("tool"), &note);
    EXPECT_EQ(views.get("too"), nullptr);
    EXPECT_EQ(views.getView(""), nullptr);
    EXPECT_EQ(constant.get("Tool"), nullptr);
    EXPECT_EQ(constant.getView("tools"), nullptr);
}

TEST(RegisterView, ReturnsConstantViewsOfAConstantRegister) {
    EXPECT_TRUE((std::is_same_v<decltype(std::declval<RegisterView&>().get("")), View*>));
    EXPECT_TRUE((std::is_same_v<decltype(std::declval<RegisterView const&>().get("")), View const*>));
    EXPECT_TRUE((std::is_same_v<decltype(std::declval<RegisterView&>().getView("")), View*>));
    EXPECT_TRUE((std::is_same_v<decltype(std::declval<RegisterView const&>().getView("")), View const*>));
}

TEST(RegisterView, WalksInOrderOfTheNames) {
    PlainNote note(kNoComponent, "");
    RegisterView views;
    views.add("b", &note);
    views.add("a", &note);
    views.add("B", &note);
    RegisterView const& constant = views;

    EXPECT_THAT(namesIn(views), ElementsAre("B", "a", "b"));
    EXPECT_EQ(views.beginView(), views.begin());
    EXPECT_EQ(views.endView(), views.end());
    EXPECT_EQ(constant.beginView(), constant.begin());
    EXPECT_EQ(constant.endView(), constant.end());
    EXPECT_EQ(std::distance(constant.beginView(), constant.endView()), 3);
}

TEST(RegisterView, LetsAViewBeReplacedThroughItsIterator) {
    PlainNote first(kNoComponent, "");
    PlainNote second(kNoComponent, "");
    RegisterView views;
    views.add("tool", &first);
    views.begin()->second = &second;

    EXPECT_EQ(views.get("tool"), &second);
}

TEST(RegisterView, SharesItsViewsWithAnIndependentCopy) {
    PlainNote first(kNoComponent, "");
    PlainNote second(kNoComponent, "");
    RegisterView source;
    source.add("first", &first);
    RegisterView copy(source);
    copy.add("second", &second);

    EXPECT_EQ(copy.get("first"), &first);
    EXPECT_THAT(namesIn(copy), ElementsAre("first", "second"));
    EXPECT_THAT(namesIn(source), ElementsAre("first"));
}

TEST(RegisterView, ReplacesItsEntriesWhenAssigned) {
    PlainNote first(kNoComponent, "");
    PlainNote second(kNoComponent, "");
    RegisterView source;
    source.add("first", &first);
    RegisterView target;
    target.add("first", &second);
    target.add("second", &second);

    EXPECT_EQ(&(target = source), &target);
    EXPECT_EQ(target.get("first"), &first);
    EXPECT_THAT(namesIn(target), ElementsAre("first"));
}

TEST(RegisterView, KeepsItsEntriesWhenAssignedToItself) {
    PlainNote note(kNoComponent, "");
    RegisterView views;
    views.add("tool", &note);
    RegisterView const& same = views;
    views = same;

    EXPECT_EQ(views.get("tool"), &note);
}

TEST(RegisterView, HasAVirtualDestructor) { EXPECT_TRUE(std::has_virtual_destructor_v<RegisterView>); }

TEST(View, IsAbstractAndFreedOnlyThroughDestroy) {
    EXPECT_TRUE(std::is_abstract_v<View>);
    EXPECT_FALSE(std::is_destructible_v<View>);
}

TEST(View, HasItsOperationsInOrderAfterTheDestructor) {
    EXPECT_EQ(slotsOf(&View::describe, &View::applyOn), (std::vector<std::size_t>{2, 3}));
}

TEST(View, RegistersUnderItsNameWithItsComponent) {
    vrlEmptyComponent holder;
    PlainNote note(&holder, "tool");
    PlainNote const& constant = note;

    EXPECT_EQ(holder.getView("tool"), &note);
    EXPECT_EQ(note.getComponent(), &holder);
    EXPECT_EQ(constant.getComponent(), &holder);
    EXPECT_EQ(note.getViewData().size(), 0U);
}

TEST(View, ReturnsItsComponentAndItsParametersAsConstantAsItIs) {
    EXPECT_TRUE((std::is_same_v<decltype(std::declval<View&>().getComponent()), Component*>));
    EXPECT_TRUE((std::is_same_v<decltype(std::declval<View const&>().getComponent()), Component const*>));
    EXPECT_TRUE((std::is_same_v<decltype(std::declval<View&>().getViewData()), Attributes&>));
    EXPECT_TRUE((std::is_same_v<decltype(std::declval<View const&>().getViewData()), Attributes const&>));
}

TEST(View, LeavesAViewThatHasTheNameAlready) {
    vrlEmptyComponent holder;
    PlainNote first(&holder, "tool");
    PlainNote second(&holder, "tool");

    EXPECT_EQ(holder.getView("tool"), &first);
    EXPECT_EQ(second.getComponent(), &holder);
}

TEST(View, RegistersNowhereWithoutAComponent) {
    PlainNote const note(kNoComponent, "tool");

    EXPECT_EQ(note.getComponent(), nullptr);
}

TEST(View, CopiesItsComponentAndItsParametersAndRegistersNowhere) {
    vrlEmptyComponent holder;
    PlainNote note(&holder, "tool");
    note.getViewData().addDouble("grid", 0.5);
    PlainNote copy(note);

    EXPECT_EQ(copy.getComponent(), &holder);
    EXPECT_EQ(copy.getViewData().getAttribute("grid"), note.getViewData().getAttribute("grid"));
    EXPECT_EQ(std::distance(holder.beginView(), holder.endView()), 1);
    EXPECT_EQ(holder.getView("tool"), &note);
}

TEST(View, AssignsItsComponentAndItsParametersAndRegistersNowhere) {
    vrlEmptyComponent holder;
    PlainNote note(&holder, "tool");
    note.getViewData().addDouble("grid", 0.5);
    vrlEmptyComponent other;
    PlainNote target(&other, "old");
    target.getViewData().addDouble("step", 1.0);

    EXPECT_EQ(&(target = note), &target);
    EXPECT_EQ(target.getComponent(), &holder);
    EXPECT_EQ(target.getViewData().getDouble("grid"), 0.5);
    EXPECT_FALSE(target.getViewData().find("step"));
    EXPECT_EQ(std::distance(holder.beginView(), holder.endView()), 1);
    EXPECT_EQ(other.getView("old"), &target);
}

TEST(View, IsMadeByKindWithTheComponentAndTheName) {
    auto const kind = sample::registered<PlainNote>(FactoryLoader<View>::factory(), "layout");
    vrlEmptyComponent holder;
    View* const view = View::create("layout", &holder, "tool");

    ASSERT_NE(dynamic_cast<PlainNote*>(view), nullptr);
    EXPECT_EQ(view->getComponent(), &holder);
    EXPECT_EQ(holder.getView("tool"), view);
    EXPECT_EQ(holder.getView("layout"), nullptr);
    View::destroy(view);
}

TEST(View, IsMadeWithoutAComponentAsWell) {
    auto const kind = sample::registered<PlainNote>(FactoryLoader<View>::factory(), "layout");
    View* const view = View::create("layout", nullptr, "tool");

    ASSERT_NE(view, nullptr);
    EXPECT_EQ(view->getComponent(), nullptr);
    View::destroy(view);
}

TEST(View, IsNotMadeForAnUnknownKind) {
    vrlEmptyComponent holder;
    vrlCoutReset();

    EXPECT_EQ(View::create("nowhere", &holder, "tool"), nullptr);
    EXPECT_EQ(vrlGetCoutMsg(), "");
    EXPECT_EQ(holder.beginView(), holder.endView());
}

TEST(View, RefusesAnEmptyKind) {
    EXPECT_EQ(thrownText([] { View::create("", nullptr, "tool"); }), "Sorry - use a proper key");
}

TEST(View, RunsTheCallbacksOfItsFactory) {
    auto const kind = sample::registered<PlainNote>(FactoryLoader<View>::factory(), "layout");
    std::vector<std::string> events;
    int const before = PlainNote::alive;
    Listener<View> const listener([&](std::string const& event, View* view) {
        events.push_back(event + " " + view->describe() + ", " + std::to_string(PlainNote::alive - before));
    });
    View* const view = View::create("layout", nullptr, "tool");
    View::destroy(view);

    EXPECT_THAT(events, ElementsAre("create a note, 1", "destroy a note, 1"));
    EXPECT_EQ(PlainNote::alive, before);
}

TEST(View, RunsTheDestroyCallbacksAlsoForNull) {
    std::vector<std::string> events;
    Listener<View> const listener(
        [&](std::string const& event, View* view) { events.push_back(event + (view ? " view" : " null")); });
    View::destroy(nullptr);

    EXPECT_THAT(events, ElementsAre("destroy null"));
}

TEST(View, IsDestroyedThroughItsFactoryWithItsLastHandle) {
    std::vector<std::string> events;
    int const before = PlainNote::alive;
    Listener<View> const listener([&](std::string const& event, View*) { events.push_back(event); });
    {
        shared_ptr<View> const first(new PlainNote(kNoComponent, ""));
        { shared_ptr<View> const second(first); }
        EXPECT_TRUE(events.empty());
    }
    EXPECT_THAT(events, ElementsAre("destroy"));
    EXPECT_EQ(PlainNote::alive, before);
}

TEST(View, StaysInTheRegisterOfItsComponentWhenItIsDestroyed) {
    vrlEmptyComponent holder;
    View::destroy(new PlainNote(&holder, "tool"));

    EXPECT_THAT(namesIn(holder), ElementsAre("tool"));
    holder.del("tool");
    EXPECT_THAT(namesIn(holder), ElementsAre());
}

TEST(View, IsNotFreedWithItsComponent) {
    int const before = PlainNote::alive;
    View* view = nullptr;
    {
        vrlEmptyComponent holder;
        view = new PlainNote(&holder, "tool");
    }
    EXPECT_EQ(PlainNote::alive, before + 1);
    View::destroy(view);
}

TEST(View, PrintsAnEmptyParameterListAsNothing) {
    PlainNote const note(kNoComponent, "tool");
    View const& view = note;

    EXPECT_EQ(sample::printed(view), "View{version=2.1.9,{}}\n");
}

TEST(View, PrintsItsParametersInOrderOfTheNames) {
    PlainNote note(kNoComponent, "tool");
    note.getViewData().addString("layer", "WG");
    note.getViewData().addDouble("grid", 0.5);
    View const& view = note;
    std::ostringstream text;
    text << view;

    EXPECT_EQ(sample::printed(view), "View{version=2.1.9,{  grid= 0.5\n  layer= WG\n}}\n");
    EXPECT_EQ(text.str(), "View{version=2.1.9,{  grid= 0.5\n  layer= WG\n}}\n");
}

TEST(View, ReturnsTheStreamThatItPrintsTo) {
    PlainNote const note(kNoComponent, "tool");
    View const& view = note;
    std::ostringstream os;

    EXPECT_EQ(&view.operator<<(os), &os);
}

/// A view that tries to print and to document itself in its own way.
class LoudNote : public PlainNote {
public:
    LoudNote() : PlainNote(kNoComponent, "") {}
    std::ostream& operator<<(std::ostream& os) const { return os << "loud"; }
    texstream& toTex(texstream& tex) const {
        tex.os() << "loud";
        return tex;
    }
};

TEST(View, PrintsAndDocumentsAPlugInsViewAsAView) {
    LoudNote const note;
    View const& view = note;

    EXPECT_EQ(sample::printed(view), "View{version=2.1.9,{}}\n");
    EXPECT_EQ(texWrittenBy([&](texstream& tex) { EXPECT_EQ(&view.toTex(tex), &tex); }), "View\\{\\}");
}

TEST(View, AppliesToNothing) {
    PlainNote const note(kNoComponent, "tool");

    EXPECT_FALSE(note.applyOn("tool"));
    EXPECT_FALSE(note.applyOn(""));
    EXPECT_FALSE(note.applyOn("a note"));
}

/// Opens the version of the view interface.
class VersionedNote : public PlainNote {
public:
    using PlainNote::PlainNote;
    using View::docApiVersion;
};

TEST(View, HasAnInterfaceVersionThatStays) { EXPECT_EQ(VersionedNote(kNoComponent, "").docApiVersion(), "2.1.9"); }

}  // namespace
