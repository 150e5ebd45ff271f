#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/load_texts.h"
#include "tests/support/scenario_test.h"

namespace {

namespace fs = std::filesystem;
using vrl_test::missing;

constexpr char kDefaultText[] = R"TEXT(# Flush directories, normally not needed
;sodlldir_clear
;- standard macro's:
;${version}    GUI version
;${bits}       How much bits (32 or 64)
;${bitdir}     '' for 32 bit, '64' for 64bit
;${user}       Your loginname
#----------------------
# Change location for config files.
;ConfigPath = .. 
#----------------------
# Linux directory     -
#----------------------
sodlldir_linux = /opt/kestrom/bin
sodllpostfix_linux = .so.${version}

#----------------------
# Windows directory   -
#----------------------
sodlldir_windows = c:\vorlane\dll${bitdir}
sodllpostfix_win = .${version}.dll

#----------------------
# Linux directories   -
#  -- scan complete   -
#----------------------
;dir = /opt/vorlane/bin
;dir = /opt/kestrom/plugin

#----------------------
# Windows directories -
#  -- scan complete   -
#----------------------
;dir = c:\Program Files\Kestrom Software
;dir = c:\Program Files\Kestrom Software\plugin
;dir = c:\vorlane\bin

#----------------------
# Environment setting -
#----------------------
;env = VRLLOAD

#------------------------------
# Kestrom VRLDLL scripts      -
#------------------------------
;KESTROM/SPT/LAYOUT = ~/module/Vorlane/vrllib.spt
;KESTROM/SPT/CROSSSECTION = ~/vorlane/lib/tarvico/ksr_layout_tarvico_library.spt

##---------------------------##
## Software libraries        ##
##---------------------------##
# Kestrom Software
; - auto loaded
;sodllfile = vrldll

# Filarete Software
sodllfile = foundryFilarete
# VPI Software
sodllfile = vrlvpi
# Lumerical
sodllfile = vrlLumerical
# OptiWave
sodllfile = vrlOptiWave

##---------------------------##
## IP-Block libraries        ##
##---------------------------##
# Bright Photonics
;sodllfile = vrlBright
# Kestrom Software
;sodllfile = vrlIPB_Kestrom

# Demonstration DLLs and IP-Free foundries
;- see vorlane/examples
;- basic example to demonstrate some features
;sodllfile = vrlDemoDll
# SampleFab - 'owned' by Kestrom Software
; demonstration full foundry
;- see vorlane/examples
;sodllfile = foundrySampleFab

)TEXT";

using ConfigFileSearch = vrl_test::ScenarioTest;

TEST_F(ConfigFileSearch, FindsTheFileOfTheHome) {
    std::string const path = vrl_test::writeFile(sandbox.home() / ".config/vorlane/VRLConfig.ini", "");
    EXPECT_EQ(output("ConfigFile", {"2"}), vrl_test::times(2, "<" + path + ">\n") + "\n");
}

TEST_F(ConfigFileSearch, WritesTheDefaultFileAndWarnsOnEachCall) {
    std::string const path = (sandbox.home() / ".cache/vorlane/VRLConfig.ini").string();
    EXPECT_EQ(output("ConfigFile", {"2"}),
              vrl_test::times(2, "<" + path + ">\n") +
                  vrl_test::times(2, "-- warning: no config file found, writing default one in " + path) + "\n");
    EXPECT_TRUE(fs::is_directory(sandbox.home() / ".config/vorlane"));
    EXPECT_TRUE(fs::is_directory(sandbox.home() / ".cache/vorlane"));
}

TEST_F(ConfigFileSearch, IsNotEndedByTheDefaultFile) {
    std::string const path = vrl_test::writeFile(sandbox.home() / ".cache/vorlane/VRLConfig.ini", "foo = 1.so\n");
    fs::permissions(sandbox.home() / ".cache/vorlane", fs::perms::owner_all);
    fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(output("ConfigFile", {"1"}),
              "<" + path + ">\n-- warning: no config file found, writing default one in " + path + "\n");
    EXPECT_EQ(vrl_test::readFile(path).substr(0, 42), "# Flush directories, normally not needed\n;");
}

TEST_F(ConfigFileSearch, ReturnsAnEmptyPathIfTheDefaultFileIsRefused) {
    fs::create_directories(sandbox.home() / "elsewhere");
    fs::create_directories(sandbox.home() / ".cache");
    fs::create_directory_symlink(sandbox.home() / "elsewhere", sandbox.home() / ".cache/vorlane");
    std::string const path = (sandbox.home() / ".cache/vorlane/VRLConfig.ini").string();
    EXPECT_EQ(output("ConfigFile", {"1"}),
              "<>\n-- warning: no config file found, writing default one in " + path + "\n");
    EXPECT_EQ(output("StartUp", {"-"}), "-- warning: no config file found, writing default one in " + path +
                                            "-- warning: no dll/so being loaded, config file <> can not be read.\n");
    EXPECT_TRUE(fs::is_empty(sandbox.home() / "elsewhere"));
}

TEST_F(ConfigFileSearch, StartsWithTheDefaultFile) {
    std::string const path = (sandbox.home() / ".cache/vorlane/VRLConfig.ini").string();
    std::string expected = "-- warning: no config file found, writing default one in " + path;
    for (char const* const name : {"vrldll", "foundryFilarete", "vrlvpi", "vrlLumerical", "vrlOptiWave"})
        expected += missing("/opt/kestrom/bin/lib_wn_" + std::string(name) + ".so.5.1.3");
    EXPECT_EQ(output("StartUp", {"-"}), expected);
}

TEST_F(ConfigFileSearch, IsEndedByAPathThatWasSetEvenIfNothingIsThere) {
    EXPECT_EQ(output("ConfigFileOfPaths", {"/a/b.ini", "c.ini"}),
              "</a/b.ini>\n<c.ini>\n<c.ini>\n<" + (sandbox.home() / ".cache/vorlane/VRLConfig.ini").string() + ">\n");
}

TEST_F(ConfigFileSearch, CutsASetPathAt1023Characters) {
    vrl_test::writeFile(sandbox.home() / ".config/vorlane/VRLConfig.ini", "");
    std::string const path(1023, 'p');
    std::string const found = (sandbox.home() / ".config/vorlane/VRLConfig.ini").string();
    EXPECT_EQ(output("ConfigFileOfPaths", {path, path + "q"}),
              "<" + path + ">\n<" + path + ">\n<" + path + ">\n<" + found + ">\n");
}

TEST_F(ConfigFileSearch, CutsAFoundPathAt1023Characters) {
    fs::path home = sandbox.home();
    while (home.string().size() < 1000) home /= std::string(50, 'h');
    std::string const path = vrl_test::writeFile(home / ".config/vorlane/VRLConfig.ini", "");
    sandbox.set("HOME", home.string());
    ASSERT_GT(path.size(), 1023u);
    EXPECT_EQ(output("ConfigFile", {"1"}), "<" + path.substr(0, 1023) + ">\n\n");
}

TEST_F(ConfigFileSearch, WritesTheWholeDefaultFile) {
    output("ConfigFile", {"1"});
    EXPECT_EQ(vrl_test::readFile(sandbox.home() / ".cache/vorlane/VRLConfig.ini"), kDefaultText);
}

}  // namespace
