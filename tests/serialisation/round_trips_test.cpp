#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/serialisation/composites.h"
#include "tests/serialisation/recorders.h"

// What is written and read again, by the same and by a newer program.

namespace {

using namespace sample;

struct RoundTrip : testing::Test {
    RoundTrip() { vrlCoutReset(); }
    KindsWithComposite const kinds;
    Caught const errors;
};

TEST_F(RoundTrip, OfAWholeNetlistRestoresEveryPart) {
    Netlist stored;
    fill(stored);
    Netlist circuit;
    ASSERT_TRUE(readBack(circuit, saved(stored)));
    EXPECT_EQ(circuit.getAnnotation("author", false), "somebody");
    EXPECT_TRUE(circuit.getBool("flag"));
    EXPECT_EQ(circuit.getInteger("count"), -3);
    EXPECT_EQ(circuit.getDouble("width"), 2.5);
    EXPECT_EQ(circuit.getUnits("width"), "um");
    EXPECT_EQ(circuit.getDescr("width"), "a width");
    EXPECT_EQ(circuit.getComplex("index"), std::complex<double>(1.5, -2));
    EXPECT_EQ(circuit.getString("title"), "circuit");
    EXPECT_EQ(circuit.sizeElements(), 3u);
    EXPECT_EQ(circuit.findElementName(1), "m1");
    EXPECT_EQ(circuit.findElementName(2), "dc");
    EXPECT_EQ(circuit.findElementName(3), "s1");
    BB* const mmi = circuit.getBB("m1");
    ASSERT_NE(mmi, nullptr);
    EXPECT_EQ(mmi->getName(), "mmi");
    EXPECT_EQ(mmi->getDouble("length"), 42);
    EXPECT_EQ(mmi->getFoundryName(), "FabOne");
    EXPECT_EQ(mmi->getFoundry(), nullptr);
    EXPECT_EQ(mmi->getPort("in0")->getCS().getCSName(), "wg");
    EXPECT_EQ(mmi->getPort("in0")->getCS().getFlowName(), "strip");
    EXPECT_EQ(mmi->getPort("in0")->getObject(), mmi);
    EXPECT_EQ(circuit.getNode("m1", "in0"), 1u);
    EXPECT_EQ(circuit.getNode("m1", "out0"), 2u);
    EXPECT_EQ(circuit.getNode("s1", "in0"), 2u);
    EXPECT_EQ(Netlist::Nodes(circuit.beginInputNodes(), circuit.endInputNodes()), Netlist::Nodes{1});
    EXPECT_EQ(Netlist::Nodes(circuit.beginOutputNodes(), circuit.endOutputNodes()), (Netlist::Nodes{3, 4}));
    EXPECT_EQ(Netlist::Nodes(circuit.beginDCNodes(), circuit.endDCNodes()), Netlist::Nodes{5});
    EXPECT_EQ(saved(circuit), saved(stored));
    EXPECT_EQ(errors.text(), "");
    EXPECT_EQ(vrlGetCoutMsg(), "");
}

TEST_F(RoundTrip, OfACompositeInsideANetlistRestoresItsInside) {
    Netlist stored;
    fill(stored);
    Netlist circuit;
    ASSERT_TRUE(readBack(circuit, saved(stored)));
    auto* const composite = dynamic_cast<Splitter*>(circuit.getBB("s1"));
    ASSERT_NE(composite, nullptr);
    Netlist* const inside = composite->getAsNetlist();
    EXPECT_EQ(inside->sizeElements(), 1u);
    ASSERT_NE(inside->getBB("inner"), nullptr);
    EXPECT_EQ(inside->getBB("inner")->getName(), "mmi");
    EXPECT_EQ(inside->getNode("inner", "in0"), 7u);
    EXPECT_NE(composite->getPort("out1"), nullptr);
}

TEST_F(RoundTrip, OfACompositeInsideTheNetlistOfACompositeRestoresBothInsides) {
    Splitter stored;
    auto* const middle = new Splitter;
    middle->addDouble("ratio", 0.25);
    middle->getAsNetlist()->addBB(new Mmi, "deepest", 1);
    middle->getAsNetlist()->getBB("deepest")->setDouble("length", 77);
    stored.getAsNetlist()->addBB(middle, "middle", 1);
    stored.getAsNetlist()->addNode("middle", "in0", 5);
    Splitter outer;
    ASSERT_TRUE(readBack(outer, saved(stored)));
    auto* const composite = dynamic_cast<Splitter*>(outer.getAsNetlist()->getBB("middle"));
    ASSERT_NE(composite, nullptr);
    EXPECT_EQ(composite->getDouble("ratio"), 0.25);
    EXPECT_EQ(outer.getAsNetlist()->getNode("middle", "in0"), 5u);
    ASSERT_NE(composite->getAsNetlist()->getBB("deepest"), nullptr);
    EXPECT_EQ(composite->getAsNetlist()->getBB("deepest")->getDouble("length"), 77);
    EXPECT_EQ(saved(outer), saved(stored));
    EXPECT_EQ(errors.text(), "");
}

TEST_F(RoundTrip, SavesAndRestoresTheNumbersOfTheProcess) {
    Netlist stored;
    fill(stored);
    std::string const bytes = saved(stored);
    resetUniqueIDs();
    Netlist circuit;
    ASSERT_TRUE(readBack(circuit, bytes));
    EXPECT_EQ(circuit.addBB(new Pad), "elm#4");
    EXPECT_EQ(circuit.createNode(), 6u);
}

TEST_F(RoundTrip, OfTwoNetlistsInARowLeavesTheNumbersOfTheSecond) {
    Netlist stored;
    std::string const early = saved(stored);
    fill(stored);
    std::string const late = saved(stored);
    Netlist circuit;
    ASSERT_TRUE(readBack(circuit, late));
    ASSERT_TRUE(readBack(circuit, early));
    EXPECT_EQ(circuit.createNode(), 1u);
    ASSERT_TRUE(readBack(circuit, early));
    ASSERT_TRUE(readBack(circuit, late));
    EXPECT_EQ(circuit.createNode(), 6u);
}

TEST_F(RoundTrip, SavesTheNumbersOfTheMomentAndNotThoseOfTheNetlist) {
    Netlist stored;
    fill(stored);
    for (int i = 0; i < 10; ++i) stored.createNode();
    std::string const bytes = saved(stored);
    resetUniqueIDs();
    Netlist circuit;
    ASSERT_TRUE(readBack(circuit, bytes));
    EXPECT_EQ(circuit.createNode(), 16u);
}

TEST_F(RoundTrip, ReadingANetlistReplacesItsTablesButKeepsItsParameters) {
    Netlist stored;
    fill(stored);
    Netlist circuit;
    circuit.addInteger("own", 1);
    circuit.setAnnotation("own", "note");
    circuit.addBB(new Pad, "old", 77);
    circuit.setInputNode(99);
    ASSERT_TRUE(readBack(circuit, saved(stored)));
    EXPECT_EQ(circuit.getInteger("own"), 1);
    EXPECT_EQ(circuit.getAnnotation("own", false), "");
    EXPECT_EQ(circuit.getBB("old"), nullptr);
    EXPECT_EQ(circuit.getBB(77), nullptr);
    EXPECT_EQ(Netlist::Nodes(circuit.beginInputNodes(), circuit.endInputNodes()), Netlist::Nodes{1});
}

TEST_F(RoundTrip, OfAnUnknownKindOfBlockFailsAtThatElement) {
    Netlist stored;
    stored.addBB(new Pad, "first");
    stored.addBB(new BB, "second");
    stored.addBB(new Pad, "third");
    Netlist circuit;
    EXPECT_FALSE(readBack(circuit, saved(stored)));
    EXPECT_EQ(circuit.sizeElements(), 1u);
    EXPECT_NE(circuit.getBB("first"), nullptr);
    EXPECT_EQ(errors.text(),
              "Serialisation error: failed to create object 'X'\nfailed to de-serialise Netlistobject\n");
}

TEST_F(RoundTrip, OfARangeKeepsTheLimitsOfTheTargetAndTestsNothing) {
    ValueRange<double, Value<double>> stored("n", 50, 0, 100);
    ValueRange<double, Value<double>> range("n", 1, 0, 2);
    ASSERT_TRUE(readBack(range, saved(stored)));
    EXPECT_EQ(range.getValue(), 50);
    EXPECT_EQ(range.getMinValue(), 0);
    EXPECT_EQ(range.getMaxValue(), 2);
    EXPECT_EQ(vrlGetCoutMsg(), "");
}

TEST_F(RoundTrip, OfAValueKeepsItsExpressionAndNoObserverSeesIt) {
    Attributes stored;
    stored.addDouble("n", 2.5);
    stored.setExpression("n", "5/2");
    Attributes list;
    list.addDouble("n", 1);
    VersionClient const observer(list.getVersionInfo());
    ASSERT_TRUE(readBack(list, saved(stored)));
    EXPECT_EQ(list.getDouble("n"), 2.5);
    EXPECT_EQ(static_cast<AttributeWithExpr*>(list.get("n"))->getExpression(), "5/2");
    EXPECT_FALSE(observer.check());
}

TEST_F(RoundTrip, OfAValueThroughItsBaseChecksTheTypeOfTheValue) {
    Value<double> stored("n", 2.5);
    Value<double> value("", 1);
    Attribute& base = value;
    EXPECT_EQ(saved<Attribute>(stored), saved(stored));
    EXPECT_TRUE(readBack(base, saved(stored)));
    EXPECT_EQ(value.getValue(), 2.5);
    std::ostringstream plain;
    BinaryStreamSerialiser writer(plain);
    writer.beginCompAttribute("Attribute", 1, "");
    writer.writeNumberAttributes(0);
    writer.endCompAttribute();
    EXPECT_FALSE(readBack(base, plain.str()));
}

TEST_F(RoundTrip, OfACompositeAloneReadsBothSides) {
    Splitter stored;
    stored.addString("title", "inside");
    stored.getCS().setCS("wg");
    stored.getAsNetlist()->addBB(new Pad, "p", 5);
    Splitter composite;
    ASSERT_TRUE(readBack(composite, saved(stored)));
    EXPECT_EQ(composite.getString("title"), "inside");
    EXPECT_EQ(composite.getCS().getCSName(), "wg");
    EXPECT_NE(composite.getAsNetlist()->getBB("p"), nullptr);
    Splitter viaBlock;
    ASSERT_TRUE(readBack(*viaBlock.getAsBB(), saved(stored)));
    EXPECT_EQ(saved(viaBlock), saved(stored));
}

TEST_F(RoundTrip, OfAPortThatTheBlockLacksAddsADefaultPort) {
    Pad stored;
    stored.addPort("extra", EnumList::RF);
    stored.getPort("extra")->getCS().setCS("metal");
    Pad pad;
    ASSERT_TRUE(readBack(pad, saved(stored)));
    ASSERT_EQ(pad.endPort() - pad.beginPort(), 2);
    EXPECT_EQ(pad.beginPort()[1].getName().getName(), "-none-");
    EXPECT_EQ(pad.beginPort()[1].getCS().getCSName(), "metal");
}

TEST_F(RoundTrip, LeavesTheReaderWhereTheNextObjectBegins) {
    Value<int> first("a", 1);
    Value<int> second("b", 2);
    std::istringstream stream(saved(first) + saved(second));
    BinaryStreamDeSerialiser reader(stream);
    Value<int> value("");
    EXPECT_TRUE(value.read(&reader));
    EXPECT_EQ(value.getName(), "a");
    EXPECT_TRUE(value.read(&reader));
    EXPECT_EQ(value.getName(), "b");
    EXPECT_EQ(value.getValue(), 2);
}

/// A binary writer of a program whose classes have two more members at one depth: a string before the known ones and
/// a nested compound after them.
class NewerWriter final : public ForwardingWriter {
public:
    NewerWriter(std::ostream& os, int d) : ForwardingWriter(os), wantedDepth(d) {}
    int added = 0;

