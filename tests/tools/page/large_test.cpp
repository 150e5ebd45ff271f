#include <gmock/gmock.h>

#include "tests/tools/page/browser.h"
#include "tests/tools/page/page_design.h"

// A page of 10,000 elements, a hundred of which are composites with three more each.

namespace {

using testing::StartsWith;
using vrl_test::count;
using vrl_test::documentOf;
using vrl_test::SampleCircuit;
using vrl_test::textOf;
using vrl_test::Tool;

constexpr int kChains = 100;

std::string name(char const* stem, int chain, int place) {
    return stem + std::to_string(chain) + "_" + std::to_string(place);
}

/// A chain of 99 bends and a composite.
void addChain(SampleCircuit& circuit, int chain) {
    circuit.add(name("bend", chain, 0), "sfBend").input(name("bend", chain, 0) + ",in0");
    for (int i = 1; i < 99; ++i)
        circuit.add(name("bend", chain, i), "sfBend")
            .join(name("bend", chain, i - 1) + ",out0", name("bend", chain, i) + ",in0");
    circuit.add(name("arms", chain, 0), "sfPushPullArms");
    circuit.join(name("bend", chain, 98) + ",out0", name("arms", chain, 0) + ",in0");
}

TEST(LargePage, HasAllElements) {
    Tool const tool;
    SampleCircuit circuit;
    for (int chain = 0; chain < kChains; ++chain) addChain(circuit, chain);
    circuit.save(tool.path("a.vrl"));
    ASSERT_EQ(tool.run("draw", {"a.vrl", "-o", "a.html"}).status, 0);

    std::string const first = documentOf(tool.path("a.html"));
    EXPECT_EQ(count(first, "class=\"element\""), 10200u) << "bends, and those inside composites";
    EXPECT_EQ(count(first, "class=\"frame page-closed\""), 100u);
    EXPECT_EQ(count(first, "_inside\" display=\"none\">"), 100u);
    EXPECT_EQ(count(first, "<li role=\"treeitem\""), 10000u) << "closed composites are not filled";
    EXPECT_EQ(count(first, " page-near\""), 0u) << "no text is legible yet";
    EXPECT_EQ(textOf(first, "summary id=\"page-element-count\""), "Elements (10300)\n");

    std::string const address = "#element=arms77_0/trim&search=bend42_";
    std::string const chosen = documentOf(tool.path("a.html") + address);
    EXPECT_THAT(textOf(chosen, "aside"), StartsWith("trim\ninside arms77_0\nsfStraight of SampleFab\n"));
    EXPECT_EQ(textOf(chosen, "p id=\"page-hit-count\""), "99 elements\n");
    EXPECT_EQ(count(chosen, "class=\"frame page-closed"), 99u);
    EXPECT_EQ(count(chosen, "<li role=\"treeitem\""), 10003u);
    EXPECT_EQ(count(chosen, "class=\"element page-near page-chosen\"") +
                  count(chosen, "class=\"element page-chosen page-near\""),
              1u);
    EXPECT_GT(count(chosen, "page-near"), 3u);
    EXPECT_LT(count(chosen, "page-near"), 400u) << "texts are shown around what is looked at";
}

}  // namespace
