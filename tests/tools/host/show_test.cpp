#include <gtest/gtest.h>

#include "tests/support/files.h"
#include "tests/tools/host/saved_objects.h"
#include "tests/tools/sample_circuit.h"
#include "tests/tools/tool.h"

namespace {

using vrl_test::Outcome;
using vrl_test::readFile;
using vrl_test::SampleCircuit;
using vrl_test::savedObjects;
using vrl_test::Tool;

TEST(Show, PrintsANetlistAsTheLibraryDoes) {
    Tool const tool;
    SampleCircuit circuit;
    circuit.add("bend", "sfBend").add("in", "sfEdgeCoupler").join("in,out0", "bend,in0").input("in,in0");
    circuit.save(tool.path("a.vrl"));
    auto const shown = tool.run("show", {"a.vrl"});
    EXPECT_EQ(shown.out, "Parameters{--}\n"
                         "Port{N2 -> N}\n"
                         "Building blocks{\n"
                         " bend = sfBend( mcs=>(\"strip\") in0=N1) cmpID=1\n"
                         " in = sfEdgeCoupler( mcs=>(\"strip\") in0=N2,out0=N1) cmpID=2\n"
                         " }\n");
    EXPECT_EQ(shown.err, "");
    EXPECT_EQ(shown.status, 0);
}

/// What the three forms of show give for a file, behind the command lines.
std::string shownInAllForms(Tool const& tool, std::vector<std::string> const& extra) {
    std::string text;
    for (char const* const form : {"", "--listing", "--json"}) {
        std::vector<std::string> words = extra;
        if (*form) words.push_back(form);
        words.push_back("object.vrl");
        Outcome const shown = tool.run("show", words);
        text += "$ vrl show";
        for (std::string const& word : words) text += " " + word;
        text += "\n" + shown.err + shown.out + "[" + std::to_string(shown.status) + "]\n";
    }
    return text;
}

class ShowOfEveryClass : public testing::TestWithParam<std::string> {};

TEST_P(ShowOfEveryClass, GivesTheKeptTexts) {
    Tool const tool;
    tool.write("object.vrl", savedObjects().at(GetParam()));
    EXPECT_EQ(shownInAllForms(tool, {}), readFile(VRL_KEPT_TEXTS "/" + GetParam() + ".txt"));
}

TEST_P(ShowOfEveryClass, GivesTheKeptTextsWithoutAnyPlugin) {
    Tool const tool;
    tool.write("object.vrl", savedObjects().at(GetParam()));
    tool.writeConfig("none.ini", {});
    EXPECT_EQ(shownInAllForms(tool, {"--config", "none.ini"}),
              readFile(VRL_KEPT_TEXTS "/" + GetParam() + ".without_plugins.txt"));
}

std::vector<std::string> names() {
    return {"annotations",
            "block",
            "bool",
            "choice",
            "complex",
            "component",
            "composite",
            "double",
            "double_with_expression",
            "flagged_complex",
            "flagged_double",
            "flagged_integer",
            "foreign_block",
            "foreign_composite",
            "foreign_netlist",
            "foreign_parameter",
            "integer",
            "list",
            "netlist",
            "netlist_with_foreign_blocks",
            "port",
            "string"};
}

INSTANTIATE_TEST_SUITE_P(Of, ShowOfEveryClass, testing::ValuesIn(names()),
                         [](auto const& tested) { return tested.param; });

}  // namespace
