#include "vrllib/model/type_view.h"

#include <iterator>
#include <memory>
#include <type_traits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/model/listener.h"
#include "tests/model/sample_views.h"
#include "tests/support/sample_design.h"
#include "tests/support/slots.h"
#include "tests/support/thrown.h"

namespace {

using namespace Vorlane_v1_0;
using sample::Note;
using sample::TypedNote;
using testing::ElementsAre;
using vrl_test::slotsOf;
using vrl_test::thrownText;

/// An object of each type that has typed views.
template <class T>
struct Sample;
template <>
struct Sample<Component> {
    vrlEmptyComponent object;
};
template <>
struct Sample<Foundry> {
    sample::Fab object;
};
template <>
struct Sample<BB> {
    sample::Pad object;
};
template <>
struct Sample<Netlist> {
    Netlist object;
};
template <>
struct Sample<CrossSection> {
    sample::Section object{1.0, 0.0};
};
template <>
struct Sample<ProcessFlow> {
    sample::EmptyFlow object;
};

std::size_t viewsOf(RegisterView const& views) {
    return static_cast<std::size_t>(std::distance(views.begin(), views.end()));
}

template <class T>
class TypedViews : public testing::Test {
protected:
    using TypeNote = Note<TypeView<T>>;
    using DataNote = Note<ViewT<T>>;

