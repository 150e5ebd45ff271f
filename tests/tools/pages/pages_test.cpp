#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "tests/demo/sample_plugins.h"
#include "tests/support/child.h"

namespace {

using vrl_test::Sandbox;

/// A command of a page, and what the page says that it prints; or a file with its content.
struct Step {
    std::string command;
    std::string printed;
    bool isFile = false;
};

/// A page of the documents: its files and its sessions, in their order.
struct Page {
    explicit Page(std::string const& path);

    std::vector<Step> steps;

private:
    void addSession(std::string const& block);
};

std::string blockOf(std::istream& page) {
    std::string block;
    for (std::string line; std::getline(page, line) && line != "```";) block += line + "\n";
    return block;
}

Page::Page(std::string const& path) {
    std::ifstream page(path);
    std::string file;
    for (std::string line; std::getline(page, line);) {
        if (line.rfind("<!-- file: ", 0) == 0) std::istringstream(line.substr(11)) >> file;
        if (line.rfind("```", 0) != 0) continue;
        std::string const block = blockOf(page);
        if (line == "```console") addSession(block);
        if (!file.empty()) steps.push_back({file, block, true});
        file.clear();
    }
}

void Page::addSession(std::string const& block) {
    std::istringstream lines(block);
    for (std::string line; std::getline(lines, line);) {
        if (line.rfind("$ ", 0) == 0)
            steps.push_back({line.substr(2), "", false});
        else
            steps.at(steps.size() - 1).printed += line + "\n";
    }
}

/// A shell that finds the tool, in a folder of its own, with the sample plug-ins configured.
class Shell {
public:
    Shell() : sandbox("/bin/bash") {
        auto const libraries = "sodllfile = vrlDemoDll\nsodllfile = foundrySampleFab\n";
        config = vrl_test::writeFile(sandbox.home() / ".config/vorlane/VRLConfig.ini",
                                     vrl_test::configText(VRL_SAMPLE_PLUGINS, libraries));
        sandbox.set("PLUGINS", VRL_SAMPLE_PLUGINS);
        sandbox.set("PATH", std::filesystem::path(VRL_TOOL_PROGRAM).parent_path().string() + ":/usr/bin:/bin");
    }

    std::string run(std::string const& command) const { return sandbox.run("-c", {"exec 2>&1; " + command}).out; }

    void play(Page const& page) const {
        for (Step const& step : page.steps)
            if (step.isFile)
                vrl_test::writeFile(sandbox.work() / step.command, step.printed);
            else
                EXPECT_EQ(run(step.command), step.printed) << step.command;
    }

    std::string config;

private:
    Sandbox sandbox;
};

std::vector<std::string> commandsOf(Page const& page) {
    std::vector<std::string> commands;
    for (Step const& step : page.steps)
        if (!step.isFile) commands.push_back(step.command);
    return commands;
}

TEST(Pages, OfTheExchangePrintWhatTheySay) {
    Page const page(VRL_DOCUMENTS "/docs/exchange.md");
    EXPECT_EQ(commandsOf(page),
              (std::vector<std::string>{
                  "vrl import --map-template mzi.yml", "vrl import mzi.yml --map map.yml -o mzi.vrl",
                  "vrl export mzi.vrl --map map.yml", "vrl import delay.yml --map gdsfactory-generic -o delay.vrl"}));
    Shell().play(page);
}

TEST(Pages, OfTheConfigurationPrintWhatTheySay) {
    Page const page(VRL_DOCUMENTS "/docs/configuration.md");
    EXPECT_EQ(
        commandsOf(page),
        (std::vector<std::string>{
            "vrl list foundries --plugin \"$PLUGINS/lib_wn_foundrySampleFab.so.5.1.3\"",
            "vrl config init --config my.ini \"$PLUGINS/lib_wn_foundrySampleFab.so.5.1.3\"",
            "vrl config init --config my.ini", "grep sodllfile my.ini | tail -1",
            "export VRL_CONFIG=my.ini; vrl list foundries",
            "echo 'sodllfile = foundrySampelFab' >> my.ini; vrl plugins --config my.ini | grep -A2 Sampel | grep -v "
            "path",
            "vrl import tap.yml -o tap.vrl", "vrl check tap.vrl", "vrl check tap.vrl",
            "vrl check tap.vrl --all | head -3", "vrl check tap.vrl --no-exceptions --quiet",
            "sed -i s/open-port/open-prot/ tap.vrl.exceptions.yml; vrl check tap.vrl"}));
    Shell().play(page);
}

TEST(Pages, OfTheFrontPrintWhatTheySay) {
    Page const page(VRL_DOCUMENTS "/README.md");
    EXPECT_EQ(commandsOf(page), (std::vector<std::string>{
                                    "vrl check modulator.vrl", "vrl set modulator.vrl bend.radius=20um -o mended.vrl",
                                    "vrl diff modulator.vrl mended.vrl", "vrl draw mended.vrl --depth 1 -o mended.svg",
                                    "vrl draw mended.vrl -o mended.html"}));
    Shell const shell;
    shell.run(VRL_DEMO_PROGRAM " build " + shell.config + " modulator.vrl");
    shell.play(page);
}

}  // namespace
