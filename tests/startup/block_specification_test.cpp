#include "vrllib/startup/block_specification.h"

#include <cstddef>
#include <cstring>
#include <string>
#include <type_traits>

#include <gtest/gtest.h>

#include "tests/support/child.h"
#include "tests/support/sample_design.h"
#include "tests/support/thrown.h"

namespace {

using namespace Vorlane_v1_0;
using vrl_test::thrownText;
using vrl_test::times;

/// What was made and destroyed, in order.
std::string life;
/// The last foundry that was made.
Foundry* lastFoundry = nullptr;

class House : public sample::Fab {
public:
    House() {
        life += "+house ";
        lastFoundry = this;
    }
    ~House() override { life += "-house "; }
};

class Ring : public BB {
public:
    explicit Ring(Foundry const* foundry) : BB(foundry), given(foundry) { life += "+ring "; }
    ~Ring() override { life += "-ring "; }
    std::string getName() const override { return "ring"; }

    Foundry const* const given;
};

/// The foundry "Fab" and the block "Ring" are registered, and nothing was said or made so far.
class BlockSpecification : public testing::Test {
protected:
    BlockSpecification() {
        vrlCoutReset();
        life.clear();
        lastFoundry = nullptr;
    }

    sample::Registration<FactoryNoArg<std::string, Foundry>> const house =
        sample::registered<House>(FactoryLoader<Foundry>::factory(), "Fab");
    sample::Registration<FactoryArg<std::string, BB, Foundry const*>> const ring =
        sample::registered<Ring>(FactoryLoader<BB>::factory(), "Ring");
};

TEST_F(BlockSpecification, CreatesTheFoundryAndTheBlockForIt) {
    vrl_spec2bb const spec("Fab@Ring", "x");
    EXPECT_STREQ(spec.foundryName, "Fab");
    EXPECT_STREQ(spec.bbName, "Ring");
    ASSERT_NE(spec.foundry, nullptr);
    EXPECT_EQ(spec.foundry, lastFoundry);
    auto const* const made = dynamic_cast<Ring*>(spec.bb);
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(made->given, spec.foundry);
    EXPECT_EQ(life, "+house +ring ");
    EXPECT_EQ(vrlGetCoutMsg(), "Creating: Fab@Ring\n");
}

TEST_F(BlockSpecification, TakesTheDefaultArgumentWithoutASecondAt) {
    EXPECT_STREQ(vrl_spec2bb("Fab@Ring", "x").arg, "x");
    EXPECT_STREQ(vrl_spec2bb("Fab@Ring", "").arg, "");
    EXPECT_STREQ(vrl_spec2bb("Fab@Ring", "x@y").arg, "x@y");
}

TEST_F(BlockSpecification, TakesAllAfterTheSecondAtAsTheArgument) {
    vrl_spec2bb const spec("Fab@Ring@1@2", "x");
    EXPECT_STREQ(spec.foundryName, "Fab");
    EXPECT_STREQ(spec.bbName, "Ring");
    EXPECT_STREQ(spec.arg, "1@2");
    EXPECT_NE(spec.bb, nullptr);
    EXPECT_EQ(vrlGetCoutMsg(), "Creating: Fab@Ring@1@2\n");
}

TEST_F(BlockSpecification, AnEmptyArgumentIsNotTheDefault) {
    EXPECT_STREQ(vrl_spec2bb("Fab@Ring@", "x").arg, "");
    EXPECT_STREQ(vrl_spec2bb("Fab@Ring@@", "x").arg, "@");
}

TEST_F(BlockSpecification, KeepsBlanksInAllParts) {
    vrl_spec2bb const spec(" Fab@ Ring @ 1 ", "x");
    EXPECT_STREQ(spec.foundryName, " Fab");
    EXPECT_STREQ(spec.bbName, " Ring ");
    EXPECT_STREQ(spec.arg, " 1 ");
    EXPECT_EQ(vrlGetCoutMsg(), "Creating:  Fab@ Ring @ 1 \nFoundry ' Fab' not defined/available\n");
}

TEST_F(BlockSpecification, DestroysTheBlockBeforeTheFoundry) {
    { vrl_spec2bb const spec("Fab@Ring", "x"); }
    EXPECT_EQ(life, "+house +ring -ring -house ");
}

TEST_F(BlockSpecification, AnUnknownFoundryIsReportedAndLeavesBothNull) {
    vrl_spec2bb const spec("Nowhere@Ring@1", "x");
    EXPECT_EQ(spec.foundry, nullptr);
    EXPECT_EQ(spec.bb, nullptr);
    EXPECT_STREQ(spec.foundryName, "Nowhere");
    EXPECT_STREQ(spec.bbName, "Ring");
    EXPECT_STREQ(spec.arg, "1");
    EXPECT_EQ(life, "");
    EXPECT_EQ(vrlGetCoutMsg(), "Creating: Nowhere@Ring@1\nFoundry 'Nowhere' not defined/available\n");
}

TEST_F(BlockSpecification, AnUnknownBlockIsReportedAndLeavesTheFoundry) {
    {
        vrl_spec2bb const spec("Fab@Nothing", "x");
        EXPECT_EQ(spec.foundry, lastFoundry);
        EXPECT_NE(spec.foundry, nullptr);
        EXPECT_EQ(spec.bb, nullptr);
        EXPECT_STREQ(spec.bbName, "Nothing");
        EXPECT_EQ(vrlGetCoutMsg(), "Creating: Fab@Nothing\nBB 'Nothing' not defined/available\n");
    }
    EXPECT_EQ(life, "+house -house ");
}

TEST_F(BlockSpecification, WithoutAnAtIsRefusedAndCreatesNothing) {
    EXPECT_EQ(thrownText([] { vrl_spec2bb const spec("Fab", "x"); }), "Format is not valid for foundry@bb[@arg]");
    EXPECT_EQ(thrownText([] { vrl_spec2bb const spec("", "x"); }), "Format is not valid for foundry@bb[@arg]");
    EXPECT_EQ(life, "");
    EXPECT_EQ(vrlGetCoutMsg(), "Creating: Fab\nCreating: \n");
}

TEST_F(BlockSpecification, AnEmptyBlockNameIsRefusedAndTheFoundryIsNotReleased) {
    EXPECT_EQ(thrownText([] { vrl_spec2bb const spec("Fab@", "x"); }), "Sorry - use a proper key");
    EXPECT_EQ(life, "+house ");
    Foundry::destroy(lastFoundry);
    EXPECT_EQ(thrownText([] { vrl_spec2bb const spec("Fab@@Ring", "x"); }), "Sorry - use a proper key");
    EXPECT_EQ(life, "+house -house +house ");
    Foundry::destroy(lastFoundry);
    EXPECT_EQ(vrlGetCoutMsg(), "Creating: Fab@\nCreating: Fab@@Ring\n");
}

TEST_F(BlockSpecification, AssignmentCopiesThePointersToo) {
    vrl_spec2bb target("Nowhere@Nothing", "y");
    {
        vrl_spec2bb source("Fab@Ring@1", "x");
        EXPECT_EQ(&(target = source), &target);
        EXPECT_EQ(std::memcmp(&target, &source, sizeof target), 0);
        EXPECT_NE(target.bb, nullptr);
        source.bb = nullptr;
        source.foundry = nullptr;
    }
    EXPECT_STREQ(target.arg, "1");
    EXPECT_EQ(target.foundry, lastFoundry);
    EXPECT_EQ(life, "+house +ring ");
    BB::destroy(target.bb);
    Foundry::destroy(target.foundry);
    target.bb = nullptr;
    target.foundry = nullptr;
}

TEST_F(BlockSpecification, NullStringsCountAsEmpty) {
    EXPECT_STREQ(vrl_spec2bb("Fab@Ring", nullptr).arg, "");
    EXPECT_STREQ(vrl_spec2bb("Fab@Ring@1", nullptr).arg, "1");
    vrlCoutReset();
    EXPECT_EQ(thrownText([] { vrl_spec2bb const spec(nullptr, "x"); }), "Format is not valid for foundry@bb[@arg]");
    EXPECT_EQ(vrlGetCoutMsg(), "Creating: \n");
}

TEST_F(BlockSpecification, PartsThatFillTheirArraysAreWhole) {
    std::string const foundry = times(255, "f");
    std::string const block = times(1023, "b");
    std::string const argument = times(2047, "a");
    vrl_spec2bb const spec((foundry + "@" + block + "@" + argument).c_str(), "x");
    EXPECT_EQ(spec.foundryName, foundry);
    EXPECT_EQ(spec.bbName, block);
    EXPECT_EQ(spec.arg, argument);
}

TEST_F(BlockSpecification, PartsBeyondTheirArraysAreCut) {
    std::string const text = times(256, "f") + "@" + times(1024, "b") + "@" + times(2048, "a");
    vrl_spec2bb const spec(text.c_str(), "x");
    EXPECT_EQ(spec.foundryName, times(255, "f"));
    EXPECT_EQ(spec.bbName, times(1023, "b"));
    EXPECT_EQ(spec.arg, times(2047, "a"));
    EXPECT_EQ(vrlGetCoutMsg(), "Creating: " + text + "\nFoundry '" + times(255, "f") + "' not defined/available\n");
    EXPECT_EQ(vrl_spec2bb("Fab@Ring", times(3000, "d").c_str()).arg, times(2047, "d"));
}

TEST_F(BlockSpecification, CreatesByTheNamesThatAreCut) {
    auto const longHouse = sample::registered<House>(FactoryLoader<Foundry>::factory(), times(255, "f"));
    auto const longRing = sample::registered<Ring>(FactoryLoader<BB>::factory(), times(1023, "b"));
    {
        vrl_spec2bb const spec((times(300, "f") + "@" + times(2000, "b")).c_str(), "x");
        EXPECT_NE(spec.bb, nullptr);
    }
    EXPECT_EQ(life, "+house +ring -ring -house ");
}

TEST(BlockSpecificationLayout, IsAStructureOfPublicFieldsInOrder) {
    EXPECT_TRUE(std::is_standard_layout_v<vrl_spec2bb>);
    EXPECT_FALSE(std::is_polymorphic_v<vrl_spec2bb>);
    EXPECT_EQ(offsetof(vrl_spec2bb, foundryName), 0U);
    EXPECT_EQ(offsetof(vrl_spec2bb, bbName), 256U);
    EXPECT_EQ(offsetof(vrl_spec2bb, arg), 256U + 1024U);
    EXPECT_EQ(offsetof(vrl_spec2bb, foundry), 256U + 1024U + 2048U);
    EXPECT_EQ(offsetof(vrl_spec2bb, bb), 256U + 1024U + 2048U + sizeof(void*));
    EXPECT_EQ(sizeof(vrl_spec2bb), 256U + 1024U + 2048U + 2 * sizeof(void*));
}

/// What a scenario writes, if it ends well.
std::string outputOf(std::string const& scenario) {
    vrl_test::Sandbox const sandbox(LIBRARY_SCENARIOS_PROGRAM);
    auto const outcome = sandbox.run(scenario);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
    return outcome.out;
}

TEST(BlockSpecificationOfNoFoundry, UsesTheDefaultFoundryAndDestroysItUnderItsLoader) {
    EXPECT_EQ(outputOf("SpecificationOfTheDefaultFoundry"), "foundry '', block 'Ring', argument 'x'\n"
                                                            "default foundry: yes\n"
                                                            "block of foundry A\n"
                                                            "destroyed Ring\n"
                                                            "destroyed A\n"
                                                            "still the default: yes\n"
                                                            "Creating: @Ring\n");
}

TEST(BlockSpecificationOfNoFoundry, IsRefusedWithoutAnyFoundry) {
    EXPECT_EQ(outputOf("SpecificationWithoutFoundries"), "Can not create an object.\nCreating: @Ring\n");
}

TEST(BlockSpecificationOfNoFoundry, RunsTheCallbacksOfBothKinds) {
    EXPECT_EQ(outputOf("SpecificationWithCallbacks"), "block gone\nfoundry gone\nend\n");
}

}  // namespace
