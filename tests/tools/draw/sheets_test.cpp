#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <regex>
#include <set>
#include <utility>

#include "draw/drawing.h"
#include "draw/svg.h"
#include "tests/tools/draw/generated.h"
#include "tests/tools/draw/measure.h"
#include "tests/tools/draw/pictures.h"
#include "tests/tools/tool.h"

// Pictures that are bounded on both sides, on as many sheets as that takes.

namespace {

using vrl_test::SampleCircuit;
using vrl_test::Tool;
using vrltool::Circuit;
using vrltool::draw::Drawing;
using vrltool::draw::Picture;

Drawing drawn(Circuit const& circuit, Picture picture) {
    picture.max = 0;
    return drawingOf(circuit, picture, selectionOf(circuit, picture));
}

/// On which sheets each number of a turn is, with repetitions, and what turns say of others: "1:2" by number and sheet.
struct Turns {
    std::map<std::string, std::multiset<std::size_t>> sheets;
    std::set<std::pair<std::string, std::size_t>> named;
};

Turns turnsOf(Drawing const& drawing) {
    Turns turns;
    for (std::size_t i = 0; i < drawing.sheets.size(); ++i)
        for (auto const& item : drawing.sheets[i].items) {
            if (item.classes != "turn") continue;
            std::string const text = item.shapes.back().text;
            auto const colon = text.find(':');
            turns.sheets[text.substr(0, colon)].insert(i + 1);
            if (colon != std::string::npos)
                turns.named.insert({text.substr(0, colon), std::stoul(text.substr(colon + 1))});
        }
    return turns;
}

struct Shape {
    char const* name;
    Circuit (*make)();
};

class Sheets : public testing::TestWithParam<Shape> {
protected:
    Sheets() : circuit(GetParam().make()) {}

    /// The faults of all sheets, which are not larger than these sides, and whether each element is on one of them.
    void check(Drawing const& drawing, int width, int height) const {
        std::vector<std::string> elements;
        for (auto const& sheet : drawing.sheets) {
            std::string const svg = svgText(sheet);
            auto const picture = vrl_test::measured(svg);
            EXPECT_THAT(picture.faults, testing::IsEmpty());
            EXPECT_LE(picture.width, width);
            EXPECT_LE(picture.height, height);
            for (std::string const& id : vrl_test::idsOf(svg, "element")) elements.push_back(id);
        }
        std::vector<std::string> all;
        for (std::size_t i = 0; i < circuit.elements.size(); ++i) all.push_back("e" + std::to_string(i + 1));
        std::sort(elements.begin(), elements.end());
        std::sort(all.begin(), all.end());
        EXPECT_EQ(elements, all);
        Turns const turns = turnsOf(drawing);
        for (auto const& [number, sheets] : turns.sheets) EXPECT_GE(sheets.size(), 2u) << number;
        for (auto const& [number, sheet] : turns.named) EXPECT_TRUE(turns.sheets.at(number).count(sheet) > 0) << number;
    }

    Circuit circuit;
};

TEST_P(Sheets, KeepTheirWidthAndHeight) {
    Picture picture;
    picture.width = 1100;
    picture.height = 700;
    check(drawn(circuit, picture), 1132, 732);
}

TEST_P(Sheets, FitOnPaperWithLegibleText) {
    Picture picture;
    picture.paper = vrltool::draw::paperOf("a4");
    auto const drawing = drawn(circuit, picture);
    bool const level = drawing.sheets[0].width > drawing.sheets[0].height;
    check(drawing, level ? 1516 : 1072, level ? 1072 : 1516);  // 297 mm by 210 mm, 9 points drawn at 5
    EXPECT_THAT(drawing.illegible, testing::IsEmpty());
}

TEST_P(Sheets, AreOneWithoutAHeight) {
    auto const drawing = drawn(circuit, {});
    EXPECT_EQ(drawing.sheets.size(), 1u);
    check(drawing, 1632, 1000000);
}

INSTANTIATE_TEST_SUITE_P(Shapes, Sheets,
                         testing::Values(Shape{"Chain", [] { return vrl_test::chainOf(400); }},
                                         Shape{"CoupledRings", [] { return vrl_test::coupledRings(6); }},
                                         Shape{"Tree", [] { return vrl_test::treeOf(10); }},
                                         Shape{"Mesh", [] { return vrl_test::meshOf(8, 12); }},
                                         Shape{"Pads", [] { return vrl_test::padsOf(131); }},
                                         Shape{"Star", [] { return vrl_test::starOf(2000); }},
                                         Shape{"Heaters", [] { return vrl_test::heatersOf(12); }},
                                         Shape{"Empty", [] { return vrl_test::padsOf(0); }},
                                         Shape{"Random", [] { return vrl_test::randomOf(60, 1); }},
                                         Shape{"Random2", [] { return vrl_test::randomOf(150, 7); }}),
                         [](auto const& shape) { return std::string(shape.param.name); });

TEST(SheetsOfAStar, StandBesideEachOtherInOnePicture) {
    auto const sheet = drawn(vrl_test::starOf(2000), {}).sheets[0];
    EXPECT_LE(sheet.height, 16000) << "128,000 in one column";
}

TEST(SheetsOfAStar, NameSomeOfItsPortsOnEachWire) {
    std::string const svg = svgText(drawn(vrl_test::starOf(2000), {}).sheets[0]);
    EXPECT_NE(svg.find(" - arm38,o1 - 1961 more</title>"), std::string::npos);
    EXPECT_EQ(svg.find(" - arm39,o1"), std::string::npos);
}

TEST(SheetsOfAFrame, HaveSmallerTextIfItIsLargerThanThePaper) {
    Circuit const circuit = vrl_test::nestedOf(8);
    Picture picture;
    picture.max = 0;
    picture.paper = vrltool::draw::paperOf("letter");
    auto const drawing = drawn(circuit, picture);
    ASSERT_THAT(drawing.illegible, testing::SizeIs(1));
    EXPECT_THAT(vrl_test::measured(svgText(drawing.sheets[drawing.illegible[0]])).faults, testing::IsEmpty());
}

/// A tool in whose folder a chain is saved that takes several sheets.
class DrawSheets : public testing::Test {
protected:
    DrawSheets() {
        SampleCircuit circuit;
        circuit.add("b0", "sfBend");
        for (int i = 1; i < 200; ++i)
            circuit.add("b" + std::to_string(i), "sfBend")
                .join("b" + std::to_string(i - 1) + ",out0", "b" + std::to_string(i) + ",in0");
        circuit.save(tool.path("a.vrl"));
    }

