#include <gtest/gtest.h>

#include <filesystem>

#include "tests/support/files.h"
#include "tests/tools/catalogue/catalogue.h"

namespace {

using vrl_test::brokenPlugin;
using vrl_test::homeOf;
using vrl_test::shown;
using vrl_test::Tool;
using vrl_test::writeBrokenConfig;
using vrl_test::writeBrokenLines;

/// The report of a configuration that names these libraries, without its first line.
std::string reportOf(Tool const& tool, std::vector<std::string> const& libraries,
                     std::vector<std::string> const& more = {}) {
    std::vector<std::string> arguments{"--config", writeBrokenConfig(tool, libraries)};
    arguments.insert(arguments.end(), more.begin(), more.end());
    std::string const text = shown(tool, tool.run("plugins", arguments).out);
    return text.substr(text.find('\n') + 1);
}

TEST(Plugins, PrintsWhatEachConfiguredLibraryRegisters) {
    Tool const tool;
    auto const report = tool.run("plugins");
    EXPECT_EQ(shown(tool, report.out),
              "configuration  HOME/.config/vorlane/VRLConfig.ini\n"
              "looked for in  in use     HOME/.config/vorlane/VRLConfig.ini\n"
              "               not tried  /etc/vorlane/VRLConfig.ini\n"
              "               not tried  /usr/local/etc/vorlane/VRLConfig.ini\n"
              "               not tried  /opt/vorlane/VRLConfig.ini\n"
              "\n"
              "vrlDemoDll, line 4: loaded\n"
              "  path    SAMPLES/lib_wn_vrlDemoDll.so.5.1.3\n"
              "  serves  blocks, block views\n"
              "  brings  blocks: demoDelayLine\n"
              "          block views: Demo/Notes, Symbol/Demo\n"
              "\n"
              "foundrySampleFab, line 5: loaded\n"
              "  path    SAMPLES/lib_wn_foundrySampleFab.so.5.1.3\n"
              "  serves  foundries, blocks, block views\n"
              "  brings  foundries: SampleFab\n"
              "          blocks: sfBend, sfCombiner, sfCoupler2x2, sfEdgeCoupler, sfGrating, sfPhaseModulator,\n"
              "              sfPhotodiode, sfPushPullArms, sfSplitter, sfStarCoupler1x10, sfStarCoupler3x10,\n"
              "              sfStraight, sfTaper\n"
              "          block views: SampleFab/Layout, Symbol/SampleFab\n"
              "\n"
              "2 lines name libraries: 2 loaded, 0 failed\n");
    EXPECT_EQ(report.err, "");
    EXPECT_EQ(report.status, 0);
}

TEST(Plugins, PrintsTheSameBytesTwice) {
    Tool const tool;
    std::string const once = tool.run("plugins", {"--json"}).out;
    EXPECT_NE(once, "");
    EXPECT_EQ(tool.run("plugins", {"--json"}).out, once);
}

TEST(Plugins, SaysWhichFileWasNamed) {
    Tool const tool;
    auto const report = tool.run("plugins", {"--config", tool.write("empty.ini", "# nothing\n")});
    EXPECT_EQ(report.out, "configuration  empty.ini  (named with --config)\n"
                          "\n"
                          "no library is configured; 'vrl config init PLUGIN...' writes a configuration\n");
    EXPECT_EQ(report.status, 0);
}

TEST(Plugins, FailsWithoutTheNamedFile) {
    Tool const tool;
    auto const report = tool.run("plugins", {"--config", "gone.ini"});
    EXPECT_EQ(report.out, "");
    EXPECT_EQ(report.err, "vrl: gone.ini: cannot read this configuration file\n"
                          "  give a readable file with --config FILE, or none\n");
    EXPECT_EQ(report.status, 2);
}

TEST(Plugins, ReportsAConfigurationThatCannotBeRead) {
    Tool const tool;
    std::string const config = homeOf(tool) + "/.config/vorlane/VRLConfig.ini";
    std::filesystem::remove(config);
    std::filesystem::create_directory(config);
    auto const report = tool.run("plugins");
    EXPECT_EQ(report.out.substr(0, report.out.find('\n')), "configuration  " + config + "  (cannot be read)");
    EXPECT_EQ(report.err, "vrl: warning: no dll/so being loaded, config file <" + config + "> can not be read.\n");
    EXPECT_EQ(report.status, 1);
}

TEST(Plugins, ReportsTheConfigurationThatWasWritten) {
    Tool const tool;
    std::filesystem::remove(homeOf(tool) + "/.config/vorlane/VRLConfig.ini");
    auto const report = tool.run("plugins");
    std::string const out = shown(tool, report.out);
    EXPECT_EQ(out.substr(0, out.find("\n\n")),
              "configuration  HOME/.cache/vorlane/VRLConfig.ini  (written, since none was found)\n"
              "looked for in  missing  HOME/.config/vorlane/VRLConfig.ini\n"
              "               missing  /etc/vorlane/VRLConfig.ini\n"
              "               missing  /usr/local/etc/vorlane/VRLConfig.ini\n"
              "               missing  /opt/vorlane/VRLConfig.ini");
    EXPECT_EQ(shown(tool, report.err),
              "vrl: warning: no config file found, writing default one in HOME/.cache/vorlane/VRLConfig.ini\n");
    EXPECT_EQ(report.status, 1);
}

TEST(Plugins, NamesTheLibraryThatCrashesInAnEntryPoint) {
    Tool const tool;
    auto const report = tool.run("plugins", {"--config", writeBrokenConfig(tool, {"crashesInEntry", "fine"})});
    EXPECT_EQ(shown(tool, report.out),
              "configuration  broken.ini  (named with --config)\n"
              "\n"
              "crashesInEntry, line 4: not loaded\n"
              "  path    BROKEN/lib_wn_crashesInEntry.so.5.1.3\n"
              "  why     ended by signal 11 (Segmentation fault) in initLibraryBB\n"
              "  hint    take it out of the configuration until it is mended; 'vrl validate' shows more\n"
              "\n"
              "fine, line 5: loaded\n"
              "  path    BROKEN/lib_wn_fine.so.5.1.3\n"
              "  serves  blocks, netlists, netlist views\n"
              "  brings  blocks: FineBlock\n"
              "          netlists: FineNetlist\n"
              "          netlist views: Fine/View\n"
              "\n"
              "2 lines name libraries: 1 loaded, 1 failed\n");
    EXPECT_EQ(report.err, "about to crash\nfine is loaded\n");
    EXPECT_EQ(report.status, 1);
}

TEST(Plugins, NamesTheLibraryThatCrashesWhileItIsMapped) {
    Tool const tool;
    EXPECT_EQ(reportOf(tool, {"crashesWhenMapped"}),
              "\n"
              "crashesWhenMapped, line 4: not loaded\n"
              "  path    BROKEN/lib_wn_crashesWhenMapped.so.5.1.3\n"
              "  why     ended by signal 11 (Segmentation fault) while it was mapped\n"
              "  hint    take it out of the configuration until it is mended; 'vrl validate' shows more\n"
              "\n"
              "1 line names a library: 0 loaded, 1 failed\n");
}

TEST(Plugins, NamesTheLibraryThatHangs) {
    Tool const tool;
    EXPECT_EQ(reportOf(tool, {"hangs"}, {"--load-seconds", "2"}),
              "\n"
              "hangs, line 4: not loaded\n"
              "  path    BROKEN/lib_wn_hangs.so.5.1.3\n"
              "  why     did not end within 2 seconds in initLibraryBB\n"
              "  hint    take it out of the configuration until it is mended; 'vrl validate' shows more\n"
              "\n"
              "1 line names a library: 0 loaded, 1 failed\n");
}

TEST(Plugins, NamesTheLibraryThatThrows) {
    Tool const tool;
    EXPECT_EQ(reportOf(tool, {"throws"}),
              "\n"
              "throws, line 4: not loaded\n"
              "  path    BROKEN/lib_wn_throws.so.5.1.3\n"
              "  why     the plug-in threw 'no netlist today' in initLibraryNetlist\n"
              "  hint    take it out of the configuration until it is mended; 'vrl validate' shows more\n"
              "\n"
              "1 line names a library: 0 loaded, 1 failed\n");
}

TEST(Plugins, NamesTheLibraryThatEndsTheProgram) {
    Tool const tool;
    EXPECT_EQ(reportOf(tool, {"exits"}),
              "\n"
              "exits, line 4: not loaded\n"
              "  path    BROKEN/lib_wn_exits.so.5.1.3\n"
              "  why     ended with status 7 in initLibraryPostLoad\n"
              "  hint    take it out of the configuration until it is mended; 'vrl validate' shows more\n"
              "\n"
              "1 line names a library: 0 loaded, 1 failed\n");
}

TEST(Plugins, ReportsACrashAtTheEndOfTheProcess) {
    Tool const tool;
    auto const report = tool.run("plugins", {"--config", writeBrokenConfig(tool, {"crashesAtExit"})});
    EXPECT_EQ(shown(tool, report.out), "configuration  broken.ini  (named with --config)\n"
                                       "\n"
                                       "crashesAtExit, line 4: loaded\n"
                                       "  path    BROKEN/lib_wn_crashesAtExit.so.5.1.3\n"
                                       "  serves  foundries\n"
                                       "  brings  foundries: ExitFoundry\n"
                                       "\n"
                                       "1 line names a library: 1 loaded, 0 failed\n");
    EXPECT_EQ(report.err, "vrl: the plug-ins are loaded, but a program with them does not end well: ended by signal 11 "
                          "(Segmentation fault)\n");
    EXPECT_EQ(report.status, 1);
}

TEST(Plugins, ReportsWhoseKeysALibraryTakesOver) {
    Tool const tool;
    EXPECT_EQ(reportOf(tool, {"fine", "takesOver"}), "\n"
                                                     "fine, line 4: loaded\n"
                                                     "  path    BROKEN/lib_wn_fine.so.5.1.3\n"
                                                     "  serves  blocks, netlists, netlist views\n"
                                                     "  brings  blocks: FineBlock\n"
                                                     "          netlists: FineNetlist\n"
                                                     "          netlist views: Fine/View\n"
                                                     "\n"
                                                     "takesOver, line 5: loaded\n"
                                                     "  path    BROKEN/lib_wn_takesOver.so.5.1.3\n"
                                                     "  serves  blocks\n"
                                                     "  brings  blocks: OtherBlock\n"
                                                     "  takes   FineBlock (blocks) from fine\n"
                                                     "\n"
                                                     "2 lines name libraries: 2 loaded, 0 failed\n");
}

TEST(Plugins, NamesTheDependencyThatIsMissing) {
    Tool const tool;
    EXPECT_EQ(reportOf(tool, {"lacksDependency"}),
              "\n"
              "lacksDependency, line 4: not loaded\n"
              "  path    BROKEN/lib_wn_lacksDependency.so.5.1.3\n"
              "  why     libcatalogueHelper.so: cannot open shared object file: No such file or directory\n"
              "  hint    it needs 'libcatalogueHelper.so': install that, or name its folder in LD_LIBRARY_PATH\n"
              "\n"
              "1 line names a library: 0 loaded, 1 failed\n");
}

TEST(Plugins, PrintsTheVersionsOfARefusedLibrary) {
    Tool const tool;
    EXPECT_EQ(reportOf(tool, {"needsVersion", "oldVersion", "takesOver"}),
              "\n"
              "needsVersion, line 4: loaded\n"
              "  path    BROKEN/lib_wn_needsVersion.so.5.1.3\n"
              "  serves  foundries\n"
              "  brings  foundries: NewFoundry\n"
              "\n"
              "oldVersion, line 5: not loaded\n"
              "  path    BROKEN/lib_wn_oldVersion.so.5.1.3\n"
              "  why     it is of version 2.1.10, and version 2.1.11 of the interface is asked for\n"
              "  hint    build it anew against that version\n"
              "\n"
              "takesOver, line 6: not loaded\n"
              "  path    BROKEN/lib_wn_takesOver.so.5.1.3\n"
              "  why     it has no getAPIversion, and version 2.1.11 of the interface is asked for\n"
              "  hint    have it export getAPIversion, and build it against that version\n"
              "\n"
              "3 lines name libraries: 1 loaded, 2 failed\n");
}

TEST(Plugins, FindsAnEntryPointWithTheWrongLinkage) {
    Tool const tool;
    EXPECT_EQ(reportOf(tool, {"mangled"}),
              "\n"
              "mangled, line 4: not loaded\n"
              "  path    BROKEN/lib_wn_mangled.so.5.1.3\n"
              "  why     it has no entry point of a plug-in\n"
              "  hint    initLibraryFoundry has C++ linkage: declare it with VRL_PLUGIN_EXPORT\n"
              "\n"
              "1 line names a library: 0 loaded, 1 failed\n");
}

TEST(Plugins, NamesTheEntryPointsThatAreSearchedFor) {
    Tool const tool;
    auto const lines = "f = " + std::string(VRL_CATALOGUE_PLUGINS) + "/elsewhere/libcatalogueHelper.so\n";
    auto const report = tool.run("plugins", {"--config", writeBrokenLines(tool, lines)});
    EXPECT_EQ(shown(tool, report.out),
              "configuration  broken.ini  (named with --config)\n"
              "\n"
              "BROKEN/elsewhere/libcatalogueHelper.so, line 4: not loaded\n"
              "  path    BROKEN/elsewhere/libcatalogueHelper.so\n"
              "  why     it has no entry point of a plug-in\n"
              "  hint    export at least one of initLibraryAttribute, initLibraryFoundry, initLibraryBB, "
              "initLibraryNetlist, initLibraryComponentView, initLibraryBBView, initLibraryNetlistView\n"
              "\n"
              "1 line names a library: 0 loaded, 1 failed\n");
    EXPECT_EQ(report.status, 1);
}

TEST(Plugins, OffersTheHintForMissingFiles) {
    Tool const tool;
    tool.write("here/lib_wn_near.so.5.1.2", "");
    tool.write("here/lib_wn_other.so.5.1.3", "");
    std::filesystem::create_symlink("nowhere", tool.path("here/lib_wn_link.so.5.1.3"));
    auto const config = tool.write("a.ini", "sodllfile = bare\n"
                                            "sodlldir_linux = here\n"
                                            "sodllpostfix_linux = .so.${version}\n"
                                            "sodllfile = near\n"
                                            "sodllfile = othr\n"
                                            "sodllfile = link\n"
                                            "sodlldir_clear\n"
                                            "sodlldir_linux = gone ; and a comment\n"
                                            "sodllfile = far\n");
    auto const report = tool.run("plugins", {"--config", config});
    EXPECT_EQ(report.out,
              "configuration  a.ini  (named with --config)\n"
              "\n"
              "bare, line 1: not loaded\n"
              "  path    bare\n"
              "  why     cannot open shared object file: No such file or directory\n"
              "  hint    no sodlldir_linux names a folder for it, so only the system's own folders were searched\n"
              "\n"
              "near, line 4: not loaded\n"
              "  path    here/lib_wn_near.so.5.1.3\n"
              "  why     cannot open shared object file: No such file or directory\n"
              "  hint    'lib_wn_near.so.5.1.2' exists: correct sodllpostfix_linux, or the name of the file\n"
              "\n"
              "othr, line 5: not loaded\n"
              "  path    here/lib_wn_othr.so.5.1.3\n"
              "  why     cannot open shared object file: No such file or directory\n"
              "  hint    did you mean 'other'?\n"
              "\n"
              "link, line 6: not loaded\n"
              "  path    here/lib_wn_link.so.5.1.3\n"
              "  why     cannot open shared object file: No such file or directory\n"
              "  hint    it is a link to a missing file\n"
              "\n"
              "far, line 9: not loaded\n"
              "  path    gone/lib_wn_far.so.5.1.3\n"
              "  why     cannot open shared object file: No such file or directory\n"
              "  hint    there is no folder 'gone': correct sodlldir_linux\n"
              "\n"
              "5 lines name libraries: 0 loaded, 5 failed\n");
}

TEST(Plugins, OffersTheHintForFilesThatAreNoLibraries) {
    Tool const tool;
    tool.write("text.so", "This is the text of a file that is no shared library, and longer than its header.\n");
    vrl_test::copyPart(brokenPlugin("fine"), tool.path("short.so"), 5000);
    std::filesystem::create_directory(tool.path("folder.so"));
    auto const config = tool.write("a.ini", "f = ./text.so\nf = ./short.so\nf = ./folder.so\n");
    auto const report = tool.run("plugins", {"--config", config});
    EXPECT_EQ(report.out, "configuration  a.ini  (named with --config)\n"
                          "\n"
                          "./text.so, line 1: not loaded\n"
                          "  path    ./text.so\n"
                          "  why     invalid ELF header\n"
                          "  hint    the file is no shared library: build it, or take a whole copy\n"
                          "\n"
                          "./short.so, line 2: not loaded\n"
                          "  path    ./short.so\n"
                          "  why     file too short\n"
                          "  hint    the file is empty or was cut short: take a whole copy\n"
                          "\n"
                          "./folder.so, line 3: not loaded\n"
                          "  path    ./folder.so\n"
                          "  why     cannot read file data: Is a directory\n"
                          "  hint    give the path of a shared library\n"
                          "\n"
                          "3 lines name libraries: 0 loaded, 3 failed\n");
}

TEST(Plugins, PrintsTheLinesOfIncludedFiles) {
    Tool const tool;
    tool.write("more.ini", "; a comment\n\nsodllfile = takesOver\n");
    auto const config = writeBrokenLines(tool, "#include more.ini\n"
                                               "sodllfile = needsVersion   # with a comment\n");
    auto const report = tool.run("plugins", {"--config", config});
    EXPECT_EQ(shown(tool, report.out), "configuration  broken.ini  (named with --config)\n"
                                       "\n"
                                       "takesOver, line 3 of more.ini: loaded\n"
                                       "  path    BROKEN/lib_wn_takesOver.so.5.1.3\n"
                                       "  serves  blocks\n"
                                       "  brings  blocks: FineBlock, OtherBlock\n"
                                       "\n"
                                       "needsVersion, line 5: loaded\n"
                                       "  path    BROKEN/lib_wn_needsVersion.so.5.1.3\n"
                                       "  serves  foundries\n"
                                       "  brings  foundries: NewFoundry\n"
                                       "\n"
                                       "2 lines name libraries: 2 loaded, 0 failed\n");
    EXPECT_EQ(report.status, 0);
}

TEST(Plugins, FollowsIncludesWhoseNamesHaveMacros) {
    Tool const tool;
    tool.write("5.1.3.ini", "sodllfile = takesOver\n");
    auto const config = writeBrokenLines(tool, "#include ${version}.ini\nsodllfile = needsVersion\n");
    auto const report = tool.run("plugins", {"--config", config});
    EXPECT_EQ(shown(tool, report.out), "configuration  broken.ini  (named with --config)\n"
                                       "\n"
                                       "takesOver, line 1 of 5.1.3.ini: loaded\n"
                                       "  path    BROKEN/lib_wn_takesOver.so.5.1.3\n"
                                       "  serves  blocks\n"
                                       "  brings  blocks: FineBlock, OtherBlock\n"
                                       "\n"
                                       "needsVersion, line 5: loaded\n"
                                       "  path    BROKEN/lib_wn_needsVersion.so.5.1.3\n"
                                       "  serves  foundries\n"
                                       "  brings  foundries: NewFoundry\n"
                                       "\n"
                                       "2 lines name libraries: 2 loaded, 0 failed\n");
}

TEST(Plugins, ComesToAnEndWithAFileThatIncludesItself) {
    Tool const tool;
    auto const config = tool.write("self.ini", "sodllfile = gone\n#include self.ini\n");
    auto const report = tool.run("plugins", {"--config", config});
    EXPECT_EQ(report.out.substr(report.out.rfind("\n\n")), "\n\n509 lines name libraries: 0 loaded, 509 failed\n");
    EXPECT_EQ(report.err, "vrl: warning: can not find VRLConfig.ini include: <self.ini>.\n");
    EXPECT_EQ(report.status, 1);
}

TEST(Plugins, CountsALibraryThatOneOfTwoFoldersHas) {
    Tool const tool;
    auto const config = writeBrokenLines(tool, "sodlldir_linux = " + tool.path("none") + "\nsodllfile = takesOver\n");
    auto const report = tool.run("plugins", {"--config", config});
    EXPECT_EQ(shown(tool, report.out), "configuration  broken.ini  (named with --config)\n"
                                       "\n"
                                       "takesOver, line 5: loaded\n"
                                       "  path    BROKEN/lib_wn_takesOver.so.5.1.3\n"
                                       "  serves  blocks\n"
                                       "  brings  blocks: FineBlock, OtherBlock\n"
                                       "  path    HERE/none/lib_wn_takesOver.so.5.1.3\n"
                                       "  why     cannot open shared object file: No such file or directory\n"
                                       "\n"
                                       "1 line names a library: 1 loaded, 0 failed\n");
    EXPECT_EQ(report.status, 0);
}

TEST(Plugins, PrintsTheOtherKindsOfLine) {
    Tool tool;
    tool.place().set("VRL_SOME", brokenPlugin("takesOver") + ";" + tool.path("gone.so"));
    auto const config = tool.write("a.ini", "env = VRL_SOME\nenv = VRL_NONE\ndir = nowhere\nf = ./lib_wX_*.so\n");
    auto const report = tool.run("plugins", {"--config", config});
    EXPECT_EQ(shown(tool, report.out), "configuration  a.ini  (named with --config)\n"
                                       "\n"
                                       "variable VRL_SOME, line 1: loaded\n"
                                       "  path    BROKEN/lib_wn_takesOver.so.5.1.3\n"
                                       "  serves  blocks\n"
                                       "  brings  blocks: FineBlock, OtherBlock\n"
                                       "  path    HERE/gone.so\n"
                                       "  why     cannot open shared object file: No such file or directory\n"
                                       "\n"
                                       "variable VRL_NONE, line 2: not set\n"
                                       "\n"
                                       "folder nowhere, line 3: holds no library\n"
                                       "\n"
                                       "./lib_wX_*.so, line 4: matches no file\n"
                                       "\n"
                                       "4 lines name libraries: 1 loaded, 0 failed\n");
    EXPECT_EQ(report.status, 0);
}

TEST(Plugins, ShowsTheStandardPluginOnlyWhenAskedForAll) {
    Tool const tool;
    EXPECT_EQ(reportOf(tool, {"takesOver"}, {"--all"}),
              "\n"
              "takesOver, line 4: loaded\n"
              "  path    BROKEN/lib_wn_takesOver.so.5.1.3\n"
              "  serves  blocks\n"
              "  brings  blocks: FineBlock, OtherBlock\n"
              "\n"
              "vrldll, not configured: not loaded\n"
              "  path    BROKEN/lib_wn_vrldll.so.5.1.3\n"
              "  why     cannot open shared object file: No such file or directory\n"
              "\n"
              "1 line names a library: 1 loaded, 0 failed\n");
}

}  // namespace
