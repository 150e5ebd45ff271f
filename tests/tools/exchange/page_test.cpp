#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "tests/tools/tool.h"

namespace {

using vrl_test::Tool;

std::vector<std::string> words(std::string const& line) {
    std::istringstream stream(line);
    std::vector<std::string> result;
    for (std::string word; stream >> word;) result.push_back(word);
    return result;
}

/// The page of netlists, step by step: its files, and its commands with what they print.
class Page {
public:
    explicit Page(Tool const& where) : tool(where) {}

    /// Writes the files and runs the commands, and hands each command with expectation and result to `check`.
    template <class Check>
    void play(Check const& check) {
        std::ifstream page(VRL_EXCHANGE_PAGE);
        std::string file;
        for (std::string line; std::getline(page, line);) {
            if (line.rfind("<!-- file: ", 0) == 0) file = words(line)[2];
            if (line.rfind("```", 0) != 0) continue;
            std::string const language = line.substr(3);
            std::string const block = rest(page);
            if (language == "yaml" && !file.empty()) tool.write(file, block);
            if (language == "console") run(block, check);
            file.clear();
        }
    }

private:
    static std::string rest(std::istream& page) {
        std::string block;
        for (std::string line; std::getline(page, line) && line != "```";) block += line + "\n";
        return block;
    }

    template <class Check>
    void run(std::string const& block, Check const& check) {
        std::istringstream lines(block);
        std::string command, printed;
        auto const end = [&] {
            if (command.empty()) return;
            std::vector<std::string> const all = words(command);
            auto const result = tool.run(all[2], {all.begin() + 3, all.end()});
            check(command, printed, result.out + result.err);
        };
        for (std::string line; std::getline(lines, line);) {
            if (line.rfind("$ ", 0) == 0) {
                end();
                command = line;
                printed.clear();
            } else {
                printed += line + "\n";
            }
        }
        end();
    }

    Tool const& tool;
};

TEST(ExchangePage, SaysWhatItsCommandsPrint) {
    Tool const tool;
    std::vector<std::string> commands;
    Page(tool).play([&](std::string const& command, std::string const& expected, std::string const& printed) {
        commands.push_back(command);
        EXPECT_EQ(printed, expected) << command;
    });
    EXPECT_EQ(commands, (std::vector<std::string>{"$ vrl import --map-template mzi.yml",
                                                  "$ vrl import mzi.yml --map map.yml -o mzi.vrl",
                                                  "$ vrl export mzi.vrl --map map.yml"}));
}

}  // namespace
