#include <gtest/gtest.h>

#include <filesystem>

#include "tests/support/files.h"
#include "tests/tools/tool.h"

// Where the tool takes its plug-ins from: a configuration that is searched for or named, or the command line.

namespace {

namespace fs = std::filesystem;

using vrl_test::Outcome;
using vrl_test::Tool;

constexpr char kSampleFab[] = VRL_SAMPLE_PLUGINS "/lib_wn_foundrySampleFab.so.5.1.3";
constexpr char kDemo[] = VRL_SAMPLE_PLUGINS "/lib_wn_vrlDemoDll.so.5.1.3";
constexpr char kFoundries[] = "key        plug-in           description\n"
                              "SampleFab  foundrySampleFab  silicon on insulator, 220 nm, in oxide\n";

class Configuration : public testing::Test {
protected:
    /// What is printed on both streams, and the status; the home as HOME.
    std::string run(std::string const& command, std::vector<std::string> const& arguments = {}) {
        Outcome const ended = tool.run(command, arguments);
        std::string text = ended.out + ended.err + "[" + std::to_string(ended.status) + "]";
        std::string const home = tool.place().home().string();
        for (auto at = text.find(home); at != std::string::npos; at = text.find(home))
            text.replace(at, home.size(), "HOME");
        return text;
    }
    /// The file that is searched for first.
    fs::path file() { return tool.place().home() / ".config/vorlane/VRLConfig.ini"; }

