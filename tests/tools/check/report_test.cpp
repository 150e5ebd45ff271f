#include <nlohmann/json.hpp>

#include "check/rule.h"
#include "tests/tools/check/check_test.h"

namespace {

using CheckReport = vrl_test::CheckTest;

/// What the report says of the rules when all run.
constexpr char kAllRan[] = R"(32 rules ran:
)";

TEST_F(CheckReport, HasNothingToSayOfAGoodDesign) {
    vrl_test::addInterferometer(circuit);
    auto const outcome = check({save()});
    EXPECT_EQ(outcome.out, std::string("a.vrl (Netlist, 6 elements): no findings\n\n") + kAllRan);
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(outcome.status, 0);
}

}  // namespace