    T& object() { return holder.object; }

private:
    Sample<T> holder;
};

using ViewedTypes = testing::Types<Component, Foundry, BB, Netlist, CrossSection, ProcessFlow>;
TYPED_TEST_SUITE(TypedViews, ViewedTypes, );

TYPED_TEST(TypedViews, AreSistersBelowView) {
    using Type = TypeView<TypeParam>;
    using Data = ViewT<TypeParam>;

    EXPECT_TRUE((std::is_base_of_v<View, Type>));
    EXPECT_TRUE((std::is_base_of_v<View, Data>));
    EXPECT_FALSE((std::is_base_of_v<Type, Data>));
    EXPECT_FALSE((std::is_base_of_v<Data, Type>));
    EXPECT_TRUE(std::is_abstract_v<Type>);
    EXPECT_TRUE(std::is_abstract_v<Data>);
}

TYPED_TEST(TypedViews, HavePublicVirtualDestructorsAndTheTableOfView) {
    using Type = TypeView<TypeParam>;
    using Data = ViewT<TypeParam>;

    EXPECT_TRUE(std::is_destructible_v<Type>);
    EXPECT_TRUE(std::is_destructible_v<Data>);
    EXPECT_TRUE(std::has_virtual_destructor_v<Type>);
    EXPECT_TRUE(std::has_virtual_destructor_v<Data>);
    EXPECT_EQ(slotsOf(&Type::describe, &Type::applyOn), (std::vector<std::size_t>{2, 3}));
    EXPECT_EQ(slotsOf(&Data::describe, &Data::applyOn), (std::vector<std::size_t>{2, 3}));
    EXPECT_TRUE((std::is_same_v<decltype(&Type::applyOn), decltype(&View::applyOn)>));
    EXPECT_TRUE((std::is_same_v<decltype(&Data::applyOn), decltype(&View::applyOn)>));
}

TYPED_TEST(TypedViews, KeepTheTypedObjectInViewTOnly) {
    EXPECT_EQ(sizeof(TypeView<TypeParam>), sizeof(View));
    EXPECT_EQ(sizeof(ViewT<TypeParam>), sizeof(View) + sizeof(TypeParam*));
}

TYPED_TEST(TypedViews, RegisterWithTheirObject) {
    typename TestFixture::TypeNote type(&this->object(), "type");
    typename TestFixture::DataNote data(&this->object(), "data");

    EXPECT_EQ(this->object().getView("type"), &type);
    EXPECT_EQ(this->object().getView("data"), &data);
    EXPECT_EQ(type.getComponent(), &this->object());
    EXPECT_EQ(data.getComponent(), &this->object());
}

TYPED_TEST(TypedViews, RegisterNowhereWithoutAnObject) {
    TypeParam* const none = nullptr;
    typename TestFixture::TypeNote type(none, "type");
    typename TestFixture::DataNote data(none, "data");

    EXPECT_EQ(type.getComponent(), nullptr);
    EXPECT_EQ(data.getComponent(), nullptr);
}

TYPED_TEST(TypedViews, ReturnTheirObjectByType) {
    typename TestFixture::DataNote data(&this->object(), "data");
    typename TestFixture::DataNote const& constant = data;

    EXPECT_EQ(data.getData(), &this->object());
    EXPECT_EQ(constant.getData(), &this->object());
    EXPECT_TRUE((std::is_same_v<decltype(data.getData()), TypeParam*>));
    EXPECT_TRUE((std::is_same_v<decltype(constant.getData()), TypeParam const*>));
}

TYPED_TEST(TypedViews, ThrowWithoutData) {
    TypeParam* const none = nullptr;
    typename TestFixture::DataNote data(none, "data");
    typename TestFixture::DataNote const& constant = data;

    EXPECT_EQ(thrownText([&] { data.getData(); }), "No data");
    EXPECT_EQ(thrownText([&] { constant.getData(); }), "No data");
}

TYPED_TEST(TypedViews, CopyAndAssignTheObjectAndRegisterNowhere) {
    typename TestFixture::DataNote data(&this->object(), "data");
    data.getViewData().addDouble("grid", 0.5);
    typename TestFixture::DataNote const copy(data);
    typename TestFixture::DataNote target(static_cast<TypeParam*>(nullptr), "");

    EXPECT_EQ(&(target = data), &target);
    EXPECT_EQ(copy.getData(), &this->object());
    EXPECT_EQ(target.getData(), &this->object());
    EXPECT_EQ(copy.getComponent(), &this->object());
    EXPECT_EQ(target.getComponent(), &this->object());
    EXPECT_EQ(copy.getViewData().getDouble("grid"), 0.5);
    EXPECT_EQ(target.getViewData().getDouble("grid"), 0.5);
    EXPECT_EQ(viewsOf(this->object()), 1U);
}

TYPED_TEST(TypedViews, CopyAndAssignAsViewsDo) {
    typename TestFixture::TypeNote type(&this->object(), "type");
    type.getViewData().addDouble("grid", 0.5);
    typename TestFixture::TypeNote const copy(type);
    typename TestFixture::TypeNote target(static_cast<TypeParam*>(nullptr), "");

    EXPECT_EQ(&(target = type), &target);
    EXPECT_EQ(copy.getComponent(), &this->object());
    EXPECT_EQ(target.getComponent(), &this->object());
    EXPECT_EQ(copy.getViewData().getDouble("grid"), 0.5);
    EXPECT_EQ(target.getViewData().getDouble("grid"), 0.5);
    EXPECT_EQ(viewsOf(this->object()), 1U);
}

TYPED_TEST(TypedViews, DoNotFindAnUnknownKind) {
    vrlCoutReset();

    EXPECT_FALSE(TypeView<TypeParam>::find("nowhere"));
    EXPECT_FALSE(TypeView<TypeParam>::find(""));
    EXPECT_EQ(TypeView<TypeParam>::create("nowhere", &this->object()), nullptr);
    EXPECT_EQ(vrlGetCoutMsg(), "");
    EXPECT_EQ(viewsOf(this->object()), 0U);
}

TYPED_TEST(TypedViews, ReportAKindThatCannotBeAllocated) {
    vrlCoutReset();

    EXPECT_FALSE(TypeView<TypeParam>::alloc("nowhere", &this->object()));
    EXPECT_EQ(vrlGetCoutMsg(), "Can't allocate 'nowhere' view, please check your VRLConfig.ini\n");
    EXPECT_EQ(viewsOf(this->object()), 0U);
    vrlCoutReset();
}

TYPED_TEST(TypedViews, AreNotAllocatedForNull) {
    vrlCoutReset();

    EXPECT_FALSE(TypeView<TypeParam>::alloc("nowhere", nullptr));
    EXPECT_FALSE(TypeView<TypeParam>::alloc("", nullptr));
    EXPECT_EQ(vrlGetCoutMsg(), "");
}

TYPED_TEST(TypedViews, AreAllocatedAlreadyIfTheObjectHasAViewOfThatName) {
    typename TestFixture::TypeNote note(&this->object(), "nowhere");
    vrlCoutReset();

    EXPECT_TRUE(TypeView<TypeParam>::alloc("nowhere", &this->object()));
    EXPECT_EQ(vrlGetCoutMsg(), "");
    EXPECT_EQ(this->object().getView("nowhere"), &note);
    EXPECT_EQ(viewsOf(this->object()), 1U);
}

TYPED_TEST(TypedViews, RefuseAnEmptyKind) {
    EXPECT_EQ(thrownText([&] { TypeView<TypeParam>::create("", &this->object()); }), "Sorry - use a proper key");
    EXPECT_EQ(thrownText([&] { TypeView<TypeParam>::alloc("", &this->object()); }), "Sorry - use a proper key");
}

/// The two types whose view factories plug-ins fill.
template <class T>
class PlugInViews : public TypedViews<T> {
protected:
    static auto& factory() { return FactoryLoader<TypeView<T>>::factory(); }
};

using PlugInTypes = testing::Types<BB, Netlist>;
TYPED_TEST_SUITE(PlugInViews, PlugInTypes, );

TYPED_TEST(PlugInViews, AreMadeByTheFactoryOfTheirType) {
    auto const kind = sample::registered<TypedNote<TypeParam>>(this->factory(), "note");
    EXPECT_TRUE(TypeView<TypeParam>::find("note"));
    View* const view = TypeView<TypeParam>::create("note", &this->object());

    ASSERT_NE(dynamic_cast<TypedNote<TypeParam>*>(view), nullptr);
    EXPECT_EQ(view->getComponent(), &this->object());
    View::destroy(view);
}

TYPED_TEST(PlugInViews, AreMadeWithoutAnObjectAsWell) {
    auto const kind = sample::registered<TypedNote<TypeParam>>(this->factory(), "note");
    View* const view = TypeView<TypeParam>::create("note", nullptr);

    ASSERT_NE(view, nullptr);
    EXPECT_EQ(view->getComponent(), nullptr);
    View::destroy(view);
}

TYPED_TEST(PlugInViews, AreAllocatedOnce) {
    auto const kind = sample::registered<TypedNote<TypeParam>>(this->factory(), "note");
    int const before = TypedNote<TypeParam>::alive;
    vrlCoutReset();
    EXPECT_TRUE(TypeView<TypeParam>::alloc("note", &this->object()));
    View* const view = this->object().getView("note");
    EXPECT_TRUE(TypeView<TypeParam>::alloc("note", &this->object()));

    EXPECT_EQ(TypedNote<TypeParam>::alive, before + 1);
    EXPECT_EQ(this->object().getView("note"), view);
    EXPECT_EQ(viewsOf(this->object()), 1U);
    EXPECT_EQ(vrlGetCoutMsg(), "");
    View::destroy(view);
}

TYPED_TEST(PlugInViews, AreFoundUnderBothNamesIfTheKindDiffersFromTheName) {
    auto const kind = sample::registered<TypedNote<TypeParam>>(this->factory(), "KSR/Parser");
    EXPECT_TRUE(TypeView<TypeParam>::alloc("KSR/Parser", &this->object()));
    View* const view = this->object().getView("KSR/Parser");

    ASSERT_NE(view, nullptr);
    EXPECT_EQ(this->object().getView("note"), view);
    EXPECT_EQ(viewsOf(this->object()), 2U);
    View::destroy(view);
}

TYPED_TEST(PlugInViews, AreFoundUnderTheirKindAlsoIfTheirNameWasTaken) {
    auto const kind = sample::registered<TypedNote<TypeParam>>(this->factory(), "KSR/Parser");
    typename TestFixture::TypeNote old(&this->object(), "note");
    EXPECT_TRUE(TypeView<TypeParam>::alloc("KSR/Parser", &this->object()));
    View* const view = this->object().getView("KSR/Parser");

    EXPECT_NE(dynamic_cast<TypedNote<TypeParam>*>(view), nullptr);
    EXPECT_EQ(this->object().getView("note"), &old);
    View::destroy(view);
}

TYPED_TEST(PlugInViews, OutliveTheirObject) {
    auto const kind = sample::registered<TypedNote<TypeParam>>(this->factory(), "note");
    int const before = TypedNote<TypeParam>::alive;
    View* view = nullptr;
    {
        Sample<TypeParam> shortLived;
        TypeView<TypeParam>::alloc("note", &shortLived.object);
        view = shortLived.object.getView("note");
    }
    EXPECT_EQ(TypedNote<TypeParam>::alive, before + 1);
    View::destroy(view);
    EXPECT_EQ(TypedNote<TypeParam>::alive, before);
}

TYPED_TEST(PlugInViews, AreDestroyedThroughTheCommonViewFactory) {
    auto const kind = sample::registered<TypedNote<TypeParam>>(this->factory(), "note");
    std::vector<std::string> events;
    Listener<View> const listener([&](std::string const& event, View*) { events.push_back(event); });
    View::destroy(TypeView<TypeParam>::create("note", &this->object()));

    EXPECT_THAT(events, ElementsAre("destroy"));
}

TEST(PlugInViewFactories, AreSeparateForEachType) {
    auto const kind = sample::registered<TypedNote<BB>>(FactoryLoader<TypeView<BB>>::factory(), "note");

    EXPECT_TRUE(TypeView<BB>::find("note"));
    EXPECT_FALSE(TypeView<Netlist>::find("note"));
    EXPECT_FALSE(TypeView<Component>::find("note"));
}

TEST(PlugInViewFactories, DoNotShareTheKindsOfComponentViews) {
    auto const kind = sample::registered<sample::PlainNote>(FactoryLoader<View>::factory(), "layout");

    EXPECT_FALSE(TypeView<Component>::find("layout"));
    EXPECT_FALSE(TypeView<BB>::find("layout"));
}

}  // namespace
