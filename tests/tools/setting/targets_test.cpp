#include "setting/target.h"

#include <gtest/gtest.h>

#include "design/saved_places.h"
#include "tests/support/files.h"
#include "tests/tools/sample_circuit.h"
#include "text/failure.h"

// Names of elements, ports and parameters may have the characters that separate them.

namespace {

using vrl_test::SampleCircuit;
using vrl_test::TemporaryFolder;
using vrltool::Failure;
using vrltool::savedMarker;
using vrltool::savedString;
using vrltool::setting::Assignment;
using vrltool::setting::Targets;

class FoundTargets : public testing::Test {
protected:
    /// The targets of a word and the value, or the text of the Failure.
    std::string find(std::string const& word) {
        circuit.save(folder / "a.vrl");
        return findInFile(word);
    }

    std::string findInFile(std::string const& word) {
        auto const design = vrltool::readDesign(folder / "a.vrl");
        try {
            Assignment const assignment = Targets(design).find(word);
            std::string text;
            for (auto const& target : assignment.targets) text += target.text() + " ";
            return text + "= " + assignment.value;
        } catch (Failure const& failure) {
            return std::string(failure.what()) + "; " + failure.hint();
        }
    }

    TemporaryFolder const folder;
    SampleCircuit circuit;
};

TEST_F(FoundTargets, HaveNamesWithSeparators) {
    circuit.add("a.b", "sfStraight").add("c=d", "sfStraight").add("e/f", "sfStraight").add("g,h", "sfStraight");
    circuit.add("i*", "sfStraight").add("ij", "sfStraight");
    EXPECT_EQ(find("a.b.length=1"), "a.b.length = 1");
    EXPECT_EQ(find("c=d.length=1=2"), "c=d.length = 1=2");
    EXPECT_EQ(find("e/f.length=1"), "e/f.length = 1");
    EXPECT_EQ(find("g,h.length=1"), "g,h.length = 1");
    EXPECT_EQ(find("g,h,in0.cs=rib"), "g,h,in0.cs = rib");
    EXPECT_EQ(find("i*.length=1"), "i*.length = 1") << "a name is not a pattern";
    EXPECT_EQ(find("i?.length=1"), "i*.length ij.length = 1");
    EXPECT_EQ(find("?.?.length=1"), "a.b.length = 1");
}

TEST_F(FoundTargets, CanBeReadInTwoWays) {
    circuit.add("a", "sfStraight").add("b", "sfStraight");
    circuit.netlist().addDouble("a.length", 1, "", "");
    EXPECT_EQ(find("a.length=1"),
              "a.length=1: can be read in two ways: 'a.length' of the design as '1', or 'length' of 'a' as "
              "'1'; rename one of them");
    EXPECT_EQ(find("b.length=1"), "b.length = 1");
}

TEST_F(FoundTargets, AreInsideOfComposites) {
    circuit.add("arms", "sfPushPullArms").add("legs", "sfPushPullArms");
    EXPECT_EQ(find("arms/lower.width=1"), "arms/lower.width = 1");
    EXPECT_EQ(find("arms/*.width=1"), "arms/lower.width arms/trim.width arms/upper.width = 1");
    EXPECT_EQ(find("*/lower.width=1"), "arms/lower.width legs/lower.width = 1");
    EXPECT_EQ(find("*/lower,in0.cs=rib"), "arms/lower,in0.cs legs/lower,in0.cs = rib");
    EXPECT_EQ(find("*/low.width=1"),
              "*/low.width=1: no element fits '*/low'; the elements: arms, arms/lower, arms/trim, arms/upper, legs, "
              "legs/lower, legs/trim and legs/upper");
}

TEST_F(FoundTargets, OfTwoNamesOfOneElementAreOne) {
    circuit.add("a", "sfStraight").add("b", "sfStraight");
    std::string const second = savedMarker(2) + savedString("b") + savedMarker(2) + savedMarker(2);
    std::string bytes = vrl_test::readFile(circuit.save(folder / "a.vrl"));
    bytes[bytes.find(second) + second.size()] = 1;
    vrl_test::writeFile(folder / "a.vrl", bytes);
    EXPECT_EQ(findInFile("?.length=1"), "a.length = 1");
    EXPECT_EQ(findInFile("b.length=1"), "b.length = 1");
    EXPECT_EQ(findInFile("*.length=1"), "#2.length a.length = 1");
}

TEST_F(FoundTargets, AreOfferedToTheCompletion) {
    circuit.add("a", "sfStraight").add("arms", "sfPushPullArms");
    auto const design = vrltool::readDesign(circuit.save(folder / "a.vrl"));
    std::string all;
    for (std::string const& word : Targets(design).words()) all += word + " ";
    EXPECT_EQ(all,
              "a.length= a.width= a.cs= arms.length= arms.separation= arms.cs= arms/lower.length= arms/lower.width= "
              "arms/lower.efficiency= arms/lower.bias= arms/lower.cs= arms/trim.length= arms/trim.width= "
              "arms/trim.cs= arms/upper.length= arms/upper.width= arms/upper.efficiency= arms/upper.bias= "
              "arms/upper.cs= ");
}

}  // namespace
