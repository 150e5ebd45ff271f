#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <set>
#include <sstream>

#include "tests/demo/sample_plugins.h"
#include "tests/support/files.h"
#include "tests/support/kept_file.h"
#include "tests/tools/booklet/latex.h"
#include "tests/tools/tool.h"

namespace {

using vrl_test::expectPdf;
using vrl_test::kept;
using vrl_test::readFile;
using vrl_test::Tool;

/// A configuration that loads plug-ins of the tests. Returns its name, for --config.
std::string testPlugins(Tool const& tool, std::string const& lines) {
    return tool.write("plugins.ini", vrl_test::configText(VRL_TEST_PLUGINS, lines));
}

/// The headings of a booklet, each row of a port or a parameter table under its own with the cells from the first.
std::string outline(std::string const& tex) {
    std::regex const heading(R"(\\(chapter|section|subsection)\{(.*)\})");
    std::istringstream lines(tex);
    std::string text;
    bool inTable = false;
    for (std::string line; std::getline(lines, line);) {
        std::smatch found;
        if (line == "\\begin{document}") text.clear();
        if (std::regex_match(line, found, heading))
            text += (found[1] == "subsection" ? "  " : "") + std::string(found[2]) + "\n";
        if (line == "\\endlastfoot")
            inTable = true;
        else if (line.compare(0, 5, "\\end{") == 0)
            inTable = false;
        else if (inTable)
            text += "    " + line.substr(0, line.size() - 3) + "\n";
    }
    return text;
}

TEST(Doc, WritesAwkwardStringsSafely) {
    Tool const tool;
    auto const done =
        tool.run("doc", {"Awkward_Fab", "-o", "a.tex", "--config", testPlugins(tool, "sodllfile = awkwardFab\n")});
    EXPECT_EQ(done.err, "");
    EXPECT_EQ(done.out, "Fab \\{}$&#^_~%\"'`<>|--,,?`!`[]*@=/: 4 blocks, 2 process flows, 1 cross section\n"
                        "wrote a.tex\n");
    EXPECT_EQ(done.status, 0);
    EXPECT_EQ(tool.read("a.tex"), kept(tool.read("a.tex"), VRL_KEPT_TEXTS "/awkward_fab.tex"));
}

TEST(Doc, DescribesEveryBlockWithItsPortsAndParameters) {
    Tool const tool;
    auto const done = tool.run("doc", {"SampleFab", "-o", "b.tex"});
    EXPECT_EQ(done.err, "");
    EXPECT_EQ(done.out, "SampleFab: 13 blocks, 2 process flows, 3 cross sections\nwrote b.tex\n");
    EXPECT_EQ(done.status, 0);
    std::string const shown = outline(tool.read("b.tex"));
    EXPECT_EQ(shown, kept(shown, VRL_KEPT_TEXTS "/sample_fab_outline.txt"));
}

TEST(Doc, WritesTheSameBytesEachTime) {
    Tool const tool;
    tool.run("doc", {"SampleFab", "-o", "a.tex"});
    tool.run("doc", {"SampleFab", "-o", "b.tex"});
    EXPECT_NE(tool.read("a.tex"), "");
    EXPECT_EQ(tool.read("a.tex"), tool.read("b.tex"));
}

TEST(Doc, TakesTheBlocksOfTheFoundrysOwnFileOnly) {
    Tool const tool;
    auto const config = testPlugins(tool, "sodllfile = awkwardFab\nsodllfile = throwingFab\n"
                                          "sodlldir_linux = " VRL_SAMPLE_PLUGINS "\nsodllfile = foundrySampleFab\n");
    auto const done = tool.run("doc", {"Awkward_Fab", "-o", "a.tex", "--json", "--config", config});
    EXPECT_EQ(done.err, "");
    EXPECT_EQ(done.out, R"({
  "format": "vrl-doc",
  "version": 1,
  "foundry": "Fab \\{}$&#^_~%\"'`<>|--,,?`!`[]*@=/",
  "tex": "a.tex",
  "pdf": null,
  "flows": [
    "empty",
    "flow 100% & more"
  ],
  "crossSections": [
    "section_{1}"
  ],
  "blocks": [
    "aw_kward{}$",
    "awkward$",
    "many",
    "nothing"
  ]
}
)");
}

