#include <gtest/gtest.h>

#include <limits>

#include "tests/tools/diff/pair.h"
#include "tests/tools/tool.h"

namespace {

using vrl_test::both;
using vrl_test::Pair;
using vrl_test::SampleCircuit;

Pair::Build with(std::function<void(vrl::Netlist&)> const& add) {
    return [=](SampleCircuit& circuit) { add(circuit.netlist()); };
}

Pair::Build number(double value) {
    return with([=](vrl::Netlist& n) { n.addDouble("x", value, "", "um"); });
}

TEST(DiffParameters, AreReportedOldToNewWithTheirUnit) {
    auto const bend = [](SampleCircuit& c) { c.add("bend", "sfBend"); };
    Pair const pair(bend, both(bend, [](SampleCircuit& c) { c.set("bend", "radius", 20); }));
    EXPECT_EQ(pair.diff(), "parameters\n"
                           "  ~ bend.radius: 10 um -> 20 um\n"
                           "1 difference\n"
                           "status 1\n");
}

TEST(DiffParameters, OfEveryTypeAreCompared) {
    auto const all = [](bool second) {
        return with([=](vrl::Netlist& n) {
            n.addBool("flag", second);
            n.addInteger("count", second ? 8 : 7);
            n.addDouble("length", second ? 0.1 : 0.30000000000000004, "", "um");
            n.addComplex("index", {2.4, second ? -0.5 : 0}, "", "1");
            n.addString("text", second ? "a\tb" : "");
        });
    };
    Pair const pair(all(false), all(true));
    EXPECT_EQ(pair.diff(), "parameters\n"
                           "  ~ count: 7 -> 8\n"
                           "  ~ flag: false -> true\n"
                           "  ~ index: 2.4 1 -> 2.4-0.5I 1\n"
                           "  ~ length: 0.30000000000000004 um -> 0.1 um\n"
                           "  ~ text: \"\" -> \"a\\x09b\"\n"
                           "5 differences\n"
                           "status 1\n");
}

TEST(DiffParameters, OfTheNetlistAreAddedAndRemoved) {
    Pair const pair(with([](vrl::Netlist& n) { n.addDouble("temperature", 293, "", "K"); }),
                    with([](vrl::Netlist& n) { n.addDouble("wavelength", 1.55, "", "um"); }));
    EXPECT_EQ(pair.diff(), "parameters\n"
                           "  - temperature: 293 K\n"
                           "  + wavelength: 1.55 um\n"
                           "2 differences\n"
                           "status 1\n");
}

TEST(DiffParameters, ChangeTheirTypeAndTheirUnit) {
    Pair const pair(with([](vrl::Netlist& n) {
                        n.addInteger("a", 1);
                        n.addDouble("b", 1, "", "um");
                    }),
                    with([](vrl::Netlist& n) {
                        n.addDouble("a", 1);
                        n.addDouble("b", 1, "", "nm");
                    }));
    EXPECT_EQ(pair.diff(), "parameters\n"
                           "  ~ a: 1 (Int) -> 1 (Double)\n"
                           "  ~ b: 1 um -> 1 nm\n"
                           "2 differences\n"
                           "status 1\n");
}

TEST(DiffParameters, ChangeTheirExpressionAndTheirFlags) {
    auto const mod = [](SampleCircuit& c) { c.add("mod", "sfPhaseModulator"); };
    Pair const pair(both(mod, [](SampleCircuit& c) { c.netlist().getBB("mod")->setExpression("width", "w"); }),
                    both(mod, [](SampleCircuit& c) {
                        vrl::BB& block = *c.netlist().getBB("mod");
                        block.setExpression("width", "2*w");
                        dynamic_cast<vrl::AttributeWithExpr*>(block.getAttribute("length"))->setCalculated(true);
                        block.getAttribute("bias")->setAutoChangeable(false);
                    }));
    EXPECT_EQ(pair.diff(), "parameters\n"
                           "  ~ mod.bias: -2 V (auto-changeable) -> -2 V\n"
                           "  ~ mod.length: 1500 um -> 1500 um (calculated)\n"
                           "  ~ mod.width: 0.5 um = w -> 0.5 um = 2*w\n"
                           "3 differences\n"
                           "status 1\n");
}

TEST(DiffParameters, AreIgnoredWhateverStandsAfterTheFiles) {
    vrl_test::Tool const tool;
    SampleCircuit circuit;
    circuit.add("a", "sfStraight").save(tool.path("a.vrl"));
    circuit.set("a", "length", 20).save(tool.path("b.vrl"));
    auto const compared = tool.run("diff", {"--ignore", "length", "a.vrl", "b.vrl", "--no-notes"});
    EXPECT_EQ(compared.err, "");
    EXPECT_EQ(compared.status, 0);
}

TEST(DiffParameters, AreIgnoredByNameOrByElementAndName) {
    auto const two = [](double length, double width) {
        return [=](SampleCircuit& c) {
            c.add("a", "sfStraight").add("b", "sfStraight");
            for (char const* const name : {"a", "b"}) c.set(name, "length", length).set(name, "width", width);
        };
    };
    Pair const pair(two(10, 0.5), two(20, 0.6));
    EXPECT_EQ(pair.diff({"--ignore", "length", "--ignore", "b.width"}), "parameters\n"
                                                                        "  ~ a.width: 0.5 um -> 0.6 um\n"
                                                                        "1 difference\n"
                                                                        "status 1\n");
    EXPECT_EQ(pair.diff({"--ignore", "width", "--ignore", "lenght"}),
              "parameters\n"
              "  ~ a.length: 10 um -> 20 um\n"
              "  ~ b.length: 10 um -> 20 um\n"
              "2 differences\n"
              "vrl: --ignore lenght: no such parameter was compared\n"
              "  did you mean 'length'?\n"
              "status 1\n");
}

TEST(DiffTolerance, IsNoneByDefault) {
    Pair const pair(number(1), number(std::nextafter(1, 2)));
    EXPECT_EQ(pair.diff(), "parameters\n"
                           "  ~ x: 1 um -> 1.0000000000000002 um\n"
                           "1 difference\n"
                           "status 1\n");
}

TEST(DiffTolerance, HoldsUpToItsEdge) {
    Pair const pair(number(1), number(1.25));
    std::string const same = "no differences\nstatus 0\n";
    std::string const differs = "parameters\n  ~ x: 1 um -> 1.25 um\n1 difference\nstatus 1\n";
    EXPECT_EQ(pair.diff({"--absolute", "0.25"}), same);
    EXPECT_EQ(pair.diff({"--absolute", "0.2499999"}), differs);
    EXPECT_EQ(pair.diff({"--tolerance", "0.2"}), same) << "a fifth of the greater one";
    EXPECT_EQ(pair.diff({"--tolerance", "0.1999999"}), differs);
    EXPECT_EQ(pair.diff({"--tolerance", "0.1", "--absolute", "0.3"}), same) << "one of the two is enough";
}

TEST(DiffTolerance, HoldsForWholeAndComplexNumbers) {
    auto const both = [](int count, double im) {
        return with([=](vrl::Netlist& n) {
            n.addInteger("count", count);
            n.addComplex("index", {3, im});
        });
    };
    Pair const pair(both(-2147483647, 4), both(2147483647, 4.5));
    EXPECT_EQ(pair.diff({"--absolute", "0.5"}), "parameters\n"
                                                "  ~ count: -2147483647 -> 2147483647\n"
                                                "1 difference\n"
                                                "status 1\n");
    EXPECT_EQ(pair.diff({"--tolerance", "2"}), "no differences\nstatus 0\n");
}

TEST(DiffTolerance, IsNothingToWhatIsNoNumber) {
    double const infinity = std::numeric_limits<double>::infinity();
    double const none = std::numeric_limits<double>::quiet_NaN();
    Pair const same(number(none), number(none));
    EXPECT_EQ(same.diff(), "no differences\nstatus 0\n");
    Pair const sameInfinity(number(infinity), number(infinity));
    EXPECT_EQ(sameInfinity.diff(), "no differences\nstatus 0\n");
    Pair const far(number(1), number(-infinity));
    EXPECT_EQ(far.diff({"--tolerance", "1000"}), "parameters\n  ~ x: 1 um -> -inf um\n1 difference\nstatus 1\n");
    Pair const lost(number(1), number(none));
    EXPECT_EQ(lost.diff({"--absolute", "1000"}), "parameters\n  ~ x: 1 um -> nan um\n1 difference\nstatus 1\n");
}

TEST(DiffTolerance, HasToBeANumberFromZero) {
    Pair const pair(number(1), number(1));
    for (char const* const wrong : {"-1", "nan", "inf", "much"}) {
        auto const ended = pair.tool.run("diff", {"--absolute", wrong, "a.vrl", "b.vrl"});
        EXPECT_EQ(ended.out, "");
        EXPECT_EQ(ended.err, "vrl: --absolute: '" + std::string(wrong) +
                                 "' is no tolerance: give a number from 0, such as 1e-6\n"
                                 "  'vrl diff --help' shows the usage\n");
        EXPECT_EQ(ended.status, 2);
    }
}

TEST(DiffNotes, AreAddedRemovedAndChanged) {
    auto const noted = [](std::string const& key, std::string const& author, std::string const& hint) {
        return [=](SampleCircuit& c) {
            c.add("bend", "sfBend");
            c.netlist().setAnnotation("author", author);
            c.netlist().getBB("bend")->setAnnotation(key, "on the rim");
            vrl::Attribute& radius = *c.netlist().getBB("bend")->getAttribute("radius");
            radius.setAnnotation("hint", hint);
            radius.setAnnotation("vrl::attrDescr", "bend " + hint);
        };
    };
    Pair const pair(noted("place", "A", "small"), noted("site", "B", "large"));
    EXPECT_EQ(pair.diff(), "notes\n"
                           "  ~ note 'author': \"A\" -> \"B\"\n"
                           "  ~ bend.radius note 'hint': \"small\" -> \"large\"\n"
                           "  ~ bend.radius description: \"bend small\" -> \"bend large\"\n"
                           "  - bend note 'place': \"on the rim\"\n"
                           "  + bend note 'site': \"on the rim\"\n"
                           "5 differences\n"
                           "status 1\n");
    EXPECT_EQ(pair.diff({"--no-notes"}), "no differences\n"
                                         "status 0\n");
}

}  // namespace