    Tool tool;
};

TEST_F(DrawSheets, NumbersTheirFiles) {
    auto const outcome = tool.run("draw", {"a.vrl", "--json", "-o", "p.svg", "--height", "700"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(outcome.out, testing::HasSubstr("  \"sheets\": [\n"
                                                "    {\n"
                                                "      \"output\": \"p-1.svg\",\n"
                                                "      \"width\": "));
    EXPECT_EQ(vrl_test::textsOf(tool.read("p-1.svg")).front(), "a, sheet 1 of 3");
    EXPECT_EQ(vrl_test::textsOf(tool.read("p-3.svg")).front(), "a, sheet 3 of 3");
    EXPECT_FALSE(std::filesystem::exists(tool.path("p.svg")));
    EXPECT_FALSE(std::filesystem::exists(tool.path("p-4.svg")));
}

TEST_F(DrawSheets, NameThoseThatAnEarlierPictureLeft) {
    tool.run("draw", {"a.vrl", "-o", "p.svg", "--height", "700"});
    EXPECT_EQ(tool.run("draw", {"a.vrl", "-o", "p.svg", "--height", "1500"}).err,
              "vrl: p-3.svg: is no sheet of this picture; an earlier one may have left it\n");
    EXPECT_EQ(tool.run("draw", {"a.vrl", "-o", "p.svg"}).status, 0);
    EXPECT_EQ(tool.run("draw", {"a.vrl", "-o", "p.svg", "--height", "700"}).err,
              "vrl: p.svg: is no sheet of this picture; an earlier one may have left it\n");
}

TEST_F(DrawSheets, AreNamedWhereAWireGoesOn) {
    tool.run("draw", {"a.vrl", "-o", "p.svg", "--height", "700"});
    auto const texts = vrl_test::textsOf(tool.read("p-2.svg"));
    EXPECT_THAT(texts, testing::Contains(testing::EndsWith(":1")));
    EXPECT_THAT(texts, testing::Contains(testing::EndsWith(":3")));
    EXPECT_THAT(texts, testing::Contains("wire that goes on at the same number, on the sheet after a colon"));
}

TEST_F(DrawSheets, ArePagesOfOnePdf) {
    EXPECT_EQ(tool.run("draw", {"a.vrl", "-o", "p.pdf", "--page", "a4"}).err, "");
    tool.run("draw", {"a.vrl", "-o", "q.pdf", "--page", "a4"});
    std::string const pdf = tool.read("p.pdf");
    EXPECT_TRUE(pdf == tool.read("q.pdf"));
    EXPECT_EQ(tool.run("draw", {"a.vrl", "-o", "p.svg", "--page", "a4"}).status, 0);
    EXPECT_NE(tool.read("p-2.svg").find("width=\"297mm\" height=\"210mm\""), std::string::npos);
    EXPECT_TRUE(std::regex_search(pdf, std::regex("/Count 3\\b")));
}

TEST_F(DrawSheets, HaveFramesThatAreNeverCut) {
    SampleCircuit circuit;
    addModulator(circuit);
    circuit.save(tool.path("m.vrl"));
    EXPECT_EQ(tool.run("draw", {"m.vrl", "-o", "m.svg", "--depth", "1", "--width", "400", "--height", "400"}).err,
              "vrl: m.vrl: sheet 2 is larger than asked for, since one of its blocks or frames is\n");
    std::string const sheet = tool.read("m-2.svg");
    EXPECT_EQ(vrl_test::idsOf(sheet, "frame"), (std::vector<std::string>{"e1"}));
    EXPECT_THAT(vrl_test::idsOf(sheet, "element"), testing::IsSupersetOf({"e1_e1", "e1_e2", "e1_e3"}));
}

TEST_F(DrawSheets, AreTooManyForStandardOutputUnlessTheyArePages) {
    auto const outcome = tool.run("draw", {"a.vrl", "--format", "svg", "--height", "700"});
    EXPECT_EQ(outcome.err, "vrl: standard output: takes one sheet, and the picture has 3\n"
                           "  name a file with '-o FILE.svg', or take '--format pdf'\n");
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(tool.run("draw", {"a.vrl", "--format", "pdf", "--height", "700"}).out, testing::StartsWith("%PDF-"));
    EXPECT_THAT(tool.run("draw", {"a.vrl", "--format", "dot", "--height", "700"}).out, testing::StartsWith("graph"));
}

TEST_F(DrawSheets, OfPaperHaveNoOtherSize) {
    EXPECT_EQ(tool.run("draw", {"a.vrl", "-o", "p.svg", "--page", "a4", "--height", "700"}).err,
              "vrl: --height excludes --page\n"
              "  'vrl draw --help' shows the usage\n");
    EXPECT_EQ(tool.run("draw", {"a.vrl", "-o", "p.svg", "--page", "a9"}).status, 2);
}

}  // namespace
