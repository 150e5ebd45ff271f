#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>

#include "tests/demo/sample_plugins.h"
#include "tests/tools/tool.h"

namespace {

using vrl_test::Tool;

/// A tool with a design whose block prints whenever it is made.
class PrintingBlock : public testing::Test {
protected:
    PrintingBlock()
        : config(tool.write("plugins.ini", vrl_test::configText(VRL_TEST_PLUGINS, "sodllfile = printing\n"))) {
        tool.write("a.yml", "instances: {a: printing, b: printing}\nnets: [[\"a,out0\", \"b,in0\"]]\n");
        EXPECT_EQ(tool.run("import", {"a.yml", "-o", "a.vrl", "--config", config}).status, 0);
    }

    std::string out(std::string const& command, std::vector<std::string> words) const {
        words.insert(words.end(), {"--config", config});
        return tool.run(command, words).out;
    }

    Tool tool;
    std::string config;
};

TEST_F(PrintingBlock, DoesNotGetIntoTheOutputOfOthers) {
    EXPECT_EQ(out("show", {"a.vrl"}).substr(0, 16), "a.vrl: Netlist o");
    EXPECT_EQ(out("draw", {"a.vrl", "-o", "-"}).substr(0, 5), "<?xml");
    EXPECT_EQ(out("export", {"a.vrl"}).substr(0, 10), "instances:");
    EXPECT_EQ(out("diff", {"a.vrl", "a.vrl"}), "no differences\n");
}

TEST_F(PrintingBlock, DoesNotGetIntoJson) {
    for (auto const& [command, words] : std::vector<std::pair<std::string, std::vector<std::string>>>{
             {"show", {"a.vrl", "--json"}},
             {"show", {"a.vrl", "a", "--json"}},
             {"show", {"a.vrl", "--bom", "--json"}},
             {"check", {"a.vrl", "--json"}},
             {"diff", {"a.vrl", "a.vrl", "--json"}},
             {"draw", {"a.vrl", "-o", "a.svg", "--json"}},
             {"draw", {"a.vrl", "-o", "a.png", "--json", "--parameters"}},
             {"draw", {"a.vrl", "-o", "a.html", "--json"}},
             {"doc", {"a.vrl", "-o", "a.tex", "--json"}},
             {"export", {"a.vrl", "-o", "b.yml", "--json"}},
             {"describe", {"printing", "--json"}},
             {"set", {"a.vrl", "a.cs=x", "--dry-run", "--json"}}}) {
        std::string const text = out(command, words);
        EXPECT_TRUE(nlohmann::json::accept(text)) << command << ": " << text;
    }
}

}  // namespace
