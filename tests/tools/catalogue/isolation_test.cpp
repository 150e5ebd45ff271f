#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/tools/catalogue/catalogue.h"
#include "tests/tools/sample_circuit.h"

// Commands other than plugins, with plug-ins that crash, hang, throw or end the program.

namespace {

using vrl_test::shown;
using vrl_test::Tool;
using vrl_test::writeBrokenConfig;

/// A block that is saved under any kind.
class NamedBlock : public vrl::BB {
public:
    explicit NamedBlock(std::string kind) : BB(nullptr), name(std::move(kind)) {}
    std::string getName() const override { return name; }

protected:
    std::string getSerTypeName() override { return name; }

private:
    std::string name;
};

/// The keys of a plug-in that is in order, as `vrl list blocks` prints them.
constexpr char kOthers[] = "key         plug-in    ports; parameters\n"
                           "FineBlock   takesOver  no ports\n"
                           "OtherBlock  takesOver  no ports\n";

/// What `vrl list blocks` writes with a library that does not load and one that does: the reason follows the path.
void expectOthersListed(Tool const& tool, std::string const& library, std::string const& printed,
                        std::string const& reason) {
    auto const list = tool.run(
        "list", {"blocks", "--load-seconds", "2", "--config", writeBrokenConfig(tool, {library, "takesOver"})});
    EXPECT_EQ(list.out, kOthers);
    EXPECT_EQ(shown(tool, list.err), printed + "vrl: BROKEN/lib_wn_" + library + ".so.5.1.3: not loaded: " + reason +
                                         "\nvrl: 1 configured library not loaded; 'vrl plugins' shows why\n");
    EXPECT_EQ(list.status, 0);
}

TEST(Isolation, LeavesOutALibraryThatCrashesInAnEntryPoint) {
    expectOthersListed(Tool(), "crashesInEntry", "about to crash\n",
                       "ended by signal 11 (Segmentation fault) in initLibraryBB");
}

TEST(Isolation, LeavesOutALibraryThatCrashesWhileItIsMapped) {
    expectOthersListed(Tool(), "crashesWhenMapped", "", "ended by signal 11 (Segmentation fault) while it was mapped");
}

TEST(Isolation, LeavesOutALibraryThatHangs) {
    expectOthersListed(Tool(), "hangs", "", "did not end within 2 seconds in initLibraryBB");
}

TEST(Isolation, LeavesOutALibraryThatEndsTheProgram) {
    expectOthersListed(Tool(), "exitsPolitely", "", "ended with status 0 in initLibraryBB");
    expectOthersListed(Tool(), "exits", "", "ended with status 7 in initLibraryPostLoad");
}

TEST(Isolation, FailsWithAPluginThatCrashesAtTheEndOfTheProgram) {
    Tool const tool;
    auto const list = tool.run("list", {"foundries", "--config", writeBrokenConfig(tool, {"crashesAtExit"})});
    EXPECT_EQ(list.out, "key          plug-in        description\n"
                        "ExitFoundry  crashesAtExit  A foundry for tests\n");
    EXPECT_EQ(list.err, "vrl: the plug-ins are loaded, but a program with them does not end well: ended by signal 11 "
                        "(Segmentation fault)\n");
    EXPECT_EQ(list.status, 2);
}

/// What `vrl show` says of a design with a block of this kind, which the plug-in cannot make.
std::string shownWith(std::string const& kind) {
    Tool const tool;
    vrl_test::SampleCircuit circuit;
    circuit.add("x", new NamedBlock(kind));
    circuit.save(tool.path("bad.vrl"));
    auto const ended = tool.run("show", {"bad.vrl", "--config", writeBrokenConfig(tool, {"badWhenMade"})});
    return ended.out + ended.err + "status " + std::to_string(ended.status) + "\n";
}

TEST(Isolation, NamesTheBlockThatCrashesWhileADesignIsRead) {
    EXPECT_EQ(shownWith("CrashingBlock"),
              "vrl: making the block 'CrashingBlock': the plug-in crashed (segmentation fault)\n"
              "  take it out of the configuration until it is mended; 'vrl plugins' and 'vrl validate' show more\n"
              "status 2\n");
}

TEST(Isolation, NamesTheBlockThatEndsTheProgramWhileADesignIsRead) {
    EXPECT_EQ(shownWith("ExitingBlock"),
              "vrl: making the block 'ExitingBlock': the plug-in ended the program\n"
              "  take it out of the configuration until it is mended; 'vrl plugins' and 'vrl validate' show more\n"
              "status 2\n");
}

TEST(Isolation, NamesTheTypeOfWhatABlockThrows) {
    EXPECT_EQ(shownWith("NumberBlock"), "vrl: a plug-in threw a value of type int\nstatus 2\n");
}

TEST(Isolation, LeavesOutALibraryThatThrows) {
    expectOthersListed(Tool(), "throws", "", "the plug-in threw 'no netlist today' in initLibraryNetlist");
}

}  // namespace
