#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

#include <sys/stat.h>

#include "tests/support/kept_file.h"
#include "tests/tools/design/saved_objects.h"
#include "tests/tools/sample_circuit.h"
#include "tests/tools/tool.h"

namespace {

using vrl_test::kept;
using vrl_test::Outcome;
using vrl_test::SampleCircuit;
using vrl_test::savedObjects;
using vrl_test::Tool;

TEST(Show, PrintsANetlistAsTheLibraryDoes) {
    Tool const tool;
    SampleCircuit circuit;
    circuit.add("bend", "sfBend").add("in", "sfEdgeCoupler").join("in,out0", "bend,in0").input("in,in0");
    circuit.save(tool.path("a.vrl"));
    auto const shown = tool.run("show", {"--native", "a.vrl"});
    EXPECT_EQ(shown.out, "Parameters{--}\n"
                         "Port{N2 -> N}\n"
                         "Building blocks{\n"
                         " bend = sfBend( mcs=>(\"strip\") in0=N1) cmpID=1\n"
                         " in = sfEdgeCoupler( mcs=>(\"strip\") in0=N2,out0=N1) cmpID=2\n"
                         " }\n");
    EXPECT_EQ(shown.err, "");
    EXPECT_EQ(shown.status, 0);
}

/// What a command complains of, but for the libraries that did not load.
std::string complaints(std::string const& err) {
    std::istringstream lines(err);
    std::string text;
    for (std::string line; std::getline(lines, line);)
        if (line.compare(0, 14, "  not loaded: ") != 0 && line != "  'vrl plugins' shows what is loaded")
            text += line + "\n";
    return text;
}

/// What the four forms of show print for a file, each after its command line.
std::string shownInAllForms(Tool const& tool, std::vector<std::string> const& extra) {
    std::string text;
    for (char const* const form : {"", "--native", "--listing", "--json"}) {
        std::vector<std::string> words = extra;
        if (*form) words.push_back(form);
        words.push_back("object.vrl");
        Outcome const shown = tool.run("show", words);
        text += "$ vrl show";
        for (std::string const& word : words) text += " " + word;
        text += "\n" + complaints(shown.err) + shown.out + "[" + std::to_string(shown.status) + "]\n";
    }
    return text;
}

class ShowOfEveryClass : public testing::TestWithParam<std::string> {};

TEST_P(ShowOfEveryClass, PrintsTheKeptListing) {
    Tool const tool;
    tool.write("object.vrl", savedObjects().at(GetParam()));
    std::string const shown = shownInAllForms(tool, {});
    EXPECT_EQ(shown, kept(shown, VRL_KEPT_TEXTS "/" + GetParam() + ".txt"));
}

TEST_P(ShowOfEveryClass, PrintsTheKeptListingWithoutAnyPlugin) {
    Tool const tool;
    tool.write("object.vrl", savedObjects().at(GetParam()));
    tool.writeConfig("none.ini", {});
    std::string const shown = shownInAllForms(tool, {"--config", "none.ini"});
    EXPECT_EQ(shown, kept(shown, VRL_KEPT_TEXTS "/" + GetParam() + ".without_plugins.txt"));
}

std::vector<std::string> names() {
    std::vector<std::string> all;
    for (auto const& object : savedObjects()) all.push_back(object.first);
    return all;
}

INSTANTIATE_TEST_SUITE_P(Of, ShowOfEveryClass, testing::ValuesIn(names()),
                         [](auto const& tested) { return tested.param; });

TEST(Show, NamesTheConfiguredLibrariesThatFailed) {
    Tool const tool;
    tool.write("design.vrl", savedObjects().at("block"));
    auto const shown = tool.run("show", {"--config", tool.writeConfig("bad.ini", {"noSuchPlugin"}), "design.vrl"});
    std::string const first = shown.err.substr(0, shown.err.find('\n') + 1);
    EXPECT_EQ(first, "vrl: design.vrl: no loaded plug-in has the block 'sfBend' (1 use); a stand-in represents it\n");
    EXPECT_EQ(shown.err.substr(first.size()), "  not loaded: " VRL_SAMPLE_PLUGINS
                                              "/lib_wn_noSuchPlugin.so.5.1.3: cannot open shared object file: No such "
                                              "file or directory\n");
    EXPECT_EQ(shown.status, 0);
}

TEST(Show, PrintsAHintIfEveryLibraryIsLoaded) {
    Tool const tool;
    tool.write("design.vrl", savedObjects().at("block"));
    auto const shown = tool.run("show", {"--config", tool.writeConfig("demo.ini", {"vrlDemoDll"}), "design.vrl"});
    EXPECT_EQ(shown.err, "vrl: design.vrl: no loaded plug-in has the block 'sfBend' (1 use); a stand-in represents it\n"
                         "  'vrl plugins' shows what is loaded\n");
}

// What cannot be shown.

/// How a failed show ends.
void expectFailure(Outcome const& shown, std::string const& err) {
    EXPECT_EQ(shown.err, err);
    EXPECT_EQ(shown.out, "");
    EXPECT_EQ(shown.status, 2);
}

TEST(ShowRefuses, AMissingFile) {
    Tool const tool;
    expectFailure(tool.run("show", {"no.vrl"}), "vrl: no.vrl: cannot be opened\n  give the path of a saved design\n");
}

TEST(ShowRefuses, AnEmptyFile) {
    Tool const tool;
    expectFailure(tool.run("show", {tool.write("a.vrl", "")}),
                  "vrl: a.vrl: is empty\n  give the path of a saved design\n");
}

TEST(ShowRefuses, WhatIsNoRegularFile) {
    Tool const tool;
    ASSERT_EQ(mkfifo(tool.path("pipe").c_str(), 0600), 0);
    std::filesystem::create_directory(tool.path("folder"));
    for (std::string const name : {"pipe", "folder", "/dev/zero"})
        expectFailure(tool.run("show", {name}),
                      "vrl: " + name + ": is not a regular file\n  give the path of a saved design\n");
}

TEST(ShowRefuses, AConfigurationThatIsNoRegularFile) {
    Tool const tool;
    ASSERT_EQ(mkfifo(tool.path("pipe").c_str(), 0600), 0);
    tool.write("a.vrl", savedObjects().at("choice"));
    for (std::string const name : {"pipe", ".", "/dev/zero"})
        expectFailure(tool.run("show", {"--config", name, "a.vrl"}),
                      "vrl: " + name + ": is not a regular file\n  give a configuration file with --config FILE\n");
}

TEST(ShowRefuses, ATextFile) {
    Tool const tool;
    expectFailure(tool.run("show", {tool.write("a.txt", "elements: []\n")}),
                  "vrl: a.txt: is not a saved design\n"
                  "  saved designs begin with the bytes 3D 40 and the kind of their object\n");
}

TEST(ShowRefuses, ATruncatedFileAndSaysWhere) {
    Tool const tool;
    std::string const whole = savedObjects().at("netlist");
    tool.write("a.vrl", whole.substr(0, whole.size() * 3 / 4));
    expectFailure(tool.run("show", {"a.vrl"}),
                  "vrl: a.vrl: ends too early in element 2 (sfPhaseModulator), parameter 'length', "
                  "'vrl::attrUnitName'\n"
                  "  the file was cut short: take a whole copy\n");
}

TEST(ShowRefuses, ADamagedFileAndSaysWhere) {
    Tool const tool;
    std::string bytes = savedObjects().at("netlist");
    bytes[bytes.find("Value_Double") + 12] = '\7';  // its version
    tool.write("a.vrl", bytes);
    expectFailure(
        tool.run("show", {"a.vrl"}),
        "vrl: a.vrl: cannot be read: damaged near byte 1427 in element 1 (sfEdgeCoupler), parameter "
        "'couplingLoss'\n"
        "  it may be damaged, or written by another version of a plug-in; 'vrl plugins' shows what is loaded\n");
}

TEST(ShowRefuses, AnObjectThatNoPluginMakes) {
    Tool const tool;
    std::string bytes = savedObjects().at("choice");
    bytes.replace(bytes.find("Foundry::CSInfo"), 15, "Foundry\x1B::Other");
    expectFailure(tool.run("show", {tool.write("a.vrl", bytes)}),
                  "vrl: a.vrl: holds a 'Foundry\\x1B::Other', which no loaded plug-in makes\n"
                  "  load the plug-in that brings it; 'vrl plugins' shows what is loaded\n");
}

}  // namespace
