#include <gtest/gtest.h>

#include <filesystem>
#include <regex>

#include "tests/support/kept_file.h"
#include "tests/tools/booklet/latex.h"
#include "tests/tools/design/saved_objects.h"
#include "tests/tools/sample_circuit.h"

// What "vrl doc" writes of a design.

namespace {

using vrl_test::kept;
using vrl_test::SampleCircuit;
using vrl_test::textOfPdf;
using vrl_test::Tool;

/// The document without its preamble, which is the same for all booklets.
std::string bodyOf(std::string const& tex) { return tex.substr(tex.find("\\begin{document}")); }

std::size_t countOf(std::string const& text, std::string const& part) {
    std::size_t count = 0;
    for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
    return count;
}

vrl::Netlist& insideOf(SampleCircuit& circuit, std::string const& composite) {
    return *dynamic_cast<vrl::CBB&>(*circuit.netlist().getBB(composite)).getAsNetlist();
}

/// A design with a finding, an excepted one, a changed value and a composite.
void saveModulator(Tool const& tool) {
    SampleCircuit circuit;
    circuit.add("bend", "sfBend").add("arms", "sfPushPullArms").join("bend,out0", "arms,in0");
    circuit.set("bend", "radius", 2).input("bend,in0").dc("arms,ground");
    circuit.netlist().addString("author", "a designer", "who drew it", "");
    insideOf(circuit, "arms").getBB("trim")->setDouble("length", 30);
    circuit.save(tool.path("mod.vrl"));
    tool.write("mod.vrl.exceptions.yml", "exceptions:\n"
                                         "- {rule: open-port, element: arms, reason: measured 100 %}\n"
                                         "- {rule: open-port, element: gone, reason: old}\n");
}

TEST(DocOfADesign, HasAllOfIt) {
    Tool const tool;
    saveModulator(tool);
    auto const done = tool.run("doc", {"mod.vrl", "-o", "mod.tex"});
    EXPECT_EQ(done.err, "");
    EXPECT_EQ(done.out, "mod.vrl: 2 elements, 1 net, 2 findings\nwrote mod.tex\n");
    EXPECT_EQ(done.status, 0);
    std::string const body = bodyOf(tool.read("mod.tex"));
    EXPECT_EQ(body, kept(body, VRL_KEPT_TEXTS "/design.tex"));
}

TEST(DocOfADesign, IsReportedAsJson) {
    Tool const tool;
    saveModulator(tool);
    EXPECT_EQ(tool.run("doc", {"mod.vrl", "-o", "mod.tex", "--json"}).out, R"({
  "format": "vrl-doc",
  "version": 1,
  "design": "mod.vrl",
  "tex": "mod.tex",
  "pdf": null,
  "type": "Netlist",
  "elements": 2,
  "nets": 1,
  "insides": [
    {
      "kind": "sfPushPullArms",
      "elements": [
        "arms"
      ]
    }
  ],
  "summary": {
    "errors": 1,
    "warnings": 1,
    "notes": 0,
    "excepted": 5
  }
}
)");
}

TEST(DocOfADesign, IsTypesetWithAllItsText) {
    Tool const tool;
    saveModulator(tool);
    auto const done = tool.run("doc", {"mod.vrl", "-o", "mod.pdf"});
    vrl_test::expectPdf(tool, done, "mod.pdf");
    std::string const text = textOfPdf(tool, "mod.pdf");
    EXPECT_EQ(text, kept(text, VRL_KEPT_TEXTS "/design_pdf.txt"));
}

TEST(DocOfADesign, WritesEqualInsidesOnce) {
    Tool const tool;
    SampleCircuit circuit;
    for (char const* const name : {"a", "b", "c", "d"}) circuit.add(name, "sfPushPullArms");
    insideOf(circuit, "b").getBB("trim")->setDouble("length", 30);
    circuit.save(tool.path("a.vrl"));
    auto const done = tool.run("doc", {"a.vrl", "-o", "a.tex"});
    EXPECT_EQ(done.status, 0);
    std::string const tex = tool.read("a.tex");
    EXPECT_EQ(countOf(tex, "\\section{Inside "), 2u);
    EXPECT_NE(
        tex.find("\\section{Inside a, sf\\vrlpart{}Push\\vrlpart{}Pull\\vrlpart{}Arms}\n\nThe same is inside c and "
                 "d.\n"),
        std::string::npos);
    EXPECT_NE(tex.find("\\section{Inside b, "), std::string::npos);
}

