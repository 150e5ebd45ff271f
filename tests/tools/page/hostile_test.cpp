#include <gmock/gmock.h>

#include <regex>
#include <set>

#include "tests/support/files.h"
#include "tests/tools/page/browser.h"
#include "tests/tools/page/page_design.h"

// What designs cannot do with a page: run scripts, bring in markup, or make it look for anything on a network.

namespace {

using testing::HasSubstr;
using testing::Not;
using vrl_test::count;
using vrl_test::documentOf;
using vrl_test::SampleCircuit;
using vrl_test::tagOf;
using vrl_test::textOf;
using vrl_test::Tool;

constexpr char kMarkup[] = "</script><img src=x onerror=\"document.title='run'\">";

/// A page whose design has names that a page could trip over.
class HostilePage : public testing::Test {
protected:
    HostilePage() {
        SampleCircuit circuit;
        circuit.add(kMarkup, "sfBend").add("<!--<script>", "sfBend").add("\xFF\xC3(", "sfBend");
        circuit.add("line\nfeed", "sfBend").add("</title></svg>&amp;", "sfBend").add("__proto__", "sfBend");
        circuit.join(std::string(kMarkup) + ",out0", "<!--<script>,in0").set("line\nfeed", "radius", 2);
        circuit.save(tool.path("a.vrl"));
        tool.run("draw", {"a.vrl", "-o", "a.html", "--title", kMarkup, "--parameters"});
    }

    Tool tool;
    std::string page = tool.path("a.html");
};

TEST_F(HostilePage, HasTheElementsOfItsTemplateAndNoOthers) {
    std::string const text = tool.read("a.html");
    EXPECT_EQ(count(text, "<script"), 2u);
    EXPECT_EQ(count(text, "</script"), 2u);
    EXPECT_EQ(count(text, "<!--"), 1u) << "the licence";
    EXPECT_EQ(count(text, "</svg"), 1u);
    EXPECT_EQ(count(text, "<img"), 0u);
}

TEST_F(HostilePage, ShowsNamesAsTheyAre) {
    std::string const document = documentOf(page);
    EXPECT_EQ(textOf(document, "ul id=\"page-tree\""), "<!--<script> sfBend\n"
                                                       "</script><img src=x onerror=\"document.title='run'\"> sfBend\n"
                                                       "</title></svg>&amp; sfBend\n"
                                                       "__proto__ sfBend\n"
                                                       "line\\x0Afeed sfBend\n"
                                                       "\uFFFD\uFFFD( sfBend\n");
    EXPECT_EQ(count(document, "<img"), 0u);
    EXPECT_THAT(document,
                HasSubstr("<title>&lt;/script&gt;&lt;img src=x onerror=\"document.title='run'\"&gt;</title>"));
}

TEST_F(HostilePage, FindsElementsByWhatItShowsOfTheirNames) {
    EXPECT_THAT(textOf(documentOf(page + "#element=__proto__"), "aside"), testing::StartsWith("__proto__\nsfBend of"));
    EXPECT_THAT(textOf(documentOf(page + "#element=line%5Cx0Afeed"), "aside"),
                testing::StartsWith("line\\x0Afeed\nsfBend of SampleFab\nFindings\nerror parameter 'radius' is 2 um"));
    EXPECT_THAT(textOf(documentOf(page + "#element=%EF%BF%BD%EF%BF%BD("), "aside"),
                testing::StartsWith("\uFFFD\uFFFD(\nsfBend of"));
    EXPECT_THAT(textOf(documentOf(page + "#element=%3C!--%3Cscript%3E"), "aside"),
                HasSubstr("\nin0 | Optics | </script><img src=x onerror=\"document.title='run'\">,out0\n"));
}

TEST_F(HostilePage, TakesNoMarkupFromItsAddress) {
    std::string const document = documentOf(page + "#element=%3Cimg%20src=x%3E&search=%3Cb%3Ex");
    EXPECT_EQ(textOf(document, "aside"), "<img src=x>\nThe design has no element of this name.\n");
    EXPECT_EQ(count(document, "<img"), 0u);
    EXPECT_EQ(count(document, "<b>"), 0u);
}

TEST_F(HostilePage, RunsItsOwnScriptOnly) {
    std::string text = tool.read("a.html");
    text.insert(text.rfind("</body>"), "<script>document.title = 'run'</script><p onclick=\"\" id=\"more\">more</p>"
                                       "<img src=\"data:,\" onerror=\"document.title = 'run'\">");
    tool.write("b.html", text);
    std::string const document = documentOf(tool.path("b.html"));
    EXPECT_THAT(document, HasSubstr(">more</p>"));
    EXPECT_THAT(document, Not(HasSubstr("<title>run</title>")));
    EXPECT_THAT(textOf(document, "aside"), HasSubstr("Netlist of 6 elements")) << "its own has run";
}

TEST_F(HostilePage, HasATestThatSeesScriptsRun) {
    tool.write("b.html", vrl_test::withScript(tool.read("a.html"), "document.title = 'run'"));
    EXPECT_THAT(documentOf(tool.path("b.html")), HasSubstr("<title>run</title>"));
}

TEST_F(HostilePage, RefersToNothingOutsideOfItself) {
    std::string const text = tool.read("a.html");
    EXPECT_THAT(text, HasSubstr("content=\"default-src 'none'; script-src 'sha256-"));
    std::set<std::string> references;
    std::regex const reference("[a-z]+://[^\\s\"'`;,)<>]*");
    for (std::sregex_iterator found(text.begin(), text.end(), reference), end; found != end; ++found)
        references.insert(found->str());
    EXPECT_THAT(references,
                testing::UnorderedElementsAre(
                    // The licence names these, ...
                    "https://www.debian.org/doc/packaging-manuals/copyright-format/1.0/", "https://d3js.org/",
                    // ... and so do the comments of the libraries;
                    "https://d3js.org/d3-color/", "https://d3js.org/d3-dispatch/", "https://d3js.org/d3-drag/",
                    "https://d3js.org/d3-ease/", "https://d3js.org/d3-interpolate/", "https://d3js.org/d3-selection/",
                    "https://d3js.org/d3-timer/", "https://d3js.org/d3-transition/", "https://d3js.org/d3-zoom/",
                    // these are namespaces.
                    "http://www.w3.org/2000/svg", "http://www.w3.org/1999/xhtml", "http://www.w3.org/1999/xlink",
                    "http://www.w3.org/XML/1998/namespace", "http://www.w3.org/2000/xmlns/"));
    for (char const* const asking : {"@import", "url(", "<link", "<iframe", "<object", "XMLHttpRequest", "fetch("})
        EXPECT_EQ(text.find(asking), std::string::npos) << asking;
}

TEST_F(HostilePage, HasTheLicenceOfWhatItContains) {
    EXPECT_THAT(tool.read("a.html"),
                HasSubstr("\nFiles: d3-*\nCopyright: 2010-2022 Mike Bostock\nLicense: BSD-3-Clause\n"));
    EXPECT_THAT(tool.read("a.html"), HasSubstr(" Redistributions in binary form must reproduce the above copyright"));
}

}  // namespace
