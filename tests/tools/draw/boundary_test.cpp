#include <gmock/gmock.h>

#include <map>

#include "draw/drawing.h"
#include "draw/ports.h"
#include "draw/svg.h"
#include "tests/tools/draw/generated.h"
#include "tests/tools/draw/measure.h"

// On which side the boundary is drawn.

namespace {

using vrltool::Circuit;
using vrltool::OuterNames;
using vrltool::draw::Picture;
using vrltool::draw::Side;

struct Name {
    char const* name;
    vrl::EnumList::Domain domain;
    Side side;
};

class NamedSide : public testing::TestWithParam<Name> {};

TEST_P(NamedSide, IsTheOneOfItsFirstWord) {
    EXPECT_EQ(vrltool::draw::namedSide(GetParam().name, GetParam().domain), GetParam().side);
}

INSTANTIATE_TEST_SUITE_P(
    Names, NamedSide,
    testing::Values(Name{"in", vrl::EnumList::Optics, Side::kLeft}, Name{"Input_2", vrl::EnumList::Optics, Side::kLeft},
                    Name{"left3", vrl::EnumList::RF, Side::kLeft}, Name{"w0", vrl::EnumList::Optics, Side::kLeft},
                    Name{"in_o1", vrl::EnumList::Optics, Side::kLeft},
                    Name{"out1", vrl::EnumList::Optics, Side::kRight},
                    Name{"OUTPUT", vrl::EnumList::Unknown, Side::kRight},
                    Name{"right", vrl::EnumList::Optics, Side::kRight}, Name{"E2", vrl::EnumList::Optics, Side::kRight},
                    Name{"e2", vrl::EnumList::DC, Side::kBelow}, Name{"w2", vrl::EnumList::RF, Side::kBelow},
                    Name{"o1", vrl::EnumList::Optics, Side::kBelow}, Name{"inner", vrl::EnumList::Optics, Side::kBelow},
                    Name{"7", vrl::EnumList::Optics, Side::kBelow}, Name{"", vrl::EnumList::Optics, Side::kBelow}));

/// The labels of the boundary from left to right, with "[]" where the blocks are.
std::string labelsOf(Circuit const& circuit, OuterNames const& names) {
    Picture picture;
    picture.names = names;
    auto const scene = drawingOf(circuit, picture, selectionOf(circuit, picture)).sheets[0];
    EXPECT_THAT(vrl_test::measured(svgText(scene)).faults, testing::IsEmpty());
    std::map<int, std::string> places;
    for (auto const& item : scene.items) {
        if (item.classes == "boundary")
            places[item.shapes[0].points[0].x] = item.shapes.back().text;
        else if (item.classes.find("element") == 0)
            places[item.shapes[0].box.x] = "[]";
    }
    std::string text;
    for (auto const& place : places) text += place.second;
    return text;
}

/// Two splitters back to back, of which the second combines. Both ends of the circuit are inputs of their blocks.
Circuit splitAndCombined() {
    vrl_test::Generated circuit;
    circuit.add("split", {"in0", "out0", "out1"}).add("combine", {"in0", "out0", "out1"});
    circuit.join("split,out0", "combine,out0").join("split,out1", "combine,out1");
    return circuit.input("split,in0").input("combine,in0").take();
}

TEST(Boundary, IsAtTheRightWhereASplitterCombines) {
    EXPECT_EQ(labelsOf(splitAndCombined(), {}), "input 1[][]input 2");
}

TEST(Boundary, IsWhereItsNameSays) {
    EXPECT_EQ(labelsOf(splitAndCombined(), {{3, {"o1"}}, {4, {"o2"}}}), "o1[][]o2");
    EXPECT_EQ(labelsOf(splitAndCombined(), {{3, {"out"}}, {4, {"in"}}}), "in[][]out");
    EXPECT_EQ(labelsOf(splitAndCombined(), {{3, {"any", "right"}}, {4, {"o2"}}}), "o2[][]any, right");
}

TEST(Boundary, OfAnUndirectedChainBeginsAtItsInput) {
    auto const chain = [] { return vrl_test::chainOf(2); };
    EXPECT_EQ(labelsOf(chain(), {{2, {"o1"}}, {3, {"o2"}}}), "o1[][]o2");
    EXPECT_EQ(labelsOf(chain(), {{2, {"E0"}}, {3, {"W0"}}}), "W0[][]E0");
}

}  // namespace
