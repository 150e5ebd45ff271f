#include <gmock/gmock.h>

#include "tests/support/files.h"
#include "tests/tools/page/browser.h"
#include "tests/tools/page/page_design.h"

// What a page shows, as a browser has it after its scripts have run.

namespace {

using testing::HasSubstr;
using testing::Not;
using vrl_test::Colour;
using vrl_test::documentOf;
using vrl_test::modulatorPage;
using vrl_test::screenshotOf;
using vrl_test::tagOf;
using vrl_test::textOf;
using vrl_test::Tool;

/// The page of the modulator.
class Page : public testing::Test {
protected:
    std::string detailsAt(std::string const& place) const { return textOf(documentOf(page + place), "aside"); }

    Tool tool;
    std::string page = modulatorPage(tool);
};

TEST_F(Page, ShowsTheDesignAtFirst) {
    EXPECT_EQ(detailsAt(""), "mod\n"
                             "mod.vrl: Netlist of 7 elements, 3 inside composites\n"
                             "Click a block, a wire or an element of the list. Drag and turn the wheel to look "
                             "around; keys: / searches, + - 0 zoom, arrows walk along the elements.\n");
}

TEST_F(Page, ShowsTheElementOfTheAddress) {
    EXPECT_EQ(detailsAt("#element=bend"),
              "bend\n"
              "sfBend of SampleFab\n"
              "Findings\n"
              "error parameter 'radius' is 2 um, outside its range 5 to 500 um [value-out-of-range]\n"
              "give it a value from 5 to 500 um\n"
              "warning in0: the optical port is open [open-port]\n"
              "connect it to another port or to the boundary, or end it in a terminator\n"
              "warning out0: the optical port is open [open-port]\n"
              "connect it to another port or to the boundary, or end it in a terminator\n"
              "note no path leads from here to the boundary [island]\n"
              "connect it to the rest of the circuit, or put one of its nodes on the boundary\n"
              "Parameters\n"
              "parameter | value\n"
              "radius | 2 um\n"
              "default 10 um\n"
              "angle | 90 deg\n"
              "width | 0.45 um\n"
              "cross section | strip\n"
              "process flow | passive\n"
              "Ports\n"
              "port | domain | connected to\n"
              "in0 | Optics | open\n"
              "out0 | Optics | open\n");
}

TEST_F(Page, KeepsDescriptionsAndRangesForThePointer) {
    EXPECT_THAT(documentOf(page + "#element=bend"),
                HasSubstr("<tr title=\"radius of the centre line; range 5 to 500 um\"><td>radius</td>"));
}

TEST_F(Page, ShowsAnElementInsideACompositeWithFindingsAtItsPartners) {
    std::string const document = documentOf(page + "#element=arms/trim");
    EXPECT_EQ(textOf(document, "aside"),
              "trim\n"
              "inside arms\n"
              "sfStraight of SampleFab\n"
              "Findings\n"
              "warning arms/lower,in0: is rib of width 0.5 um, and arms/trim,out0 at node 3 is strip of width 0.45 um "
              "[cross-section-mismatch]\n"
              "put a taper or a transition between them, or choose one cross section for both\n"
              "Parameters\n"
              "parameter | value\n"
              "length | 20 um\n"
              "width | 0.45 um\n"
              "cross section | strip\n"
              "Ports\n"
              "port | domain | connected to\n"
              "in0 | Optics | arms,in1 of the composite\n"
              "node 2\n"
              "out0 | Optics | arms/lower,in0\n"
              "node 3\n");
    EXPECT_EQ(tagOf(document, "e1_e2"), "<g id=\"e1_e2\" class=\"element page-chosen\">");
    EXPECT_THAT(tagOf(document, "e1_n3"), HasSubstr("class=\"wire optics e1_net3 page-reached\""));
    EXPECT_THAT(tagOf(document, "e1_n1"), Not(HasSubstr("page-reached")));
}

TEST_F(Page, ShowsWhatAPortOfACompositeIsConnectedToInsideAndOutside) {
    std::string const details = detailsAt("#element=arms");
    EXPECT_THAT(details, testing::StartsWith("arms\nsfPushPullArms of SampleFab\nComposite of 3 elements close\n"));
    EXPECT_EQ(details.substr(details.find("Ports\n")), "Ports\n"
                                                       "port | domain | connected to\n"
                                                       "in0 | Optics | split,out0\n"
                                                       "arms/upper,in0 inside\n"
                                                       "node 11\n"
                                                       "in1 | Optics | split,out1\n"
                                                       "arms/trim,in0 inside\n"
                                                       "node 12\n"
                                                       "out0 | Optics | join,in0\n"
                                                       "arms/upper,out0 inside\n"
                                                       "node 13\n"
                                                       "out1 | Optics | join,in1\n"
                                                       "arms/lower,out0 inside\n"
                                                       "node 14\n"
                                                       "upper | RF | open\n"
                                                       "arms/upper,signal inside\n"
                                                       "lower | RF | open\n"
                                                       "arms/lower,signal inside\n"
                                                       "ground | RF | open\n"
                                                       "arms/lower,ground inside\n"
                                                       "arms/upper,ground inside\n");
}

TEST_F(Page, NamesTheBoundary) {
    std::string const details = detailsAt("#element=mod");
    EXPECT_EQ(details.substr(details.find("Ports\n")), "Ports\n"
                                                       "port | domain | connected to\n"
                                                       "in0 | Optics | in,out0\n"
                                                       "node 9\n"
                                                       "out0 | Optics | split,in0\n"
                                                       "node 10\n"
                                                       "signal | RF | boundary: contact 1\n"
                                                       "node 18\n"
                                                       "ground | RF | boundary: contact 2\n"
                                                       "node 19\n");
}

TEST_F(Page, NamesAnElementThatTheDesignDoesNotHave) {
    EXPECT_EQ(detailsAt("#element=100%25%20gone"), "100% gone\nThe design has no element of this name.\n");
    EXPECT_EQ(detailsAt("#element=100%"), "100%\nThe design has no element of this name.\n") << "no sequence of bytes";
}

TEST_F(Page, ListsTheElements) {
    EXPECT_EQ(textOf(documentOf(page), "ul id=\"page-tree\""), "\u25bearms sfPushPullArms\n"
                                                               "lower sfPhaseModulator\n"
                                                               "trim sfStraight\n"
                                                               "upper sfPhaseModulator\n"
                                                               "bend sfBend\n"
                                                               "in sfEdgeCoupler\n"
                                                               "join sfCombiner\n"
                                                               "mod sfPhaseModulator\n"
                                                               "out sfEdgeCoupler\n"
                                                               "split sfSplitter\n");
}

TEST_F(Page, MarksBlocksWithFindings) {
    std::string const document = documentOf(page);
    EXPECT_EQ(vrl_test::count(document, "<circle class=\"page-mark error\""), 1u);
    EXPECT_EQ(vrl_test::count(document, "<circle class=\"page-mark warning\""), 6u);
    EXPECT_EQ(vrl_test::count(document, "<span class=\"page-dot error\" title=\"error\">"), 1u);
    EXPECT_EQ(vrl_test::count(document, "<span class=\"page-dot warning\" title=\"warning\">"), 6u);
}

TEST_F(Page, GroupsTheFindingsByRuleAndListsThoseOfFew) {
    EXPECT_EQ(textOf(documentOf(page), "div id=\"page-findings\""),
              "error value-out-of-range: a parameter is outside its range (1)\n"
              "error bend: parameter 'radius' is 2 um, outside its range 5 to 500 um [value-out-of-range]\n"
              "give it a value from 5 to 500 um\n"
              "warning cross-section-mismatch: optical ports with different cross sections meet (3)\n"
              "warning arms/lower,in0: is rib of width 0.5 um, and arms/trim,out0 at node 3 is strip of width 0.45 um "
              "[cross-section-mismatch]\n"
              "put a taper or a transition between them, or choose one cross section for both\n"
              "warning in,out0: is strip of width 0.45 um, and mod,in0 at node 9 is rib of width 0.5 um "
              "[cross-section-mismatch]\n"
              "put a taper or a transition between them, or choose one cross section for both\n"
              "warning mod,out0: is rib of width 0.5 um, and split,in0 at node 10 is strip of width 0.45 um "
              "[cross-section-mismatch]\n"
              "put a taper or a transition between them, or choose one cross section for both\n"
              "warning open-port: a port is connected to nothing (5)\n"
              "warning arms,ground: the port is open [open-port]\n"
              "connect it to another port or to the boundary\n"
              "warning arms,lower: the port is open [open-port]\n"
              "connect it to another port or to the boundary\n"
              "warning arms,upper: the port is open [open-port]\n"
              "connect it to another port or to the boundary\n"
              "warning bend,in0: the optical port is open [open-port]\n"
              "connect it to another port or to the boundary, or end it in a terminator\n"
              "warning bend,out0: the optical port is open [open-port]\n"
              "connect it to another port or to the boundary, or end it in a terminator\n"
              "note island: elements that no path connects to the boundary (1)\n"
              "note bend: no path leads from here to the boundary [island]\n"
              "connect it to the rest of the circuit, or put one of its nodes on the boundary\n");
}

TEST_F(Page, FindsNamesKindsAndParameters) {
    struct Case {
        char const* text;
        char const* count;
        char const* hits;
    };
    for (Case const& each :
         {Case{"ARMS/T", "1 element\n", "arms/trim sfStraight\n"},
          Case{"edgecoup", "2 elements\n", "in sfEdgeCoupler\nout sfEdgeCoupler\n"},
          Case{"radius%20=%202", "1 element\n", "bend sfBend\n"}, Case{"nowhere", "Nothing found\n", ""}}) {
        std::string const document = documentOf(page + "#search=" + each.text);
        EXPECT_EQ(textOf(document, "p id=\"page-hit-count\""), each.count);
        EXPECT_EQ(textOf(document, "ol id=\"page-hits\""), each.hits);
    }
}

TEST_F(Page, MarksHitsInThePicture) {
    std::string const document = documentOf(page + "#search=edge&element=in");
    EXPECT_EQ(tagOf(document, "e3"), "<g id=\"e3\" class=\"element page-hit page-chosen\">");
    EXPECT_EQ(tagOf(document, "e6"), "<g id=\"e6\" class=\"element page-hit\">");
    EXPECT_EQ(tagOf(document, "e2"), "<g id=\"e2\" class=\"element\">");
}

TEST_F(Page, ClosesACompositeInTheTreeAndInThePicture) {
    std::string const open = documentOf(page), closed = documentOf(page + "#closed=arms");
    EXPECT_EQ(tagOf(open, "e1"), "<g id=\"e1\" class=\"frame\">");
    EXPECT_EQ(tagOf(open, "e1_inside"), "no e1_inside");
    EXPECT_EQ(tagOf(closed, "e1"), "<g id=\"e1\" class=\"frame page-closed\">");
    EXPECT_EQ(tagOf(closed, "e1_inside"), "<g id=\"e1_inside\" display=\"none\">");
    EXPECT_THAT(closed, testing::ContainsRegex("<text class=\"name page-cover\" [^>]*>arms</text></g>"));
    EXPECT_THAT(open,
                HasSubstr("<li role=\"treeitem\" tabindex=\"0\" aria-selected=\"false\" aria-expanded=\"true\">"));
    EXPECT_THAT(closed,
                HasSubstr("<li role=\"treeitem\" tabindex=\"0\" aria-selected=\"false\" aria-expanded=\"false\">"));
    EXPECT_THAT(closed, HasSubstr("<ul role=\"group\" hidden=\"\">"));
}

TEST_F(Page, OpensWhatIsAroundTheElementOfTheAddress) {
    std::string const document = documentOf(page + "#closed=arms&element=arms/upper");
    EXPECT_EQ(tagOf(document, "e1"), "<g id=\"e1\" class=\"frame\">");
    EXPECT_EQ(tagOf(document, "e1_inside"), "<g id=\"e1_inside\" display=\"inline\">");
    EXPECT_EQ(tagOf(document, "e1_e3"), "<g id=\"e1_e3\" class=\"element page-chosen\">");
}

// The lists are 320 pixels wide, and the details 368.
constexpr std::size_t kLeft = 320, kRight = 1400 - 368;
Colour const kChosen{0xFF, 0xEA, 0xF4}, kBlock{0xF5, 0xF5, 0xF2}, kOptics{0x00, 0x72, 0xB2};

TEST_F(Page, ShowsThePicture) {
    auto const pixels = screenshotOf(page);
    ASSERT_EQ(pixels.width, 1400u);
    EXPECT_GT(pixels.count(kBlock, kLeft, kRight), 5000u);
    EXPECT_GT(pixels.count(kOptics, kLeft, kRight), 100u);
    EXPECT_EQ(pixels.count(kBlock, kRight, 1400), 0u);
    EXPECT_EQ(pixels.count(kChosen, 0, 1400), 0u);
}

TEST_F(Page, ShowsTheChosenBlockInTheMiddle) {
    auto const pixels = screenshotOf(page + "#element=bend");
    std::size_t const all = pixels.count(kChosen, 0, 1400), middle = (kLeft + kRight) / 2;
    EXPECT_GT(all, 2000u) << "of about 100 times 48";
    EXPECT_EQ(pixels.count(kChosen, middle - 60, middle + 60), all);
}

TEST_F(Page, PrintsThePictureAlone) {
    std::string const text = vrl_test::printed(page + "#element=bend&search=in");
    EXPECT_THAT(text, HasSubstr("sfPushPullArms"));
    EXPECT_THAT(text, HasSubstr("contact 2"));
    EXPECT_THAT(text, Not(HasSubstr("Elements")));
    EXPECT_THAT(text, Not(HasSubstr("Parameters")));
}

}  // namespace