TEST(Doc, DocumentsChosenBlocksOnceAndInOrder) {
    Tool const tool;
    auto const done =
        tool.run("doc", {"--block", "sfTaper", "--block=sfBend", "--block", "sfTaper", "SampleFab", "-o", "b.tex"});
    EXPECT_EQ(done.err, "");
    EXPECT_EQ(done.out, "SampleFab: 2 blocks, 2 process flows, 3 cross sections\nwrote b.tex\n");
    std::string const tex = tool.read("b.tex");
    std::size_t const bend = tex.find("\\section{sfBend}\n\n\\label{bb:sfBend} ");
    std::size_t const taper = tex.find("\\section{sfTaper}\n\n\\label{bb:sfTaper} ");
    EXPECT_LT(bend, taper);
    EXPECT_NE(taper, std::string::npos);
}

TEST(Doc, HintsAtNearNamesOfFoundriesAndBlocks) {
    Tool const tool;
    auto const foundry = tool.run("doc", {"SampelFab", "-o", "b.tex"});
    EXPECT_EQ(foundry.err, "vrl: SampelFab: there is no such file, and no loaded plug-in has a foundry of that name\n  "
                           "did you mean 'SampleFab'?\n");
    EXPECT_EQ(foundry.status, 2);
    auto const block = tool.run("doc", {"SampleFab", "-o", "b.tex", "--block", "sfbent"});
    EXPECT_EQ(block.err, "vrl: block 'sfbent': no loaded plug-in has it\n  did you mean 'sfBend'?\n");
    EXPECT_EQ(block.status, 2);
    EXPECT_FALSE(std::filesystem::exists(tool.path("b.tex")));
}

TEST(Doc, SaysThatNoPluginHasTheFoundry) {
    Tool const tool;
    auto const done = tool.run("doc", {"SampleFab", "-o", "b.tex", "--config", tool.writeConfig("none.ini", {})});
    EXPECT_EQ(done.err, "vrl: SampleFab: there is no such file, and no loaded plug-in has a foundry of that name\n"
                        "  'vrl plugins' shows what is loaded\n");
    EXPECT_EQ(done.status, 2);
}

TEST(Doc, NamesTheBlockThatCannotBeMade) {
    Tool const tool;
    auto const config = testPlugins(tool, "sodllfile = throwingFab\n");
    auto const all = tool.run("doc", {"ThrowingFab", "-o", "t.tex", "--config", config});
    EXPECT_EQ(all.err, "vrl: block 'throwing': its plug-in threw 'no \\x1B[31mlicence'\n"
                       "  mend the plug-in; --block chooses the blocks of the booklet\n");
    EXPECT_EQ(all.status, 2);
    EXPECT_FALSE(std::filesystem::exists(tool.path("t.tex")));
    auto const one = tool.run("doc", {"ThrowingFab", "-o", "t.tex", "--block", "fine", "--config", config});
    EXPECT_EQ(one.out, "ThrowingFab: 1 block, 0 process flows, 0 cross sections\nwrote t.tex\n");
    EXPECT_EQ(one.status, 0);
}

TEST(Doc, RefusesAFileOfAnotherKind) {
    Tool const tool;
    auto const done = tool.run("doc", {"SampleFab", "-o", "booklet.docx"});
    EXPECT_EQ(done.err, "vrl: booklet.docx: ends neither in .tex nor in .pdf\n  give the file as -o booklet.tex\n");
    EXPECT_EQ(done.status, 2);
}

TEST(Doc, SaysThatTheFolderIsMissing) {
    Tool const tool;
    auto const done = tool.run("doc", {"SampleFab", "-o", "no/booklet.tex"});
    EXPECT_EQ(done.err, "vrl: no/booklet.tex: cannot make a file in its folder: No such file or directory\n"
                        "  make the folder first\n");
    EXPECT_EQ(done.status, 2);
}

TEST(Doc, SaysThatThereIsNoTemporaryFolder) {
    Tool tool;
    tool.place().set("TMPDIR", tool.path("no"));
    auto const done = tool.run("doc", {"SampleFab", "-o", "b.tex"});
    EXPECT_EQ(done.err,
              "vrl: TMPDIR: leads to no folder: No such file or directory\n  set it to a folder that can be written\n");
    EXPECT_EQ(done.status, 2);
}

TEST(DocPdf, NamesThePackagesWhereThereIsNoLatex) {
    Tool tool;
    tool.place().set("PATH", tool.path("empty"));
    auto const done = tool.run("doc", {"SampleFab", "-o", "b.tex", "--pdf"});
    EXPECT_EQ(done.err,
              std::string("vrl: pdflatex: there is none here, and a PDF needs it\n") + vrl_test::kInstallLatex);
    EXPECT_EQ(done.status, 2);
    EXPECT_FALSE(std::filesystem::exists(tool.path("b.tex")));
}