    Tool tool;
};

TEST_F(Configuration, IsNamedByAVariable) {
    tool.place().set("VRL_CONFIG", tool.writeConfig("one.ini", {"vrlDemoDll"}));
    EXPECT_EQ(run("list", {"foundries"}), "no foundries\n[0]");
    EXPECT_EQ(run("plugins").substr(0, 53), "configuration  one.ini  (named by VRL_CONFIG)\n\nvrlDem");
    std::string const both = tool.writeConfig("both.ini", {"vrlDemoDll", "foundrySampleFab"});
    EXPECT_EQ(run("list", {"foundries", "--config", both}), std::string(kFoundries) + "[0]");
    tool.place().set("VRL_CONFIG", "");
    EXPECT_EQ(run("list", {"foundries"}), std::string(kFoundries) + "[0]");
    tool.place().set("VRL_CONFIG", "none.ini");
    EXPECT_EQ(run("list", {"foundries"}), "vrl: none.ini: cannot read this configuration file\n"
                                          "  give a readable file with --config FILE, or none\n[2]");
}

TEST_F(Configuration, IsNotNeededForNamedPlugins) {
    fs::remove(file());
    EXPECT_EQ(run("list", {"foundries", "--plugin", kSampleFab}), std::string(kFoundries) + "[0]");
    EXPECT_EQ(run("list", {"foundries", "--plugin", kDemo, "--plugin", kSampleFab}), std::string(kFoundries) + "[0]");
    EXPECT_FALSE(fs::exists(tool.place().home() / ".cache"));
}

TEST_F(Configuration, IsReadBeforeNamedPluginsIfItIsNamedToo) {
    std::string const one = tool.writeConfig("one.ini", {"vrlDemoDll"});
    EXPECT_EQ(run("list", {"foundries", "--config", one, "--plugin", kSampleFab}), std::string(kFoundries) + "[0]");
}

TEST_F(Configuration, HasNoPlaceForWhatIsNoPlugin) {
    EXPECT_EQ(run("list", {"blocks", "--plugin", "none.so"}), "vrl: none.so: there is no such file\n"
                                                              "  give the file of a plug-in with --plugin FILE\n[2]");
    EXPECT_EQ(run("list", {"blocks", "--plugin", "."}), "vrl: .: is not a regular file\n"
                                                        "  give the file of a plug-in with --plugin FILE\n[2]");
    tool.write("text.so", "text");
    EXPECT_EQ(run("list", {"blocks", "--plugin", "text.so"}), "vrl: text.so: is not loaded: " + tool.path("text.so") +
                                                                  ": file too short\n"
                                                                  "  'vrl validate' checks plug-ins\n[2]");
}

TEST_F(Configuration, ThatIsNoTextIsRefused) {
    std::string const text =
        ": is no text, and so no configuration file\n"
        "  it has lines such as 'sodllfile = myPlugin'; a plug-in is named with --plugin FILE\n[2]";
    EXPECT_EQ(run("list", {"blocks", "--config", kDemo}), "vrl: " + std::string(kDemo) + text);
    tool.write("a.ini", std::string("# a\0b\n", 6));
    EXPECT_EQ(run("list", {"blocks", "--config", "a.ini"}), "vrl: a.ini" + text);
    fs::copy_file(kDemo, file(), fs::copy_options::overwrite_existing);
    EXPECT_EQ(run("list", {"blocks"}), "vrl: HOME/.config/vorlane/VRLConfig.ini" + text);
}

TEST_F(Configuration, IsAskedForInAFreshInstallation) {
    fs::remove(file());
    EXPECT_EQ(run("list", {"blocks"}),
              "vrl: warning: no config file found, writing default one in HOME/.cache/vorlane/VRLConfig.ini\n"
              "vrl: vrl list blocks: no plug-in is loaded\n"
              "  'vrl plugins' shows why; 'vrl config init PLUGIN...' writes a configuration, and --plugin FILE does "
              "without one\n[2]");
}

TEST_F(Configuration, IsWrittenForPlugins) {
    fs::remove(file());
    EXPECT_EQ(run("config", {"init", kDemo, kSampleFab}),
              "HOME/.config/vorlane/VRLConfig.ini: written, with 2 plug-ins\n[0]");
    EXPECT_EQ(vrl_test::readFile(file()),
              "# The plug-ins that programs with vrllib load, in this order.\n"
              "#\n"
              "# sodlldir_clear                  forgets the folders before it\n"
              "# sodlldir_linux = FOLDER         a folder of plug-ins\n"
              "# sodllpostfix_linux = ENDING     the ending of their files, such as .so.5.1.3\n"
              "# sodllfile = NAME                loads lib_wn_NAME and the ending from the folders\n"
              "sodlldir_clear\n"
              "sodlldir_linux = " +
                  fs::canonical(VRL_SAMPLE_PLUGINS).string() +
                  "\n"
                  "sodllpostfix_linux = .so.5.1.3\n"
                  "sodllfile = vrlDemoDll\n"
                  "sodllfile = foundrySampleFab\n");
    EXPECT_EQ(run("list", {"foundries"}), std::string(kFoundries) + "[0]");
    EXPECT_EQ(run("config", {"init", kDemo}), "vrl: HOME/.config/vorlane/VRLConfig.ini: exists already\n"
                                              "  edit it, or name another file with --config\n[2]");
}

TEST_F(Configuration, IsWrittenForSeveralFolders) {
    fs::create_directories(tool.path("a b"));
    fs::copy_file(kSampleFab, tool.path("a b/lib_wn_foundrySampleFab.so"));
    EXPECT_EQ(run("config", {"init", "--config", "my.ini", kDemo, "a b/lib_wn_foundrySampleFab.so"}),
              "my.ini: written, with 2 plug-ins\n[0]");
    EXPECT_EQ(run("list", {"foundries", "--config", "my.ini"}), std::string(kFoundries) + "[0]");
}

TEST_F(Configuration, IsNotWrittenForWhatItCannotName) {
    EXPECT_EQ(run("config", {"init", "--config", "my.ini", "none.so"}), "vrl: none.so: there is no such file\n"
                                                                        "  give the file of a plug-in\n[2]");
    for (char const* const name : {"my.so", "lib_wn_.so", "lib_wn_my"}) {
        tool.write(name, "");
        EXPECT_EQ(run("config", {"init", "--config", "my.ini", name}),
                  "vrl: " + std::string(name) +
                      ": is not named as plug-ins are\n"
                      "  a configuration finds lib_wn_NAME.so.5.1.3 as NAME\n[2]");
    }
    tool.write("lib_wn_a;b.so", "");
    EXPECT_EQ(run("config", {"init", "--config", "my.ini", "lib_wn_a;b.so"}),
              "vrl: lib_wn_a;b.so: a configuration cannot hold the name of this file or of its folder\n"
              "  move it into a folder with a plain name\n[2]");
    EXPECT_FALSE(fs::exists(tool.path("my.ini")));
    EXPECT_EQ(run("config", {"inti"}).substr(0, 12), "vrl: action:");
}

}  // namespace
