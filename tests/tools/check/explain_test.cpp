#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <set>

#include "check/rule.h"
#include "tests/tools/tool.h"

namespace {

using vrl_test::Tool;

TEST(Explain, PrintsThePageOfARule) {
    Tool const tool;
    auto const outcome = tool.run("explain", {"cross-section-mismatch"});
    EXPECT_EQ(outcome.out,
              "cross-section-mismatch: optical ports with different cross sections meet\n"
              "\n"
              "What it means\n"
              "    Two optical ports at one node have cross sections of different kinds or widths. The cross\n"
              "    section of a port is what its foundry makes of the port's own choice, or else of the choice of\n"
              "    its block. Width and radius are the parameters 'width' and 'radius' of the block; without\n"
              "    'width', an input has 'widthIn' and an output 'widthOut'; without those, the foundry takes its\n"
              "    standard width. Widths are equal within a millionth. Where no cross section can be made, the\n"
              "    chosen names are compared.\n"
              "\n"
              "Why it matters\n"
              "    Where the waveguide changes abruptly, the mode of one side does not fit the other: light is\n"
              "    scattered and reflected, and higher modes are excited.\n"
              "\n"
              "An example\n"
              "    in,out0: is strip of width 0.45 um, and mod,in0 at node 3 is rib of width 0.5 um\n"
              "    [cross-section-mismatch]\n"
              "\n"
              "How to mend it\n"
              "    Put a taper or a transition between the two, or choose the same cross section and width for\n"
              "    both.\n"
              "\n"
              "Its severity\n"
              "    It is a warning by default. 'vrl check --severity cross-section-mismatch=LEVEL' sets error,\n"
              "    warning, note or off; '--skip cross-section-mismatch' leaves the rule out. It does not look at\n"
              "    elements whose kind no loaded plug-in has. It does not look at elements whose foundry is\n"
              "    unknown. It does not run on a block that was saved without a circuit.\n");
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(outcome.status, 0);
}

TEST(Explain, ListsAllRules) {
    Tool const tool;
    EXPECT_EQ(tool.run("explain").out,
              "RULE                       SEVERITY  WHAT IT FINDS\n"
              "boundary-domain            warning   a boundary list of the wrong domain\n"
              "boundary-twice             warning   a node is on the boundary more than once\n"
              "boundary-unused            warning   a boundary node that no port has\n"
              "choice-not-allowed         error     a block has a choice that its kind does not allow\n"
              "composite-ports            warning   the ports of a composite do not fit the boundary inside\n"
              "cross-section-mismatch     warning   optical ports with different cross sections meet\n"
              "dangling-connection        error     a port of a missing element is connected\n"
              "doubled-name               warning   two names lead to one block\n"
              "duplicate-port             warning   a block declares one name for several ports\n"
              "empty-circuit              note      a circuit without elements\n"
              "expression-not-calculated  note      a parameter was not calculated from its expression\n"
              "island                     note      elements that no path connects to the boundary\n"
              "lost-name                  warning   an element has no name\n"
              "lost-port                  warning   the file has a port that the kind of its block does not have\n"
              "missing-block              error     a name without a block\n"
              "mixed-domains              error     a node connects ports of different domains\n"
              "mixed-electrical           warning   a node connects DC and RF ports\n"
              "no-boundary                note      a circuit without inputs and outputs\n"
              "no-foundry                 note      a block is made for no foundry\n"
              "node-crowded               error     more than two optical ports at one node\n"
              "open-port                  warning   a port is connected to nothing\n"
              "own-check                  error     the check of a kind itself complains\n"
              "same-direction             note      a node connects two optical inputs or two optical outputs\n"
              "single-port-node           warning   a node with one port\n"
              "trailing-bytes             warning   the file goes on after the design\n"
              "undeclared-parameter       warning   a parameter that the kind of its block does not have\n"
              "undeclared-port            error     a port is connected that the block does not have\n"
              "unknown-choice             error     a choice names a cross section or process flow that the foundry "
              "does not have\n"
              "unknown-foundry            error     a block is made for a foundry that no loaded plug-in has\n"
              "unknown-kind               error     an element is of a kind that no loaded plug-in has\n"
              "unknown-parameter-type     error     a parameter is of a type that no loaded plug-in has\n"
              "value-not-finite           error     a parameter is no finite number\n"
              "value-out-of-range         error     a parameter is outside its range\n"
              "\n"
              "'vrl explain RULE' shows more of a rule.\n");
}

TEST(Explain, HasAJsonForm) {
    Tool const tool;
    auto const one = nlohmann::ordered_json::parse(tool.run("explain", {"--json", "trailing-bytes"}).out);
    EXPECT_EQ(one.dump(2),
              R"({
  "format": "vrl-explain",
  "version": 1,
  "rules": [
    {
      "id": "trailing-bytes",
      "title": "the file goes on after the design",
      "severity": "warning",
      "needs": [],
      "meaning": "The design was read whole, and the file has more bytes after it.",
      "why": "Nobody reads them. Two files may have been written into one, or a longer )"
              R"(file was overwritten in place: then the design may not be the one that is intended.",
      "example": "the design: 4096 bytes follow the design in the file [trailing-bytes]",
      "hint": "Find out how the file came about. Saving the design anew drops the bytes."
    }
  ]
})");
    auto const all = nlohmann::ordered_json::parse(tool.run("explain", {"--json"}).out);
    EXPECT_EQ(all["rules"].size(), 33u);
}

TEST(Explain, RefusesAnUnknownRule) {
    Tool const tool;
    auto const outcome = tool.run("explain", {"open-prots"});
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err, "vrl: 'open-prots': there is no such rule\n  did you mean 'open-port'?\n");
    EXPECT_EQ(outcome.status, 2);
}

TEST(Explain, HasAWholePageForEachRuleUnderAnIdOfItsOwn) {
    std::set<std::string> ids;
    for (vrltool::check::Rule const& rule : vrltool::check::allRules()) {
        SCOPED_TRACE(rule.id);
        EXPECT_TRUE(ids.insert(rule.id).second);
        EXPECT_EQ(std::string(rule.id).find_first_not_of("abcdefghijklmnopqrstuvwxyz-"), std::string::npos);
        EXPECT_NE(rule.severity, vrltool::Severity::kOff);
        for (char const* const text : {rule.page.meaning, rule.page.why, rule.page.hint}) {
            EXPECT_GT(std::string(text).size(), 20u);
            EXPECT_EQ(std::string(text).back(), '.');
        }
        EXPECT_NE(std::string(rule.page.example).find("[" + std::string(rule.id) + "]"), std::string::npos);
    }
}

}  // namespace
