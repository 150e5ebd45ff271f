#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <set>
#include <string>

#include "tests/tools/exchange/sample_netlist.h"
#include "tests/tools/tool.h"

namespace {

using vrl_test::Tool;

using Json = nlohmann::json;

/// The pairs of ports that the nets of a netlist connect, in no order.
std::set<std::set<std::string>> connections(Json const& netlist) {
    std::set<std::set<std::string>> result;
    for (Json const& net : netlist["nets"]) result.insert({net["p1"].get<std::string>(), net["p2"].get<std::string>()});
    return result;
}

class LargeNetlist : public testing::TestWithParam<char const*> {};

TEST_P(LargeNetlist, OfTenThousandInstancesGoesInAndOut) {
    Tool const tool;
    std::string const format = GetParam();
    tool.write("big." + format, vrl_test::chainNetlist(10000, format == "json"));
    tool.write("map.yml", vrl_test::sampleMap());
    auto const imported = tool.run("import", {"big." + format, "--map", "map.yml", "-o", "big.vrl"});
    EXPECT_EQ(imported.out.substr(imported.out.find("big." + format + ": 10000")),
              "big." + format + ": 10000 elements, 9999 nets, 2 outer ports, 40000 settings (10000 to parameters)\n" +
                  "big.vrl: written\n");
    EXPECT_EQ(imported.err, "");
    EXPECT_EQ(imported.status, 0);
    auto const exported = tool.run("export", {"big.vrl", "--map", "map.yml", "-o", "back." + format});
    EXPECT_EQ(exported.out, "back." + format + ": 10000 instances, 9999 nets, 2 outer ports written\n");
    tool.run("export", {"big.vrl", "--map", "map.yml", "-o", "compared.json"});
    Json const original = Json::parse(vrl_test::chainNetlist(10000, true));
    Json const compared = Json::parse(tool.read("compared.json"));
    for (char const* const name : {"e0", "e1", "e4998", "e4999", "e9999"})
        EXPECT_EQ(compared["instances"][name], original["instances"][name]) << name;
    EXPECT_EQ(compared["ports"], original["ports"]);
    EXPECT_TRUE(connections(compared) == connections(original));
    tool.run("import", {"back." + format, "--map", "map.yml", "-o", "again.vrl"});
    tool.run("export", {"again.vrl", "--map", "map.yml", "-o", "again." + format});
    EXPECT_TRUE(tool.read("back." + format) == tool.read("again." + format));
}

INSTANTIATE_TEST_SUITE_P(Exchange, LargeNetlist, testing::Values("json", "yml"));

}  // namespace
