#include "vrllib/model/component.h"

#include <algorithm>
#include <sstream>
#include <type_traits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/model/sample_views.h"
#include "tests/support/sample_design.h"
#include "tests/support/slots.h"

namespace {

using namespace Vorlane_v1_0;
using sample::PlainNote;
using sample::saved;
using vrl_test::slotsOf;

/// Opens the protected operations of a class.
struct OpenAttributes : Attributes {
    static auto table() {
        return slotsOf(&OpenAttributes::getSerTypeName, &OpenAttributes::getSerVerNo, &OpenAttributes::getSerDoc,
                       &OpenAttributes::getSerRegister, &OpenAttributes::inSpec);
    }
};
struct OpenComponent : Component {
    static auto table() {
        return slotsOf(&OpenComponent::getSerTypeName, &OpenComponent::getSerVerNo, &OpenComponent::getSerDoc,
                       &OpenComponent::getSerRegister, &OpenComponent::getName);
    }
};
struct OpenHolder : vrlEmptyComponent {
    using Component::getSerDoc;
    using Component::getSerTypeName;
    using Component::getSerVerNo;
};

TEST(Component, IsAbstractAndHasSharedVirtualBases) {
    EXPECT_TRUE(std::is_abstract_v<Component>);
    EXPECT_TRUE(std::has_virtual_destructor_v<Component>);
    EXPECT_TRUE((std::is_convertible_v<Component*, Attributes*>));
    EXPECT_TRUE((std::is_convertible_v<Component*, RegisterView*>));

    // A virtual base has no fixed place, so that no pointer to member leads down from it, as from another base.
    EXPECT_TRUE((std::is_convertible_v<int Annotations::*, int Attributes::*>));
    EXPECT_FALSE((std::is_convertible_v<int Attributes::*, int Component::*>));
    EXPECT_FALSE((std::is_convertible_v<int RegisterView::*, int Component::*>));
}

TEST(Component, KeepsTheTableOfParameterLists) {
    EXPECT_EQ(OpenAttributes::table(), (std::vector<std::size_t>{2, 3, 4, 5, 6}));
    EXPECT_TRUE((std::is_same_v<decltype(&Component::inSpec), decltype(&Attributes::inSpec)>));
}

TEST(Component, TakesItsOperationsIntoItsTableInOrder) {
    auto const table = OpenComponent::table();

    EXPECT_TRUE(std::is_sorted(table.begin(), table.end()));
}

TEST(Component, SavesItselfAsAComponentOfVersionOneWithoutAComment) {
    OpenHolder holder;

    EXPECT_EQ(holder.getSerTypeName(), "Component");
    EXPECT_EQ(holder.getSerVerNo(), 1);
    EXPECT_EQ(holder.getSerDoc(), "");
}

TEST(EmptyComponent, IsOutsideTheNamespaceAndNamesItself) {
    ::vrlEmptyComponent const holder;

    EXPECT_EQ(holder.getName(), "vrlEmptyComponent");
    EXPECT_TRUE((std::is_base_of_v<Component, ::vrlEmptyComponent>));
}

TEST(EmptyComponent, StartsWithoutParametersAndViews) {
    vrlEmptyComponent holder;

    EXPECT_EQ(holder.size(), 0U);
    EXPECT_EQ(holder.beginView(), holder.endView());
    EXPECT_EQ(holder.getVersionInfo().get(), 0);
}

TEST(EmptyComponent, ChecksItsParametersAsAnyList) {
    vrlEmptyComponent holder;
    holder.addAttribute(new ValueRange<int, Value<int>>("n", 11, 0, 10));
    std::ostringstream complaints;

    EXPECT_FALSE(holder.inSpec(complaints));
    EXPECT_EQ(complaints.str(), "*** The attribute list contains errors: ***\n"
                                "The value \"11\" is out of range for Int. Accepted range is [0,10]\n"
                                "\n");
}

TEST(EmptyComponent, SharesItsParametersWithACopy) {
    vrlEmptyComponent source;
    source.addDouble("x", 1.0);
    vrlEmptyComponent copy(source);

    EXPECT_EQ(copy.getAttribute("x"), source.getAttribute("x"));
    EXPECT_EQ(copy.getVersionInfo().get(), 1);
    copy.setDouble("x", 2.0);
    EXPECT_EQ(source.getDouble("x"), 2.0);
    copy.addDouble("y", 3.0);
    EXPECT_FALSE(source.find("y"));
}

TEST(EmptyComponent, PassesItsViewsToACopyAndTheyGoOnNamingTheSource) {
    vrlEmptyComponent source;
    PlainNote note(&source, "tool");
    vrlEmptyComponent copy(source);

    EXPECT_EQ(copy.getView("tool"), &note);
    EXPECT_EQ(copy.getView("tool")->getComponent(), &source);
    copy.del("tool");
    EXPECT_EQ(source.getView("tool"), &note);
}

TEST(EmptyComponent, PassesTheRegisterThatItHasToACopy) {
    vrlEmptyComponent source;
    std::string const before = saved(source);
    vrlEmptyComponent copy(source);
    copy.addAnnotation("note", "of the copy");

    EXPECT_EQ(saved(copy), before);
    source.addAnnotation("note", "of the source");
    EXPECT_EQ(saved(copy), saved(source));
    EXPECT_NE(saved(copy), before);
}

TEST(EmptyComponent, LetsACopyThatWasMadeBeforeTheFirstSaveWorkAlone) {
    vrlEmptyComponent source;
    vrlEmptyComponent copy(source);
    copy.addAnnotation("note", "of the copy");

    EXPECT_NE(saved(copy), saved(source));
}

TEST(EmptyComponent, AssignsParametersAndViews) {
    vrlEmptyComponent source;
    source.addDouble("x", 1.0);
    PlainNote first(&source, "first");
    vrlEmptyComponent target;
    target.addDouble("y", 2.0);
    PlainNote second(&target, "second");
    PlainNote old(&target, "first");
    int const changes = target.getVersionInfo().get();

    EXPECT_EQ(&(target = source), &target);
    EXPECT_EQ(target.getAttribute("x"), source.getAttribute("x"));
    EXPECT_FALSE(target.find("y"));
    EXPECT_EQ(target.getVersionInfo().get(), changes);
    EXPECT_EQ(target.getView("first"), &first);
    EXPECT_EQ(target.getView("second"), nullptr);
}

TEST(EmptyComponent, AssignsTheRegisterThatTheSourceHas) {
    vrlEmptyComponent source;
    std::string const before = saved(source);
    vrlEmptyComponent target;
    target = source;
    target.addAnnotation("note", "of the target");

    EXPECT_EQ(saved(target), before);
}

TEST(EmptyComponent, AssignsAnEmptyRegisterOverAFilledOne) {
    vrlEmptyComponent other;
    std::string const empty = saved(other);
    vrlEmptyComponent target;
    target = other;  // now saves what `other` has
    vrlEmptyComponent const unsaved;
    target = unsaved;
    target.addAnnotation("note", "of the target");

    EXPECT_NE(saved(target), empty);
}

TEST(EmptyComponent, KeepsEverythingWhenAssignedToItself) {
    vrlEmptyComponent holder;
    holder.addDouble("x", 1.0);
    PlainNote note(&holder, "tool");
    std::string const before = saved(holder);
    vrlEmptyComponent const& same = holder;
    holder = same;

    EXPECT_EQ(holder.getDouble("x"), 1.0);
    EXPECT_EQ(holder.getView("tool"), &note);
    EXPECT_EQ(saved(holder), before);
}

TEST(ComponentVersion, FollowsTheChangeCounterOfItsComponent) {
    vrlEmptyComponent holder;
    holder.addDouble("x", 1.0);
    ComponentVersion const watcher(&holder);
    EXPECT_FALSE(watcher.check());

    holder.addDouble("y", 1.0);
    EXPECT_TRUE(watcher.check());
    EXPECT_TRUE(watcher.checkUpdate());
    EXPECT_FALSE(watcher.checkUpdate());
    EXPECT_FALSE(watcher.check());
}

TEST(ComponentVersion, NeverSeesAChangeWithoutAComponent) {
    ComponentVersion const watcher(nullptr);
    EXPECT_FALSE(watcher.check());
    EXPECT_FALSE(watcher.checkUpdate());

    vrlEmptyComponent holder;
    holder.addDouble("x", 1.0);
    holder.getVersionInfo().update();
    EXPECT_FALSE(watcher.check());
    EXPECT_FALSE(watcher.checkUpdate());
    EXPECT_FALSE(watcher.check());
}

TEST(ComponentVersion, CopiesFollowTheSameComponentFromTheSamePoint) {
    vrlEmptyComponent holder;
    ComponentVersion const watcher(&holder);
    holder.addDouble("x", 1.0);
    ComponentVersion const copy(watcher);

    EXPECT_TRUE(copy.checkUpdate());
    EXPECT_FALSE(copy.check());
    EXPECT_TRUE(watcher.check());
}

TEST(ComponentVersion, TakesOverTheCountOnlyWhenAssigned) {
    vrlEmptyComponent busy;
    busy.addDouble("x", 1.0);
    busy.addDouble("y", 1.0);
    vrlEmptyComponent calm;
    ComponentVersion watcher(&calm);
    ComponentVersion const other(&busy);
    watcher = other;

    calm.addDouble("x", 1.0);
    calm.addDouble("y", 1.0);
    EXPECT_FALSE(watcher.check());  // 2 was seen, by the count of the other component
    calm.addDouble("z", 1.0);
    EXPECT_TRUE(watcher.check());
}

TEST(ComponentVersion, HasNoMembersOfItsOwn) {
    EXPECT_EQ(sizeof(ComponentVersion), sizeof(VersionClient));
    EXPECT_TRUE((std::is_base_of_v<VersionClient, ComponentVersion>));
    EXPECT_FALSE(std::is_polymorphic_v<ComponentVersion>);
}

}  // namespace
