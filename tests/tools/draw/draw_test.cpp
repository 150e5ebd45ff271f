#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

#include "tests/support/files.h"
#include "tests/tools/draw/pictures.h"
#include "tests/tools/tool.h"

// The command, as its users run it.

namespace {

using testing::StartsWith;
using vrl_test::SampleCircuit;
using vrl_test::Tool;

/// A tool in whose folder the interferometer is saved as "a.vrl".
class Draw : public testing::Test {
protected:
    Draw() {
        SampleCircuit circuit;
        addInterferometer(circuit);
        circuit.save(tool.path("a.vrl"));
    }

    /// What a command that cannot be done says.
    std::string refused(std::vector<std::string> const& arguments) const {
        auto const outcome = tool.run("draw", arguments);
        EXPECT_EQ(outcome.status, 2);
        EXPECT_EQ(outcome.out, "");
        return outcome.err;
    }

    Tool tool;
};

TEST_F(Draw, WritesEachFormatByTheEndingOfItsFile) {
    struct Case {
        char const* file;
        std::string start;
    };
    for (Case const& one : {Case{"a.svg", "<?xml version=\"1.0\""}, Case{"a.dot", "graph circuit {\n"},
                            Case{"a.pdf", "%PDF-"}, Case{"a.PNG", "\x89PNG\r\n\x1A\n"}}) {
        auto const outcome = tool.run("draw", {"a.vrl", "-o", one.file});
        EXPECT_EQ(outcome.out + outcome.err, "") << one.file;
        EXPECT_EQ(outcome.status, 0) << one.file;
        EXPECT_THAT(tool.read(one.file), StartsWith(one.start)) << one.file;
        EXPECT_GT(tool.read(one.file).size(), 800u) << one.file;
    }
}

TEST_F(Draw, WritesTheSameBytesTwice) {
    for (std::string const format : {"svg", "dot", "pdf", "png"}) {
        tool.run("draw", {"a.vrl", "-o", "first." + format});
        tool.run("draw", {"a.vrl", "-o", "second." + format});
        EXPECT_TRUE(tool.read("first." + format) == tool.read("second." + format)) << format;
    }
}

TEST_F(Draw, DoesNotWriteTheTime) {
    tool.run("draw", {"a.vrl", "-o", "a.pdf"});
    EXPECT_EQ(tool.read("a.pdf").find("CreationDate"), std::string::npos);
}

TEST_F(Draw, WritesToStandardOutput) {
    tool.run("draw", {"a.vrl", "-o", "a.svg"});
    tool.run("draw", {"a.vrl", "-o", "a.dot"});
    EXPECT_EQ(tool.run("draw", {"a.vrl", "-o", "-"}).out, tool.read("a.svg"));
    EXPECT_EQ(tool.run("draw", {"a.vrl", "--format", "svg"}).out, tool.read("a.svg"));
    EXPECT_EQ(tool.run("draw", {"a.vrl", "-o", "-", "--format", "dot"}).out, tool.read("a.dot"));
}

TEST_F(Draw, FormatOverridesTheFileNameExtension) {
    EXPECT_EQ(tool.run("draw", {"a.vrl", "-o", "picture", "--format", "dot"}).status, 0);
    EXPECT_EQ(tool.read("picture"), tool.run("draw", {"a.vrl", "--format", "dot"}).out);
}

TEST_F(Draw, RefusesAnotherEnding) {
    EXPECT_EQ(refused({"a.vrl", "-o", "a.jpg"}),
              "vrl: a.jpg: no format ends in '.jpg'\n"
              "  end it in svg, dot, pdf, png or html, or name one of them with --format\n");
    EXPECT_EQ(refused({"a.vrl", "-o", "a"}),
              "vrl: a: has no ending that names its format\n"
              "  end it in svg, dot, pdf, png or html, or name one of them with --format\n");
    EXPECT_EQ(refused({"a.vrl", "--format", "jpg"}), "vrl: --format jpg: no such format\n"
                                                     "  take svg, dot, pdf, png or html\n");
    EXPECT_EQ(refused({"a.vrl", "--format", "svgz"}), "vrl: --format svgz: no such format\n"
                                                      "  take svg, dot, pdf, png or html; did you mean 'svg'?\n");
}

TEST_F(Draw, RefusesToGuessWhereToWriteThePicture) {
    EXPECT_EQ(refused({"a.vrl"}), "vrl: a.vrl: the picture has neither a file nor a format\n"
                                  "  name a file with '-o FILE.svg', or a format for standard output with "
                                  "'--format svg'\n");
}

TEST_F(Draw, RefusesToReplaceTheDesign) {
    std::string const before = tool.read("a.vrl");
    EXPECT_EQ(refused({"a.vrl", "--format", "svg", "-o", "./a.vrl"}),
              "vrl: ./a.vrl: is read as 'a.vrl', and would be replaced\n"
              "  give the output a name of its own\n");
    EXPECT_TRUE(tool.read("a.vrl") == before);
}

TEST_F(Draw, TakesATitleAndLeavesOutTheLegend) {
    tool.run("draw", {"a.vrl", "-o", "a.svg", "--title", "Two & two", "--no-legend"});
    auto const texts = vrl_test::textsOf(tool.read("a.svg"));
    EXPECT_THAT(texts, testing::Contains("Two & two"));
    EXPECT_THAT(texts, testing::Not(testing::Contains("optics")));
}

TEST_F(Draw, SaysThatHopsNeedAnElement) {
    EXPECT_THAT(refused({"a.vrl", "-o", "a.svg", "--hops", "2"}), StartsWith("vrl: --hops requires --around\n"));
}

TEST_F(Draw, RefusesNumbersBelowZeroAndANameThatIsEmpty) {
    EXPECT_THAT(refused({"a.vrl", "-o", "a.svg", "--max", "-1"}),
                StartsWith("vrl: --max: Value -1 not in range 0 to 1000000\n"));
    EXPECT_THAT(refused({"a.vrl", "-o", "a.svg", "--around", "upper", "--hops", "-1"}),
                StartsWith("vrl: --hops: Value -1 not in range 0 to 1000000\n"));
    EXPECT_THAT(refused({"a.vrl", "-o", "a.svg", "--around", ""}), StartsWith("vrl: --around: names no element\n"));
}

TEST_F(Draw, ListsTheContentOfThePictureAsJson) {
    auto const outcome = tool.run("draw", {"--json", "a.vrl", "-o", "a.PNG", "--max", "4"});
    EXPECT_EQ(outcome.out, "{\n"
                           "  \"format\": \"vrl-draw\",\n"
                           "  \"version\": 1,\n"
                           "  \"file\": \"a.vrl\",\n"
                           "  \"output\": \"a.PNG\",\n"
                           "  \"pictureFormat\": \"png\",\n"
                           "  \"shown\": 4,\n"
                           "  \"hidden\": 2,\n"
                           "  \"notes\": [\n"
                           "    \"hidden: 2 of 6 elements, past the limit of 4\"\n"
                           "  ],\n"
                           "  \"width\": 632,\n"
                           "  \"height\": 256,\n"
                           "  \"sheets\": [\n"
                           "    {\n"
                           "      \"output\": \"a.PNG\",\n"
                           "      \"width\": 632,\n"
                           "      \"height\": 256\n"
                           "    }\n"
                           "  ],\n"
                           "  \"domains\": [\n"
                           "    \"Optics\"\n"
                           "  ]\n"
                           "}\n");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(tool.read("a.PNG"), StartsWith("\x89PNG"));
}

TEST_F(Draw, RefusesThePictureAndTheJsonOnOneOutput) {
    for (std::vector<std::string> const& where : {std::vector<std::string>{"-o", "-"}, {"--format", "dot"}})
        EXPECT_EQ(tool.run("draw", {"a.vrl", "--json", where[0], where[1]}).err,
                  "vrl: standard output: cannot take both the picture and the JSON that --json asks for\n"
                  "  name a file for the picture with '-o FILE.svg'\n");
}

TEST_F(Draw, TakesTheNameOfTheFileAsTitle) {
    tool.run("draw", {"a.vrl", "-o", "a.svg"});
    EXPECT_EQ(vrl_test::textsOf(tool.read("a.svg")).front(), "a");
}

/// Puts a program in the place of the one that converts pictures.
void replaceConverter(Tool& tool, std::string const& script) {
    std::filesystem::create_directory(tool.path("bin"));
    tool.write("bin/rsvg-convert", script);
    std::filesystem::permissions(tool.path("bin/rsvg-convert"), std::filesystem::perms::owner_all);
    tool.place().set("PATH", tool.path("bin") + ":/usr/bin:/bin");
}

TEST_F(Draw, CountsTheSecondsOfTheConversionAtATerminal) {
    replaceConverter(tool, "#!/bin/sh\ncat >drawn.svg\nsleep 2.5\necho drawn\n");
    auto const outcome = tool.runAtTerminal("draw", {"a.vrl", "-o", "-", "--format", "png"});
    EXPECT_EQ(outcome.out, "drawn\n");
    EXPECT_THAT(outcome.err, StartsWith("\r\x1b[Kdrawing: 1 s"));
    EXPECT_THAT(outcome.err, testing::EndsWith("\r\x1b[K"));
}

TEST_F(Draw, SaysThatABitmapIsCoarse) {
    SampleCircuit circuit;
    for (int i = 0; i < 40; ++i)
        circuit.add("b" + std::to_string(i), "sfBend").join("b0,out0", "b" + std::to_string(i) + ",in0");
    for (int i = 0; i < 3000; ++i) circuit.add("c" + std::to_string(i), "sfBend");
    circuit.save(tool.path("tall.vrl"));
    replaceConverter(tool, "#!/bin/sh\ncat >drawn.svg\necho $@\n");
    auto const coarse = tool.run("draw", {"tall.vrl", "-o", "-", "--format", "png", "--max", "0"});
    EXPECT_EQ(coarse.err, "vrl: the picture is too large for a bitmap of full size; svg and pdf have no such limit\n");
    EXPECT_THAT(coarse.out, StartsWith("--unlimited --format png -d 72 -p 72 --zoom 1."));
    EXPECT_EQ(tool.run("draw", {"a.vrl", "-o", "-", "--format", "png"}).out,
              "--unlimited --format png -d 72 -p 72 --zoom 2\n");
    EXPECT_EQ(tool.run("draw", {"tall.vrl", "-o", "a.svg", "--max", "0"}).err, "");
}

TEST_F(Draw, SaysWhichPackageIsMissing) {
    tool.place().set("PATH", "");
    EXPECT_EQ(refused({"a.vrl", "-o", "a.pdf"}),
              "vrl: rsvg-convert: the program that converts the picture is missing\n"
              "  install it (the package 'librsvg2-bin'), or write the picture with '-o FILE.svg'\n");
    EXPECT_FALSE(std::filesystem::exists(tool.path("a.pdf")));
    EXPECT_EQ(tool.run("draw", {"a.vrl", "-o", "a.svg"}).status, 0);
}

TEST_F(Draw, PrintsTheMessageOfTheConverterWhenItFails) {
    replaceConverter(tool, "#!/bin/sh\ncat >drawn.svg\necho 'out of ideas' >&2\nexit 3\n");
    EXPECT_EQ(refused({"a.vrl", "-o", "a.pdf"}),
              "vrl: rsvg-convert: ended with status 3: out of ideas\n"
              "  write the picture with '-o FILE.svg', and see what is wrong with that\n");
}

TEST_F(Draw, LeavesNothingWhereItCannotWrite) {
    EXPECT_EQ(refused({"a.vrl", "-o", "none/a.dot"}),
              "vrl: none/a.dot: cannot make a file in its folder: No such file or directory\n"
              "  make the folder first\n");
}

TEST_F(Draw, SuggestsTheNearestElement) {
    EXPECT_EQ(refused({"a.vrl", "-o", "a.svg", "--around", "uper"}),
              "vrl: 'uper': the circuit has no element of that name\n"
              "  did you mean 'upper'?\n");
}

TEST_F(Draw, SaysThatNoNeighbourhoodIsDrawnInsideAComposite) {
    SampleCircuit circuit;
    addModulator(circuit);
    circuit.save(tool.path("m.vrl"));
    EXPECT_EQ(refused({"m.vrl", "-o", "m.svg", "--around", "arms/upper"}),
              "vrl: 'arms/upper': is inside 'arms', and --around takes top-level elements\n"
              "  '--around \"arms\" --depth 1' draws that with its inside\n");
}

TEST_F(Draw, ListsWhatIsHidden) {
    auto const outcome = tool.run("draw", {"a.vrl", "-o", "a.svg", "--max", "4"});
    EXPECT_EQ(outcome.err, "vrl: a.vrl: hidden: 2 of 6 elements, past the limit of 4\n");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(vrl_test::textsOf(tool.read("a.svg")),
                testing::Contains("hidden: 2 of 6 elements, past the limit of 4"));
}

TEST_F(Draw, DrawsAnEmptyCircuit) {
    SampleCircuit().save(tool.path("empty.vrl"));
    auto const outcome = tool.run("draw", {"empty.vrl", "-o", "empty.svg"});
    EXPECT_EQ(outcome.err, "vrl: empty.vrl: the circuit has no elements\n");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(vrl_test::textsOf(tool.read("empty.svg")),
              (std::vector<std::string>{"empty", "the circuit has no elements"}));
}

TEST_F(Draw, RefusesAFileWithoutACircuit) {
    tool.write("text.vrl", "no design at all");
    EXPECT_EQ(refused({"text.vrl", "-o", "a.svg"}), "vrl: text.vrl: is not a saved design\n"
                                                    "  saved designs begin with the bytes 3D 40 and the kind of their "
                                                    "object\n");
    EXPECT_EQ(refused({"none.vrl", "-o", "a.svg"}), "vrl: none.vrl: cannot be opened\n"
                                                    "  give the path of a saved design\n");
    vrl_test::copyPart(tool.path("a.vrl"), tool.path("part.vrl"), 500);
    EXPECT_THAT(refused({"part.vrl", "-o", "a.svg"}), StartsWith("vrl: part.vrl: "));
    EXPECT_FALSE(std::filesystem::exists(tool.path("a.svg")));
}

TEST_F(Draw, RefusesABlockThatIsNoCircuit) {
    SampleCircuit circuit;
    circuit.add("bend", "sfBend");
    std::ofstream file(tool.path("bend.vrl"), std::ios::binary);
    vrl::BinaryStreamSerialiser writer(file);
    ASSERT_TRUE(circuit.netlist().getBB("bend")->write(&writer));
    file.close();
    EXPECT_EQ(refused({"bend.vrl", "-o", "a.svg"}), "vrl: bend.vrl: holds a 'sfBend' and no circuit\n"
                                                    "  'vrl show' shows what it holds\n");
}

TEST(Show, RefusesTheListingAsJson) {
    auto const outcome = Tool().run("show", {"a.vrl", "--json", "--listing"});
    EXPECT_EQ(outcome.err, "vrl: --json excludes --listing\n"
                           "  'vrl show --help' shows the usage\n");
    EXPECT_EQ(outcome.status, 2);
}

}  // namespace
