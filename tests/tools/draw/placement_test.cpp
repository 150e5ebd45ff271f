#include <gmock/gmock.h>

#include "tests/tools/draw/measure.h"
#include "tests/tools/draw/pictures.h"
#include "tests/tools/tool.h"

// Pictures by the placements that came with a netlist.

namespace {

using testing::Contains;
using testing::HasSubstr;
using vrl_test::Tool;

constexpr char kInstances[] = "instances:\n"
                              "  line: {component: sfStraight}\n"
                              "  bend: {component: sfBend}\n"
                              "  tip: {component: sfTaper}\n"
                              "nets:\n"
                              "- {p1: 'line,out0', p2: 'bend,in0'}\n"
                              "- {p1: 'bend,out0', p2: 'tip,in0'}\n";

/// A tool with an imported netlist of three blocks with these placements.
class Placement : public testing::Test {
protected:
    void import(std::string const& placements, std::string const& instances = kInstances) {
        tool.write("a.yml", instances + placements);
        ASSERT_EQ(tool.run("import", {"a.yml", "-o", "a.vrl"}).status, 0);
    }

    vrl_test::Outcome draw(std::vector<std::string> options = {}) {
        options.insert(options.begin(), {"a.vrl", "-o", "a.svg", "--placement"});
        return tool.run("draw", options);
    }

    std::string picture() const { return tool.read("a.svg"); }

    Tool tool;
};

TEST_F(Placement, PutsEachBlockAtItsPlace) {
    import("placements:\n"
           "  line: {x: 0, y: 0}\n"
           "  bend: {x: 100, y: 0, rotation: 90}\n"
           "  tip: {x: 90, y: 50, rotation: 180, mirror: true}\n");
    EXPECT_EQ(draw().err, "");
    std::string const svg = picture();
    EXPECT_TRUE(vrl_test::isWellFormed(svg));
    EXPECT_THAT(svg, HasSubstr("<g id=\"e2\" class=\"element placed\">\n"
                               "<title>line at 0, 0 um: sfStraight</title>\n"
                               "<path class=\"body\" d=\"M88,857H124V848L115,839H88V857\"/>\n"));
    EXPECT_THAT(svg, HasSubstr("<title>bend at 100, 0 um, turned by 90: sfBend</title>\n"));
    EXPECT_THAT(svg, HasSubstr("<title>tip at 90, 50 um, turned by 180, mirrored: sfTaper</title>\n"));
    EXPECT_THAT(vrl_test::textsOf(svg), testing::UnorderedElementsAre("a", "bend", "line", "tip", "20 um", "optics"));
    EXPECT_EQ(vrl_test::wiresOf(svg), "e1 e2 optics\ne1 e3 optics\n");
}

TEST_F(Placement, PutsAsideWhatHasNoPlainPlace) {
    import("placements:\n"
           "  line: {x: 1, y: 2, dx: 3}\n"
           "  bend: {x: 'line,out0', y: 0}\n");
    EXPECT_EQ(draw().err, "vrl: a.vrl: 1 element without a placement: tip\n"
                          "vrl: a.vrl: 1 element with a placement that is not all plain numbers: bend\n");
    EXPECT_THAT(picture(), HasSubstr("<title>line at 4, 2 um: sfStraight</title>"));
    EXPECT_EQ(vrl_test::count(picture(), "class=\"element unplaced\""), 2u);
    EXPECT_EQ(vrl_test::wiresOf(picture()), "");
}

TEST_F(Placement, DrawsOfTwoGroupsVeryFarApartTheLarger) {
    import("placements:\n"
           "  line: {x: 0, y: 0}\n"
           "  bend: {x: 1e8, y: 0}\n"
           "  tip: {x: 30, y: 10}\n");
    EXPECT_EQ(draw().err, "vrl: a.vrl: 1 element very far from the others: bend\n");
    EXPECT_EQ(vrl_test::count(picture(), "class=\"element placed\""), 2u);
    EXPECT_THAT(vrl_test::textsOf(picture()), Contains("5 um"));
}

TEST_F(Placement, PassesOverAbsurdNumbers) {
    for (char const* const number : {"1e308", "-1e308", ".nan", ".inf", "-.inf", "1000000001", "true", "[1]", "~"}) {
        import(std::string("placements:\n  line: {x: 0, y: 0}\n  bend: {x: 0, y: 0, rotation: ") + number +
               "}\n  tip: {x: " + number + ", y: 1}\n");
        auto const outcome = draw();
        EXPECT_EQ(outcome.status, 0) << number;
        std::size_t const drawn = number == std::string("~") ? 3u : 1u;
        EXPECT_EQ(vrl_test::count(picture(), "class=\"element placed\""), drawn) << number;
    }
}

TEST_F(Placement, TakesOneBlockOrAllAtOnePlace) {
    import("placements:\n  line: {x: 5}\n  bend: {x: 5}\n  tip: {x: 5}\n");
    EXPECT_EQ(draw().err, "");
    EXPECT_EQ(vrl_test::count(picture(), "class=\"element placed\""), 3u);
}

TEST_F(Placement, DrawsAnArrayAtItsOnePlace) {
    import("placements:\n  many: {x: 5, y: 5}\n  tip: {x: 50, y: 5}\n",
           "instances:\n"
           "  many: {component: sfStraight, array: {columns: 2, rows: 2}}\n"
           "  tip: {component: sfTaper}\n"
           "nets:\n"
           "- {p1: 'many<1.0>,out0', p2: 'tip,in0'}\n");
    EXPECT_EQ(draw().err, "");
    EXPECT_THAT(picture(), HasSubstr("<title>many at 5, 5 um: sfStraight, sfStraight, sfStraight, sfStraight</title>"));
    EXPECT_EQ(vrl_test::count(picture(), "class=\"element placed\""), 2u);
    EXPECT_EQ(vrl_test::wiresOf(picture()), "e1 e5 optics\n");
}

TEST_F(Placement, NeedsPlaces) {
    import("");
    EXPECT_EQ(draw().err, "vrl: a.vrl: none of its elements has a placement that can be drawn\n"
                          "  placements come with an imported netlist; draw the circuit without --placement\n");
    EXPECT_EQ(tool.run("draw", {"a.vrl", "--format", "dot", "--placement"}).err,
              "vrl: --placement: a graph has no places\n"
              "  take svg, pdf, png or html\n");
}

TEST_F(Placement, FitsOnPaper) {
    import("placements:\n  line: {x: 0, y: 0}\n  bend: {x: 10, y: 900}\n  tip: {x: 10, y: 500}\n");
    EXPECT_EQ(draw({"--page", "a4"}).err, "");
    EXPECT_THAT(picture(), HasSubstr("width=\"210mm\" height=\"297mm\""));
    import("placements:\n  line: {x: 0, y: 0}\n  bend: {x: 900, y: 900}\n  tip: {x: 500, y: 10}\n");
    EXPECT_EQ(draw({"--page", "a4"}).err, "");
    EXPECT_THAT(picture(), HasSubstr("width=\"297mm\" height=\"210mm\""));
    import("placements:\n  line: {x: 0, y: 0}\n  bend: {x: 900, y: 9}\n  tip: {x: 500, y: 10}\n");
    EXPECT_EQ(draw({"--page", "a4"}).err, "");
}

}  // namespace
