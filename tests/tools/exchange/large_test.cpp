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

// The sanitisers look at each access and not at growth, and are ten times slower.
#ifdef __SANITIZE_ADDRESS__
constexpr std::size_t kInstances = 1000;
#else
constexpr std::size_t kInstances = 10000;
#endif

class LargeNetlist : public testing::TestWithParam<char const*> {};

TEST_P(LargeNetlist, OfManyInstancesGoesInAndOut) {
    Tool const tool;
    std::string const format = GetParam(), count = std::to_string(kInstances), nets = std::to_string(kInstances - 1);
    tool.write("big." + format, vrl_test::chainNetlist(kInstances, format == "json"));
    tool.write("map.yml", vrl_test::sampleMap());
    auto const imported = tool.run("import", {"big." + format, "--map", "map.yml", "-o", "big.vrl"});
    EXPECT_EQ(imported.out.substr(imported.out.find("big." + format + ": " + count)),
              "big." + format + ": " + count + " elements, " + nets + " nets, 2 outer ports, " +
                  std::to_string(4 * kInstances) + " settings (" + count + " to parameters)\nbig.vrl: written\n");
    EXPECT_EQ(imported.err, "");
    EXPECT_EQ(imported.status, 0);
    auto const exported = tool.run("export", {"big.vrl", "--map", "map.yml", "-o", "back." + format});
    EXPECT_EQ(exported.out, "back." + format + ": " + count + " instances, " + nets + " nets, 2 outer ports written\n");
    tool.run("export", {"big.vrl", "--map", "map.yml", "-o", "compared.json"});
    Json const original = Json::parse(vrl_test::chainNetlist(kInstances, true));
    Json const compared = Json::parse(tool.read("compared.json"));
    for (std::string const& name : {std::string("e0"), std::string("e1"), "e" + nets})
        EXPECT_EQ(compared["instances"][name], original["instances"][name]) << name;
    EXPECT_EQ(compared["ports"], original["ports"]);
    EXPECT_TRUE(connections(compared) == connections(original));
    tool.run("import", {"back." + format, "--map", "map.yml", "-o", "again.vrl"});
    tool.run("export", {"again.vrl", "--map", "map.yml", "-o", "again." + format});
    EXPECT_TRUE(tool.read("back." + format) == tool.read("again." + format));
}

INSTANTIATE_TEST_SUITE_P(Exchange, LargeNetlist, testing::Values("json", "yml"));

}  // namespace
