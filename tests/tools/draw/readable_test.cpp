#include <gmock/gmock.h>

#include <chrono>

#include "draw/drawing.h"
#include "draw/svg.h"
#include "tests/tools/draw/generated.h"
#include "tests/tools/draw/measure.h"

// What each picture has to be like, measured on its SVG: circuits of many shapes.

namespace {

using vrl_test::Measured;
using vrltool::Circuit;
using vrltool::draw::Picture;

std::string svgOf(Circuit const& circuit, std::string const& symbol = {}) {
    Picture picture;
    if (!symbol.empty()) picture.symbols[""] = symbol;  // their blocks have no kind
    picture.max = 0;
    return svgText(drawingOf(circuit, picture, selectionOf(circuit, picture)).sheets[0]);
}

struct Shape {
    char const* name;
    Circuit (*make)();
    std::size_t crossings;  ///< at most
    int height;             ///< at most
};

class Readable : public testing::TestWithParam<Shape> {};

TEST_P(Readable, HasNoFaults) {
    Measured const picture = vrl_test::measured(svgOf(GetParam().make()));
    EXPECT_THAT(picture.faults, testing::IsEmpty());
    EXPECT_LE(picture.crossings, GetParam().crossings);
    EXPECT_LE(picture.width, 1632);
    EXPECT_LE(picture.height, GetParam().height);
}

TEST_P(Readable, HasNoFaultsWithSymbols) {
    EXPECT_THAT(vrl_test::measured(svgOf(GetParam().make(), "pad")).faults, testing::IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Shapes, Readable,
                         testing::Values(Shape{"Chain", [] { return vrl_test::chainOf(149); }, 0, 1300},
                                         Shape{"Ring", [] { return vrl_test::ringOf(12); }, 0, 300},
                                         Shape{"CoupledRings", [] { return vrl_test::coupledRings(6); }, 5, 1000},
                                         Shape{"Tree", [] { return vrl_test::treeOf(5); }, 0, 1600},
                                         Shape{"Mesh", [] { return vrl_test::meshOf(8, 4); }, 0, 1600},
                                         Shape{"Pads", [] { return vrl_test::padsOf(131); }, 0, 1600},
                                         Shape{"Star", [] { return vrl_test::starOf(20); }, 0, 1600},
                                         Shape{"Heaters", [] { return vrl_test::heatersOf(6); }, 0, 1000},
                                         Shape{"Nested", [] { return vrl_test::nestedOf(2); }, 0, 1600},
                                         Shape{"Empty", [] { return vrl_test::padsOf(1); }, 0, 400}),
                         [](auto const& shape) { return std::string(shape.param.name); });

class Random : public testing::TestWithParam<unsigned> {};

TEST_P(Random, HasNoFaults) {
    EXPECT_THAT(vrl_test::measured(svgOf(vrl_test::randomOf(30, GetParam()))).faults, testing::IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Seeds, Random, testing::Range(1u, 25u));

}  // namespace