TEST(DocOfADesign, WorksWithStandIns) {
    Tool const tool;
    saveModulator(tool);
    auto const done = tool.run("doc", {"mod.vrl", "-o", "mod.tex", "--config", tool.writeConfig("none.ini", {})});
    EXPECT_EQ(done.status, 0);
    EXPECT_EQ(done.err,
              "vrl: mod.vrl: no loaded plug-in has the block 'sfBend' (1 use); a stand-in represents it\n"
              "vrl: mod.vrl: no loaded plug-in has the block 'sfPhaseModulator' (2 uses); a stand-in represents "
              "it\n"
              "vrl: mod.vrl: no loaded plug-in has the block 'sfPushPullArms' (1 use); a stand-in represents "
              "it\n"
              "vrl: mod.vrl: no loaded plug-in has the block 'sfStraight' (1 use); a stand-in represents it\n"
              "  'vrl plugins' shows what is loaded\n");
    std::string const tex = tool.read("mod.tex");
    EXPECT_NE(tex.find("\nbend & sfBend (not loaded) & angle & 90 deg & "), std::string::npos);
    EXPECT_NE(tex.find("\\section{Inside arms, "), std::string::npos);
    EXPECT_NE(tex.find("5 elements whose kind no loaded plug-in has"), std::string::npos);
}

TEST(DocOfADesign, DocumentsABlockThatIsSavedAlone) {
    Tool const tool;
    for (char const* const name : {"block", "composite"})
        tool.write(std::string(name) + ".vrl", vrl_test::savedObjects().at(name));
    auto const block = tool.run("doc", {"block.vrl", "-o", "block.tex"});
    EXPECT_EQ(block.out, "block.vrl: 1 element, 0 nets, 1 finding\nwrote block.tex\n");
    EXPECT_NE(tool.read("block.tex").find("block of the kind "), std::string::npos);
    EXPECT_EQ(tool.run("doc", {"composite.vrl", "-o", "composite.tex"}).status, 0);
    EXPECT_NE(tool.read("composite.tex").find("\\section{Inside (itself), "), std::string::npos);
}

TEST(DocOfADesign, RefusesWhatIsNoCircuit) {
    Tool const tool;
    tool.write("list.vrl", vrl_test::savedObjects().at("list"));
    tool.write("notes.txt", "no design\n");
    auto const list = tool.run("doc", {"list.vrl", "-o", "a.tex"});
    EXPECT_EQ(list.err, tool.run("draw", {"list.vrl", "-o", "a.svg"}).err);
    EXPECT_EQ(list.status, 2);
    auto const text = tool.run("doc", {"notes.txt", "-o", "a.tex"});
    EXPECT_EQ(text.err, "vrl: notes.txt: is not a saved design\n"
                        "  saved designs begin with the bytes 3D 40 and the kind of their object\n");
    EXPECT_EQ(text.status, 2);
    EXPECT_FALSE(std::filesystem::exists(tool.path("a.tex")));
}

TEST(DocOfADesign, ReportsExceptionsThatCannotBeRead) {
    Tool const tool;
    saveModulator(tool);
    tool.write("mod.vrl.exceptions.yml", "exceptions:\n- {rule: open-prot, reason: typed wrongly}\n");
    auto const done = tool.run("doc", {"mod.vrl", "-o", "mod.tex"});
    EXPECT_EQ(done.err, tool.run("check", {"mod.vrl"}).err);
    EXPECT_EQ(done.err.substr(0, 30), "vrl: mod.vrl.exceptions.yml:2:");
    EXPECT_EQ(done.status, 2);
    EXPECT_FALSE(std::filesystem::exists(tool.path("mod.tex")));
}

