#include <gmock/gmock.h>

#include <nlohmann/json.hpp>

#include "tests/support/files.h"
#include "tests/tools/page/browser.h"
#include "tests/tools/page/page_design.h"

// 'vrl draw' with a page as its format.

namespace {

using testing::HasSubstr;
using testing::Not;
using vrl_test::documentOf;
using vrl_test::modulatorPage;
using vrl_test::tagOf;
using vrl_test::textOf;
using vrl_test::Tool;

class PageCommand : public testing::Test {
protected:
    std::string refused(std::vector<std::string> const& arguments) const {
        auto const outcome = tool.run("draw", arguments);
        EXPECT_EQ(outcome.status, 2);
        EXPECT_EQ(outcome.out, "");
        return outcome.err;
    }

    Tool tool;
    std::string page = modulatorPage(tool);
};

TEST_F(PageCommand, WritesTheSameToStandardOutput) {
    auto const outcome = tool.run("draw", {"mod.vrl", "--format", "html"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(outcome.out, vrl_test::readFile(page));
}

TEST_F(PageCommand, RefusesSheets) {
    EXPECT_EQ(refused({"mod.vrl", "-o", "a.html", "--page", "a4"}),
              "vrl: --page: makes several sheets, and a file of HTML has one\n"
              "  leave it out: a browser prints the picture on any paper\n");
    EXPECT_EQ(refused({"mod.vrl", "-o", "a.html", "--height", "500"}),
              "vrl: --height: makes several sheets, and a file of HTML has one\n"
              "  leave it out: a browser prints the picture on any paper\n");
}

TEST_F(PageCommand, ReportsWhatItWrote) {
    auto const json = nlohmann::json::parse(tool.run("draw", {"mod.vrl", "-o", "a.html", "--json"}).out);
    EXPECT_EQ(json["pictureFormat"], "html");
    EXPECT_EQ(json["shown"], 7);
    EXPECT_EQ(json["sheets"].size(), 1u);
    EXPECT_EQ(json["sheets"][0]["output"], "a.html");
}

TEST_F(PageCommand, KeepsElementsInTheListsThatThePictureLeavesOut) {
    tool.run("draw", {"mod.vrl", "-o", "a.html", "--depth", "0", "--around", "arms", "--hops", "0"});
    std::string const inside = documentOf(tool.path("a.html") + "#element=arms/trim");
    EXPECT_THAT(textOf(inside, "aside"),
                HasSubstr("trim\ninside arms\nsfStraight of SampleFab\nNot in the picture.\n"));
    EXPECT_EQ(tagOf(inside, "e1"), "<g id=\"e1\" class=\"element composite page-chosen\">") << "it is in there";
    EXPECT_EQ(tagOf(inside, "e2"), "no e2");
    EXPECT_THAT(textOf(documentOf(tool.path("a.html")), "aside"),
                HasSubstr("\nhidden: 6 of 7 elements, more than 0 hops from 'arms'\n"));
}

TEST_F(PageCommand, ShowsParametersInTheBlocksIfAsked) {
    tool.run("draw", {"mod.vrl", "-o", "a.html", "--parameters", "--title", "A <b>title</b>"});
    std::string const written = tool.read("a.html");
    EXPECT_THAT(written, HasSubstr(">radius = 2 um</text>"));
    EXPECT_THAT(written, HasSubstr("<title>A &lt;b&gt;title&lt;/b&gt;</title>"));
    EXPECT_THAT(textOf(documentOf(tool.path("a.html")), "aside"), testing::StartsWith("A <b>title</b>\n"));
}

TEST_F(PageCommand, SeparatesWhatExceptionsCover) {
    tool.write("mod.vrl.exceptions.yml",
               "exceptions:\n  - {rule: value-out-of-range, element: bend, reason: a test of ours}\n");
    tool.run("draw", {"mod.vrl", "-o", "a.html"});
    std::string const findings = textOf(documentOf(tool.path("a.html")), "div id=\"page-findings\"");
    EXPECT_THAT(findings, testing::StartsWith("warning "));
    EXPECT_THAT(findings, testing::EndsWith("\nexcepted (1)\n"
                                            "error bend: parameter 'radius' is 2 um, outside its range 5 to 500 um "
                                            "[value-out-of-range]\n"
                                            "give it a value from 5 to 500 um\n"
                                            "excepted: a test of ours\n"));
}

TEST_F(PageCommand, DrawsADesignThatCannotBeChecked) {
    tool.write("mod.vrl.exceptions.yml", "exceptions: 5\n");
    auto const outcome = tool.run("draw", {"mod.vrl", "-o", "a.html"});
    EXPECT_EQ(outcome.status, 0);
    std::string const failure =
        "mod.vrl.exceptions.yml:1:13: 'exceptions' of the file is a number, where a list belongs\n";
    EXPECT_EQ(outcome.err, "vrl: " + failure);
    EXPECT_EQ(textOf(documentOf(tool.path("a.html")), "div id=\"page-findings\""), "Not checked: " + failure);
}

TEST_F(PageCommand, MarksStandIns) {
    tool.writeConfig("none.ini", {"vrlDemoDll"});
    auto const outcome = tool.run("draw", {"mod.vrl", "-o", "a.html", "--config", "none.ini"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(textOf(documentOf(tool.path("a.html") + "#element=bend"), "aside"),
                testing::StartsWith("bend\nsfBend of SampleFab (not loaded)\n"));
}

TEST_F(PageCommand, MarksPlacedElementsToo) {
    tool.write("a.yml", "instances:\n  line: {component: sfStraight}\n  bend: {component: sfBend}\n"
                        "placements:\n  line: {x: 0, y: 0}\n  bend: {x: 100, y: 0}\n");
    ASSERT_EQ(tool.run("import", {"a.yml", "-o", "a.vrl"}).status, 0);
    ASSERT_EQ(tool.run("draw", {"a.vrl", "-o", "a.html", "--placement"}).status, 0);
    std::string const document = documentOf(tool.path("a.html") + "#element=bend");
    EXPECT_EQ(tagOf(document, "e1"), "<g id=\"e1\" class=\"element placed page-chosen\">");
    EXPECT_THAT(document, testing::ContainsRegex("<circle class=\"page-mark warning\" cx=\"[1-9][0-9.]*\" cy=\"[1-9]"));
}

TEST_F(PageCommand, DrawsAnEmptyDesign) {
    vrl_test::SampleCircuit().save(tool.path("empty.vrl"));
    tool.run("draw", {"empty.vrl", "-o", "empty.html"});
    std::string const document = documentOf(tool.path("empty.html"));
    EXPECT_THAT(textOf(document, "aside"), testing::StartsWith("empty\nempty.vrl: Netlist of 0 elements\n"
                                                               "the circuit has no elements\n"));
    EXPECT_EQ(textOf(document, "div id=\"page-findings\""),
              "note empty-circuit: a circuit without elements (1)\n"
              "note the design: there is no element in the circuit [empty-circuit]\n"
              "add blocks, or take the right file\n");
}

}  // namespace
