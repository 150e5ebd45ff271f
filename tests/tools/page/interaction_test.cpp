#include <gmock/gmock.h>

#include "tests/tools/page/browser.h"
#include "tests/tools/page/page_design.h"

// The page at clicks and keys, which a script of the test makes.

namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;
using vrl_test::documentOf;
using vrl_test::modulatorPage;
using vrl_test::tagOf;
using vrl_test::textOf;
using vrl_test::Tool;

constexpr char kHelpers[] = R"(
const one = (selector) => document.querySelector(selector);
const click = (target) => target.dispatchEvent(new MouseEvent("click", { bubbles: true, view: window }));
const press = (key, options = {}) =>
  document.activeElement.dispatchEvent(new KeyboardEvent("keydown", { key, bubbles: true, cancelable: true, ...options }));
const type = (text) => {
  one("#page-search").value = text;
  one("#page-search").dispatchEvent(new Event("input"));
};
const item = (name) => [...document.querySelectorAll("#page-tree li")].find((li) => li.element.path === name);
)";

class Interaction : public testing::Test {
protected:
    /// The document after a script.
    std::string after(std::string const& script) {
        tool.write("tested.html", vrl_test::withScript(tool.read("mod.html"), kHelpers + script));
        return documentOf(tool.path("tested.html"));
    }
    std::string detailsAfter(std::string const& script) { return textOf(after(script), "aside"); }

    Tool tool;
    std::string page = modulatorPage(tool);
};

TEST_F(Interaction, AClickAtABlockShowsIt) {
    std::string const document = after("click(one('#e2 text.name')); document.title = location.hash;");
    EXPECT_THAT(textOf(document, "aside"), StartsWith("bend\nsfBend of SampleFab\n"));
    EXPECT_THAT(document, HasSubstr("<title>#element=bend</title>"));
    EXPECT_THAT(document, HasSubstr("<li role=\"treeitem\" tabindex=\"0\" aria-selected=\"true\">"));
}

TEST_F(Interaction, AClickAtTheDeskShowsTheDesign) {
    EXPECT_THAT(detailsAfter("click(one('#e2')); click(one('#page-picture'));"),
                StartsWith("mod\nmod.vrl: Netlist of"));
}

TEST_F(Interaction, AClickAtAWireShowsItsNet) {
    std::string const document = after("click(one('#n9 path'));");
    EXPECT_EQ(textOf(document, "aside"), "N9\nA net\nConnects\nin,out0\nmod,in0\n");
    EXPECT_THAT(tagOf(document, "n9"), HasSubstr("page-reached"));
    EXPECT_EQ(detailsAfter("click(one('#e1_n2 path'));"),
              "N2\nA net inside arms\nConnects\narms/trim,in0\narms,in1 of the composite\n");
}

TEST_F(Interaction, APartnerIsALink) {
    EXPECT_THAT(detailsAfter("click(one('#e2')); click(item('mod').firstChild);"
                             "click([...document.querySelectorAll('aside button')].find((b) => "
                             "b.textContent === 'in,out0' && b.closest('table')));"),
                StartsWith("in\nsfEdgeCoupler of SampleFab\n"));
}

TEST_F(Interaction, TheTreeOpensAndClosesACompositeInThePicture) {
    std::string const turn = "click(item('arms').querySelector('.page-turner'));";
    std::string const closed = after(turn), open = after(turn + turn);
    EXPECT_EQ(tagOf(closed, "e1"), "<g id=\"e1\" class=\"frame page-closed\">");
    EXPECT_EQ(tagOf(closed, "e1_inside"), "<g id=\"e1_inside\" display=\"none\">");
    EXPECT_EQ(tagOf(open, "e1"), "<g id=\"e1\" class=\"frame\">");
    EXPECT_EQ(tagOf(open, "e1_inside"), "<g id=\"e1_inside\" display=\"inline\">");
}

TEST_F(Interaction, SoDoTheButtons) {
    EXPECT_THAT(tagOf(after("click(one('#page-close-all'));"), "e1"), HasSubstr("page-closed"));
    EXPECT_THAT(tagOf(after("click(one('#page-close-all')); click(one('#page-open-all'));"), "e1"),
                Not(HasSubstr("page-closed")));
}

// Each walk begins at the composite, which is open.
TEST_F(Interaction, TheTreeIsWalkedByKeys) {
    std::string const script = R"(
const walk = (...keys) => {
  click(one("#page-open-all"));
  item("arms").focus();
  keys.forEach((key) => press(key));
  press("Enter");
  return one("h1").textContent;
};
document.title = [
  walk(), walk("ArrowDown"), walk("ArrowRight"), walk("ArrowLeft", "ArrowDown"),
  walk("ArrowLeft", "ArrowRight", "ArrowRight"), walk("ArrowDown", "ArrowLeft"),
  walk("End"), walk("End", "ArrowUp"), walk("End", "Home"),
].join(", ");)";
    EXPECT_THAT(after(script), HasSubstr("<title>arms, lower, lower, bend, lower, arms, split, out, arms</title>"));
}

TEST_F(Interaction, EnterGoesToTheNextHit) {
    std::string const script = R"(
const next = (options) => {
  press("Enter", options);
  return one("#page-hit-count").textContent + " " + one("h1").textContent;
};
press("/");
type("edge");
document.title = [next(), next(), next(), next({ shiftKey: true })].join(", ");)";
    EXPECT_THAT(after(script), HasSubstr("<title>1 of 2 elements in, 2 of 2 elements out, 1 of 2 elements in, "
                                         "2 of 2 elements out</title>"));
}

TEST_F(Interaction, KeysZoomAndFit) {
    EXPECT_THAT(tagOf(after("press('+'); press('+');"), "page-view"), HasSubstr("scale(2.25)"));
    EXPECT_THAT(tagOf(after("press('+'); press('-');"), "page-view"), HasSubstr("scale(1)"));
    EXPECT_THAT(tagOf(after("click(one('#e2')); press('0');"), "page-view"), HasSubstr("translate(0,0) scale(1)"));
}

TEST_F(Interaction, TheWheelZooms) {
    EXPECT_THAT(tagOf(after("one('#page-picture').dispatchEvent(new WheelEvent('wheel', "
                            "{ deltaY: -500, clientX: 600, clientY: 400, bubbles: true, cancelable: true }));"),
                      "page-view"),
                HasSubstr("scale(2)"));
}

TEST_F(Interaction, AClickAtATurnLeadsToTheNextOneOfItsWire) {
    tool.run("draw", {"mod.vrl", "-o", "mod.html", "--width", "400"});
    EXPECT_THAT(
        after("const at = (id) => { click(one('#' + id)); return one('#page-view').getAttribute('transform'); };"
              "const views = [at('turn1'), at('turn1_1'), at('turn1')];"
              "document.title = [views[0] === views[1], views[0] === views[2]].join(', ');"),
        HasSubstr("<title>false, true</title>"));
}

TEST_F(Interaction, FollowsAChangedAddress) {
    EXPECT_THAT(detailsAfter("location.hash = '#element=split';"), StartsWith("split\nsfSplitter of SampleFab\n"));
}

}  // namespace