TEST(DocOfADesign, IsToldFromAFoundryByPathOrOption) {
    Tool const tool;
    saveModulator(tool);
    std::filesystem::copy_file(tool.path("mod.vrl"), tool.path("SampleFab"));
    auto const unclear = tool.run("doc", {"SampleFab", "-o", "a.tex"});
    EXPECT_EQ(unclear.err, "vrl: SampleFab: is a foundry, and a file\n"
                           "  write './SampleFab' for the design, or '--foundry SampleFab' for the foundry\n");
    EXPECT_EQ(unclear.status, 2);
    EXPECT_EQ(tool.run("doc", {"./SampleFab", "-o", "a.tex"}).out,
              "./SampleFab: 2 elements, 1 net, 7 findings\nwrote a.tex\n");
    EXPECT_EQ(tool.run("doc", {"--foundry", "SampleFab", "-o", "a.tex"}).out,
              "SampleFab: 13 blocks, 2 process flows, 3 cross sections\nwrote a.tex\n");
}

TEST(DocOfADesign, HasNoBlocksToChoose) {
    Tool const tool;
    saveModulator(tool);
    auto const done = tool.run("doc", {"mod.vrl", "-o", "a.tex", "--block", "sfBend"});
    EXPECT_EQ(done.err, "vrl: mod.vrl: is a file, and --block chooses blocks of a foundry\n"
                        "  leave out --block for a design\n");
    EXPECT_EQ(done.status, 2);
}

TEST(DocOfADesign, DoesNotReplaceTheDesign) {
    Tool const tool;
    saveModulator(tool);
    std::filesystem::rename(tool.path("mod.vrl"), tool.path("mod.tex"));
    auto const done = tool.run("doc", {"mod.tex", "-o", "mod.tex"});
    EXPECT_EQ(done.status, 2);
    EXPECT_EQ(tool.read("mod.tex").substr(0, 2), "=@");
}

TEST(DocOfADesign, LimitsThePictureAndSaysSo) {
    Tool const tool;
    SampleCircuit circuit;
    for (int i = 0; i < 5; ++i) circuit.add("s" + std::to_string(i), "sfStraight");
    circuit.save(tool.path("a.vrl"));
    tool.run("doc", {"a.vrl", "-o", "a.tex", "--max", "2"});
    EXPECT_NE(tool.read("a.tex").find("{hidden: 3 of 5 elements, past the limit of 2};"), std::string::npos);
    EXPECT_EQ(countOf(tool.read("a.tex"), "\\path[vrl body]"), 2u);
}

TEST(DocOfADesign, LimitsTheFindingsOfARule) {
    Tool const tool;
    SampleCircuit circuit;
    for (int i = 0; i < 30; ++i) circuit.add("s" + std::to_string(i), "sfStraight");
    circuit.save(tool.path("a.vrl"));
    EXPECT_EQ(tool.run("doc", {"a.vrl", "-o", "a.tex"}).out.substr(0, 40), "a.vrl: 30 elements, 0 nets, 61 findings\n");
    std::string const tex = tool.read("a.tex");
    EXPECT_EQ(countOf(tex, " & open-port \\\\"), 40u);
}

TEST(DocOfADesign, KeepsCellsOnAPage) {
    Tool const tool;
    SampleCircuit circuit;
    circuit.add("s", "sfStraight");
    for (int i = 0; i < 50; ++i) circuit.add("s" + std::to_string(i), "sfStraight");
    for (int i = 0; i < 50; ++i) circuit.join("s,in0", "s" + std::to_string(i) + ",in0");
    circuit.netlist().addString("note", std::string(5000, 'x'), "", "");
    circuit.save(tool.path("a.vrl"));
    EXPECT_EQ(tool.run("doc", {"a.vrl", "-o", "a.tex"}).status, 0);
    std::string const tex = tool.read("a.tex");
    EXPECT_NE(tex.find("s43,in0 and 11 more \\\\\n"), std::string::npos);
    EXPECT_EQ(countOf(tex, "x\\vrlbreak{}"), 398u);
}

TEST(DocOfADesign, WritesAwkwardNamesSafely) {
    Tool const tool;
    std::string const awkward = "\\end{document}%$_^&#~\xFF\x01\xE4\xB8\xAD[]";
    SampleCircuit circuit;
    circuit.add(awkward, "sfPushPullArms").add("b\n", "sfStraight").join(awkward + ",out0", "b\n,in0");
    circuit.netlist().addString(awkward, awkward, awkward, awkward);
    circuit.save(tool.path(awkward.substr(13) + ".vrl"));
    auto const done = tool.run("doc", {awkward.substr(13) + ".vrl", "-o", "a.pdf"});
    vrl_test::expectPdf(tool, done, "a.pdf");
}

}  // namespace
