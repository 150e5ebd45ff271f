#include "tests/tools/draw/measure.h"

#include <gmock/gmock.h>

#include <stdexcept>

// The measure of pictures finds what it looks for.

namespace {

using Faults = std::vector<std::string>;
using vrl_test::measured;

std::string block(std::string const& id, std::string const& place) {
    return "<g id=\"" + id + "\" class=\"element\"><rect class=\"body\" " + place + "/></g>";
}

std::string const kTwoBlocks = block("e1", "x=\"10\" y=\"10\" width=\"40\" height=\"40\"") +
                               block("e2", "x=\"110\" y=\"10\" width=\"40\" height=\"40\"");

std::string wire(std::string const& id, std::string const& ends, std::string const& path) {
    return "<g id=\"" + id + "\" class=\"wire optics\" data-ends=\"" + ends + "\"><path class=\"line\" d=\"" + path +
           "\"/></g>";
}

vrl_test::Measured of(std::string const& items) {
    return measured("<svg viewBox=\"0 0 200 100\">" + kTwoBlocks + items + "</svg>");
}

TEST(Measure, CountsBlocksWiresBendsAndEmptyArea) {
    auto const picture = of(wire("n1", "e1 e2", "M50,20H80V30H110"));
    EXPECT_EQ(picture.faults, Faults{});
    EXPECT_EQ(picture.width, 200);
    EXPECT_EQ(picture.height, 100);
    EXPECT_EQ(picture.blocks, 2u);
    EXPECT_EQ(picture.wires, 1u);
    EXPECT_EQ(picture.bends, 2u);
    EXPECT_DOUBLE_EQ(picture.empty, 0.84);
}

TEST(Measure, FindsAWireThatTouchesABlock) {
    EXPECT_EQ(of(wire("n1", "e1 e2", "M50,20H120V60H70V30H110")).faults, Faults(2, "n1 touches e2"));
}

TEST(Measure, FindsAWireThatTouchesAText) {
    EXPECT_EQ(of(wire("n1", "e1 e2", "M50,20H110") +
                 "<g id=\"note\" class=\"caption\"><text x=\"60\" y=\"22\" text-anchor=\"start\">m</text></g>")
                  .faults,
              Faults{"n1 touches the text 'm'"});
}

TEST(Measure, FindsAWireThatDoesNotReachWhatItNames) {
    EXPECT_EQ(of(wire("n1", "e1 e2", "M50,20H105")).faults, Faults{"n1 does not reach e2"});
    EXPECT_EQ(of(wire("n1", "e1", "M50,20H110")).faults, Faults{"n1 has 2 ends for 1"});
}

TEST(Measure, FindsWiresThatRunIntoEachOtherAndCountsCrossings) {
    EXPECT_EQ(of(wire("n1", "e1 e2", "M50,20H110") + wire("n2", "e1 e2", "M50,40H80V20H90V40H110")).faults,
              Faults(3, "n2 runs into n1"));
    auto const crossing = of(wire("n1", "e1 e2", "M50,20H70V40H110") + wire("n2", "e1 e2", "M50,30H90V20H110"));
    EXPECT_EQ(crossing.faults, Faults{});
    EXPECT_EQ(crossing.crossings, 1u);
}

TEST(Measure, FindsBlocksThatOverlapAndWhatIsOutside) {
    EXPECT_EQ(of(block("e3", "x=\"40\" y=\"40\" width=\"50\" height=\"50\"")).faults, Faults{"e3 overlaps e1"});
    EXPECT_EQ(of(block("e3", "x=\"180\" y=\"40\" width=\"50\" height=\"50\"")).faults,
              Faults{"e3 is outside the picture"});
}

TEST(Measure, FindsATextThatIsWiderThanItsBlock) {
    EXPECT_EQ(of("<g id=\"e3\" class=\"element\"><rect class=\"body\" x=\"60\" y=\"60\" width=\"20\" height=\"20\"/>"
                 "<text x=\"70\" y=\"70\" text-anchor=\"middle\">mmmm</text></g>")
                  .faults,
              Faults{"'mmmm' does not fit into e3"});
}

TEST(Measure, FindsAWireThatLeavesItsFrame) {
    std::string const frame =
        "<g id=\"e3\" class=\"frame\"><rect class=\"body\" x=\"2\" y=\"55\" width=\"190\" height=\"40\"/></g>" +
        block("e3_e1", "x=\"10\" y=\"60\" width=\"20\" height=\"20\"") +
        block("e3_e2", "x=\"60\" y=\"60\" width=\"20\" height=\"20\"");
    EXPECT_EQ(of(frame + wire("e3_n1", "e3_e1 e3_e2", "M30,70H60")).faults, Faults{});
    EXPECT_EQ(of(frame + wire("e3_n1", "e3_e1 e3_e2", "M30,70H40V52H50V70H60")).faults, Faults(3, "e3_n1 leaves e3"));
    EXPECT_EQ(of(frame + wire("n1", "e1 e2", "M50,20H80V58H90V20H110")).faults, Faults(3, "n1 touches e3"));
}

TEST(Measure, RefusesWhatIsNoPicture) {
    EXPECT_THROW(measured("<svg"), std::runtime_error);
    EXPECT_THROW(measured("<svg/>"), std::runtime_error);
}

}  // namespace
