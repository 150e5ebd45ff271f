#include "vrllib/core/change_counter.h"

#include <type_traits>

#include <gtest/gtest.h>

namespace {

using Vorlane_v1_0::Version;
using Vorlane_v1_0::VersionClient;

TEST(Version, StartsAtZero) { EXPECT_EQ(Version().get(), 0); }

TEST(Version, UpdateAddsOne) {
    Version version;
    version.update();
    EXPECT_EQ(version.get(), 1);
    version.update();
    EXPECT_EQ(version.get(), 2);
}

TEST(Version, UpdateWithAFlagAddsOneOnlyIfItIsTrue) {
    Version version;
    version.update(false);
    EXPECT_EQ(version.get(), 0);
    version.update(true);
    EXPECT_EQ(version.get(), 1);
}

TEST(Version, CopiesAndAssignsTheCount) {
    Version version;
    version.update();
    version.update();
    Version const copy(version);
    Version assigned;

    EXPECT_EQ(&(assigned = version), &assigned);
    EXPECT_EQ(copy.get(), 2);
    EXPECT_EQ(assigned.get(), 2);
}

TEST(Version, HasNoVirtualOperations) {
    EXPECT_FALSE(std::is_polymorphic_v<Version>);
    EXPECT_FALSE(std::is_polymorphic_v<VersionClient>);
    EXPECT_EQ(sizeof(Version), 4U);
}

TEST(VersionClient, SeesNoChangeWhenNew) {
    Version version;
    version.update();
    VersionClient const client(version);

    EXPECT_FALSE(client.check());
    EXPECT_FALSE(client.checkUpdate());
}

TEST(VersionClient, CheckRepeatsItsAnswerUntilCheckUpdateTakesTheCount) {
    Version version;
    VersionClient const client(version);
    EXPECT_FALSE(client.check());
    version.update();

    EXPECT_TRUE(client.check());
    EXPECT_TRUE(client.check());
    EXPECT_TRUE(client.checkUpdate());
    EXPECT_FALSE(client.checkUpdate());
    EXPECT_FALSE(client.check());
}

TEST(VersionClient, CheckUpdateTakesSeveralChangesAtOnce) {
    Version version;
    VersionClient const client(version);
    version.update();
    version.update();
    version.update();

    EXPECT_TRUE(client.checkUpdate());
    EXPECT_FALSE(client.check());
}

TEST(VersionClient, CopyLagsByAsMuchAndFollowsTheSameVersion) {
    Version version;
    VersionClient const first(version);
    version.update();
    version.update();
    VersionClient const copy(first);

    EXPECT_TRUE(copy.check());
    EXPECT_TRUE(copy.checkUpdate());
    EXPECT_FALSE(copy.check());
    EXPECT_TRUE(first.check());

    version.update();
    EXPECT_TRUE(copy.check());
}

TEST(VersionClient, CopyThatLagsByTwoCatchesUpWithASetBackVersionOnlyAfterTwo) {
    Version version;
    version.update();
    version.update();
    version.update();
    VersionClient const first(version);
    VersionClient const copy(first);
    version = Version();

    version.update();
    version.update();
    version.update();
    EXPECT_FALSE(copy.check());
    version.update();
    EXPECT_TRUE(copy.check());
}

TEST(VersionClient, AssignmentTakesTheCountAndKeepsItsOwnVersion) {
    Version ofA;
    Version ofB;
    ofB.update();
    ofB.update();
    VersionClient a(ofA);
    VersionClient const b(ofB);

    EXPECT_EQ(&(a = b), &a);
    ofB.update();
    EXPECT_FALSE(a.check());  // 2 seen, its own Version is at 0

    ofA.update();
    ofA.update();
    EXPECT_FALSE(a.check());
    ofA.update();
    EXPECT_TRUE(a.check());
}

TEST(VersionClient, AssignedCountCanLagItsOwnVersion) {
    Version ofA;
    ofA.update();
    Version const ofB;
    VersionClient a(ofA);
    EXPECT_FALSE(a.check());
    a = VersionClient(ofB);

    EXPECT_TRUE(a.check());
}

TEST(VersionClient, CountGreaterThanTheVersionIsNoChangeAndStays) {
    Version ofA;
    Version ofB;
    ofB.update();
    VersionClient a(ofA);
    a = VersionClient(ofB);

    EXPECT_FALSE(a.checkUpdate());
    ofA.update();
    EXPECT_FALSE(a.check());  // checkUpdate did not take the smaller count
    ofA.update();
    EXPECT_TRUE(a.check());
}

}  // namespace