    void beginCompAttribute(std::string type, int version, std::string doc) override {
        bool const container = type == "Map" || type == "Vector" || type == "PtrMap";
        newer.push_back(!container && static_cast<int>(newer.size()) == wantedDepth);
        inner.beginCompAttribute(type, version, doc);
    }
    void endCompAttribute() override {
        if (newer.back()) addCompound();
        newer.pop_back();
        inner.endCompAttribute();
    }
    void writeNumberAttributes(unsigned int count) override {
        inner.writeNumberAttributes(newer.back() ? count + 2 : count);
        if (newer.back()) addText();
    }

private:
    void addText() {
        ++added;
        std::string text = "a text with =@ in it";
        inner.writeSerialisationId("!Newer::1");
        Serialisable<std::string>(text, "").write(&inner);
    }
    void addCompound() {
        inner.writeSerialisationId("~Newer::2");
        Splitter composite;
        composite.getAsNetlist()->addBB(new Mmi, "m", 1);
        composite.write(&inner);
    }

    int wantedDepth;
    std::vector<bool> newer;
};

class UnknownMember : public testing::TestWithParam<int> {
protected:
    KindsWithComposite const kinds;
    Caught const errors;
};

TEST_P(UnknownMember, IsSteppedOver) {
    Netlist stored;
    fill(stored);
    std::ostringstream out;
    NewerWriter writer(out, GetParam());
    ASSERT_TRUE(stored.write(&writer));
    ASSERT_GT(writer.added, 0);
    Netlist circuit;
    EXPECT_TRUE(readBack(circuit, out.str()));
    EXPECT_EQ(saved(circuit), saved(stored));
    EXPECT_EQ(errors.text(), "");
}

INSTANTIATE_TEST_SUITE_P(AtDepth, UnknownMember, testing::Values(0, 2, 3, 4, 5, 6, 7),
                         testing::PrintToStringParamName());

TEST_F(RoundTrip, OfAnUnknownStringThatContainsAMarkerFails) {
    std::ostringstream out;
    BinaryStreamSerialiser writer(out);
    writer.beginCompAttribute("Annotations", 1, "");
    writer.writeNumberAttributes(2);
    writer.writeSerialisationId("A::1");
    writer.beginAttribute();
    writer.write(std::string("=@\x01\0\0\0tail", 10));
    writer.endAttribute("");
    writer.writeSerialisationId("Annotations::1");
    writer.beginCompAttribute("Map", 1, "");
    writer.writeNumberAttributes(0);
    writer.endCompAttribute();
    writer.endCompAttribute();
    Annotations notes;
    notes.addAnnotation("key", "text");
    EXPECT_FALSE(readBack(notes, out.str()));
    EXPECT_EQ(notes.getAnnotation("key", false), "text");
    EXPECT_EQ(errors.text(), "failed to de-serialise Annotationsobject\n");
}

TEST_F(RoundTrip, OfAnUnknownStringThatEndsInAnEqualsSignSwallowsWhatFollows) {
    std::ostringstream out;
    BinaryStreamSerialiser writer(out);
    writer.beginCompAttribute("Annotations", 1, "");
    writer.writeNumberAttributes(2);
    writer.writeSerialisationId("A::1");
    writer.beginAttribute();
    writer.write(std::string("a="));
    writer.endAttribute("");
    writer.writeSerialisationId("Annotations::1");
    writer.beginAttribute();
    writer.writeSerialisationId("B::1");
    writer.beginAttribute();
    writer.write(std::string("b"));
    writer.endAttribute("");
    writer.endCompAttribute();
    // The id and the begin of the second member belong to the scan, which ends there; its value is the next id.
    Annotations notes;
    notes.addAnnotation("key", "text");
    EXPECT_TRUE(readBack(notes, out.str()));
    EXPECT_EQ(notes.getAnnotation("key", false), "text");
    EXPECT_EQ(errors.text(), "");
}

}  // namespace
