#include <gtest/gtest.h>

#include <fstream>

#include "design/foundries.h"
#include "tests/tools/diff/pair.h"
#include "tests/tools/outcome_text.h"

namespace {

using vrl_test::addInterferometer;
using vrl_test::addModulator;
using vrl_test::both;
using vrl_test::Pair;
using vrl_test::SampleCircuit;
using vrl_test::Tool;
using vrl_test::whole;

template <class T>
void save(std::string const& path, T& object) {
    std::ofstream file(path, std::ios::binary);
    vrl::BinaryStreamSerialiser writer(file);
    ASSERT_TRUE(object.write(&writer));
}

TEST(DiffFiles, ReadAndSavedAgainAreTheSame) {
    Pair const pair(addModulator, addModulator);
    std::ifstream file(pair.tool.path("a.vrl"), std::ios::binary);
    vrl::Netlist* const netlist = vrl::Netlist::create("");
    vrl::BinaryStreamDeSerialiser reader(file);
    ASSERT_TRUE(netlist->read(&reader));
    vrltool::attachFoundries(*netlist);
    save(pair.tool.path("b.vrl"), *netlist);
    vrl::Netlist::destroy(netlist);
    EXPECT_EQ(pair.diff(), "no differences\n"
                           "status 0\n");
}

TEST(DiffFiles, MayHoldAnEmptyNetlist) {
    auto const nothing = [](SampleCircuit&) {};
    Pair const empty(nothing, nothing);
    EXPECT_EQ(empty.diff(), "no differences\n"
                            "status 0\n");
    Pair const filled(nothing, [](SampleCircuit& c) { c.add("in", "sfTaper").input("in,in0"); });
    EXPECT_EQ(filled.diff(), "elements\n"
                             "  + element in (sfTaper)\n"
                             "boundary\n"
                             "  + input 1: in,in0\n"
                             "2 differences\n"
                             "status 1\n");
}

TEST(DiffFiles, MayHoldASingleBlock) {
    Tool const tool;
    SampleCircuit c;
    c.add("old", "sfBend").add("new", "sfBend").set("new", "radius", 25);
    c.netlist().getBB("new")->vrl::BB::getCS().setCS("rib");
    c.netlist().getBB("new")->getPort("in0")->getCS().setFlow("active");
    save(tool.path("a.vrl"), *c.netlist().getBB("old"));
    save(tool.path("b.vrl"), *c.netlist().getBB("new"));
    EXPECT_EQ(whole(tool.run("diff", {"a.vrl", "b.vrl"})), "parameters\n"
                                                           "  ~ radius: 10 um -> 25 um\n"
                                                           "foundries and cross sections\n"
                                                           "  ~ cross section: strip -> rib\n"
                                                           "  ~ in0 process flow: (none) -> active\n"
                                                           "3 differences\n"
                                                           "status 1\n");
}

TEST(DiffFiles, MayHoldASingleComposite) {
    Tool const tool;
    SampleCircuit c;
    c.add("old", "sfPushPullArms").add("new", "sfPushPullArms").set("new", "length", 2000);
    auto* const arms = dynamic_cast<vrl::CBB*>(c.netlist().getBB("new"));
    arms->getAsNetlist()->getBB("trim")->setDouble("length", 25);
    save(tool.path("a.vrl"), *dynamic_cast<vrl::CBB*>(c.netlist().getBB("old")));
    save(tool.path("b.vrl"), *arms);
    EXPECT_EQ(whole(tool.run("diff", {"a.vrl", "b.vrl"})), "parameters\n"
                                                           "  ~ length: 1700 um -> 2000 um\n"
                                                           "  ~ trim.length: 20 um -> 25 um\n"
                                                           "2 differences\n"
                                                           "status 1\n");
}

TEST(DiffFiles, MayHoldAListAParameterNotesOrAChoice) {
    Tool const tool;
    vrl::Attributes list, otherList;
    list.addDouble("x", 1, "", "um");
    otherList.addDouble("x", 2, "", "um");
    save(tool.path("a.vrl"), list);
    save(tool.path("b.vrl"), otherList);
    EXPECT_EQ(whole(tool.run("diff", {"a.vrl", "b.vrl"})), "parameters\n"
                                                           "  ~ x: 1 um -> 2 um\n"
                                                           "1 difference\n"
                                                           "status 1\n");
    vrl::Value<int> count("count", 3, "", ""), more("count", 4, "how many", "");
    save(tool.path("a.vrl"), count);
    save(tool.path("b.vrl"), more);
    EXPECT_EQ(whole(tool.run("diff", {"a.vrl", "b.vrl"})), "parameters\n"
                                                           "  ~ count: 3 -> 4\n"
                                                           "notes\n"
                                                           "  ~ count description: \"\" -> \"how many\"\n"
                                                           "2 differences\n"
                                                           "status 1\n");
    vrl::Annotations notes, otherNotes;
    otherNotes.setAnnotation("by", "B");
    save(tool.path("a.vrl"), notes);
    save(tool.path("b.vrl"), otherNotes);
    EXPECT_EQ(whole(tool.run("diff", {"a.vrl", "b.vrl"})), "notes\n"
                                                           "  + note 'by': \"B\"\n"
                                                           "1 difference\n"
                                                           "status 1\n");
    vrl::Foundry::CSInfo choice(nullptr), otherChoice(nullptr);
    otherChoice.setCS("rib");
    otherChoice.setFlow("active");
    save(tool.path("a.vrl"), choice);
    save(tool.path("b.vrl"), otherChoice);
    EXPECT_EQ(whole(tool.run("diff", {"a.vrl", "b.vrl"})), "foundries and cross sections\n"
                                                           "  ~ cross section: (none) -> rib\n"
                                                           "  ~ process flow: (none) -> active\n"
                                                           "2 differences\n"
                                                           "status 1\n");
}

TEST(DiffFiles, OfDifferentTypesAreComparedAsFarAsTheyGo) {
    Pair const pair([](SampleCircuit& c) { c.add("bend", "sfBend").netlist().addDouble("radius", 10, "", "um"); },
                    [](SampleCircuit& c) { c.add("bend", "sfBend"); });
    SampleCircuit c;
    c.add("bend", "sfBend").set("bend", "radius", 30);
    save(pair.tool.path("b.vrl"), *c.netlist().getBB("bend"));
    EXPECT_EQ(pair.diff({"--no-notes"}), "design\n"
                                         "  ~ type: Netlist -> sfBend\n"
                                         "elements\n"
                                         "  - element bend (sfBend)\n"
                                         "parameters\n"
                                         "  + angle: 90 deg\n"
                                         "  ~ radius: 10 um -> 30 um\n"
                                         "  + width: 0.45 um\n"
                                         "5 differences\n"
                                         "status 1\n");
}

TEST(DiffFiles, AreComparedWithoutTheirPlugins) {
    Pair const pair(addModulator, both(addModulator, [](SampleCircuit& c) {
                        c.set("mod", "length", 1200).add("tap", "sfPhotodiode").join("split,out1", "tap,in0");
                        auto* const arms = dynamic_cast<vrl::CBB*>(c.netlist().getBB("arms"))->getAsNetlist();
                        arms->getBB("trim")->setDouble("length", 25);
                    }));
    std::string const config = pair.tool.writeConfig("bare.ini", {"vrlDemoDll", "otherFab"});
    auto const ended = pair.tool.run("diff", {"--config", config, "a.vrl", "b.vrl"});
    EXPECT_EQ(ended.out, "elements\n"
                         "  + element tap (sfPhotodiode)\n"
                         "parameters\n"
                         "  ~ arms/trim.length: 20 um -> 25 um\n"
                         "  ~ mod.length: 1500 um -> 1200 um\n"
                         "connections\n"
                         "  + (arms,in1 & split,out1) -- tap,in0\n"
                         "4 differences\n");
    std::string const path = VRL_SAMPLE_PLUGINS "/lib_wn_otherFab.so.5.1.3";
    EXPECT_EQ(
        ended.err,
        "vrl: a.vrl and b.vrl: no loaded plug-in has the block 'sfCombiner' (2 uses); a stand-in represents it\n"
        "vrl: a.vrl and b.vrl: no loaded plug-in has the block 'sfEdgeCoupler' (4 uses); a stand-in represents it\n"
        "vrl: a.vrl and b.vrl: no loaded plug-in has the block 'sfPhaseModulator' (6 uses); a stand-in represents it\n"
        "vrl: a.vrl and b.vrl: no loaded plug-in has the block 'sfPushPullArms' (2 uses); a stand-in represents it\n"
        "vrl: a.vrl and b.vrl: no loaded plug-in has the block 'sfSplitter' (2 uses); a stand-in represents it\n"
        "vrl: a.vrl and b.vrl: no loaded plug-in has the block 'sfStraight' (2 uses); a stand-in represents it\n"
        "vrl: b.vrl: no loaded plug-in has the block 'sfPhotodiode' (1 use); a stand-in represents it\n"
        "  not loaded: " +
            path + ": cannot open shared object file: No such file or directory\n");
    EXPECT_EQ(ended.status, 1);
}

/// A parameter of a type that no plug-in of the tool has.
class Outline : public vrl::AttributeWithExpr {
public:
    explicit Outline(std::string const& expression) : AttributeWithExpr("outline", expression, "", "") {}
    std::string getType() const override { return "Outline"; }
    std::ostream& toCpp(std::ostream& os, std::string const&) const override { return os; }

protected:
    std::string getSerTypeName() override { return "testOutline"; }
};

TEST(DiffFiles, NameTheParametersThatCouldNotBeCompared) {
    auto const outlined = [](std::string const& expression) {
        return [=](SampleCircuit& c) { c.netlist().addAttribute(new Outline(expression)); };
    };
    std::string const missing =
        "vrl: a.vrl and b.vrl: no loaded plug-in has the parameter type 'testOutline' (2 uses); a stand-in represents "
        "it\n"
        "  'vrl plugins' shows what is loaded\n";
    Pair const same(outlined("x"), outlined("x"));
    EXPECT_EQ(same.diff(), "not compared\n"
                           "  ? outline: no loaded plug-in has the type 'testOutline'\n"
                           "no differences\n" +
                               missing + "status 0\n");
    Pair const other(outlined("x"), outlined("y"));
    EXPECT_EQ(other.diff(), "parameters\n"
                            "  ~ outline: ? = x -> ? = y\n"
                            "not compared\n"
                            "  ? outline: no loaded plug-in has the type 'testOutline'\n"
                            "1 difference\n" +
                                missing + "status 1\n");
}

TEST(DiffFiles, ThatCannotBeReadAreNamed) {
    Pair const pair(addInterferometer, addInterferometer);
    EXPECT_EQ(whole(pair.tool.run("diff", {"a.vrl", "none.vrl"})), "vrl: none.vrl: cannot be opened\n"
                                                                   "  give the path of a saved design\n"
                                                                   "status 2\n");
    pair.tool.write("text.vrl", "a text");
    EXPECT_EQ(whole(pair.tool.run("diff", {"text.vrl", "a.vrl"})),
              "vrl: text.vrl: is not a saved design\n"
              "  saved designs begin with the bytes 3D 40 and the kind of their object\n"
              "status 2\n");
    EXPECT_EQ(whole(pair.tool.run("diff", {"a.vrl"})),
              "vrl: FILE is missing: the saved design that is compared with it\n"
              "  'vrl diff --help' shows the usage\n"
              "status 2\n");
}

}  // namespace