/// Puts a shell script in the place of pdflatex.
void replaceLatex(Tool& tool, std::string const& script) {
    std::filesystem::create_directory(tool.path("bin"));
    tool.write("bin/pdflatex", "#!/bin/sh\n" + script);
    std::filesystem::permissions(tool.path("bin/pdflatex"), std::filesystem::perms::owner_all);
    tool.place().set("PATH", tool.path("bin") + ":/usr/bin:/bin");
}

TEST(DocPdf, ReportsLatexsFirstComplaint) {
    Tool tool;
    replaceLatex(tool, "echo This is pdfTeX; echo '! Undefined control sequence.'; echo '! Other.'; exit 1\n");
    auto const done = tool.run("doc", {"SampleFab", "-o", "b.pdf"});
    EXPECT_EQ(done.err, "vrl: pdflatex: ended with status 1: Undefined control sequence.\n"
                        "  without --pdf the booklet is written as LaTeX\n");
    EXPECT_EQ(done.status, 2);
}

TEST(DocPdf, NamesThePackagesWhereAPartOfLatexIsMissing) {
    Tool tool;
    replaceLatex(tool, "echo \"! LaTeX Error: File \\`tikz.sty' not found.\"; exit 1\n");
    auto const done = tool.run("doc", {"SampleFab", "-o", "b.pdf"});
    EXPECT_EQ(done.err, std::string("vrl: pdflatex: ended with status 1: LaTeX Error: File `tikz.sty' not found.\n") +
                            vrl_test::kInstallLatex);
}

TEST(DocPdf, RunsLatexTwiceWithoutAShellAndLeavesNoFiles) {
    Tool tool;
    replaceLatex(tool, "echo \"$@\" >> \"$HOME/calls\"; test -f booklet.tex && cp booklet.tex booklet.pdf\n");
    auto const done = tool.run("doc", {"SampleFab", "-o", "b.tex", "--pdf"});
    EXPECT_EQ(done.err, "");
    EXPECT_EQ(done.out, "SampleFab: 13 blocks, 2 process flows, 3 cross sections\nwrote b.tex\nwrote b.pdf\n");
    EXPECT_EQ(readFile(tool.place().home() / "calls"),
              "-draftmode -interaction=nonstopmode -halt-on-error -no-shell-escape booklet.tex\n"
              "-interaction=nonstopmode -halt-on-error -no-shell-escape booklet.tex\n");
    EXPECT_EQ(tool.read("b.pdf"), tool.read("b.tex"));
    std::set<std::string> left;
    for (auto const& entry : std::filesystem::directory_iterator(tool.place().work()))
        left.insert(entry.path().filename().string());
    EXPECT_EQ(left, (std::set<std::string>{"b.pdf", "b.tex", "bin"}));
}

TEST(DocPdf, CountsTheSecondsAtATerminal) {
    Tool tool;
    replaceLatex(tool, "sleep 1.5; cp booklet.tex booklet.pdf\n");
    auto const done = tool.runAtTerminal("doc", {"SampleFab", "-o", "b.pdf"});
    EXPECT_EQ(done.err.substr(0, 20), "\r\x1b[Ktypesetting: 1 s");
    EXPECT_EQ(done.err.substr(done.err.size() - 4), "\r\x1b[K");
    EXPECT_EQ(done.status, 0);
}

TEST(DocPdf, SaysThatLatexMadeNone) {
    Tool tool;
    replaceLatex(tool, "exit 0\n");
    auto const done = tool.run("doc", {"SampleFab", "-o", "b.pdf"});
    EXPECT_EQ(done.err, "vrl: pdflatex: made no PDF\n  without --pdf the booklet is written as LaTeX\n");
}

TEST(DocPdf, IsMadeOfSampleFab) {
    Tool const tool;
    expectPdf(tool, tool.run("doc", {"SampleFab", "-o", "b.tex", "--pdf"}), "b.pdf");
}

TEST(DocPdf, IsMadeOfAwkwardStrings) {
    Tool const tool;
    auto const config = testPlugins(tool, "sodllfile = awkwardFab\n");
    expectPdf(tool, tool.run("doc", {"Awkward_Fab", "-o", "a.pdf", "--config", config}), "a.pdf");
}

TEST(DocPdf, HasTheSameBytesEachTime) {
    Tool const tool;
    expectPdf(tool, tool.run("doc", {"SampleFab", "-o", "a.pdf"}), "a.pdf");
    expectPdf(tool, tool.run("doc", {"SampleFab", "-o", "b.pdf"}), "b.pdf");
    EXPECT_EQ(tool.read("a.pdf"), tool.read("b.pdf"));
}

}  // namespace
