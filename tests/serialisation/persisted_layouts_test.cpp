#include <string>

#include <gtest/gtest.h>

#include "tests/serialisation/composites.h"
#include "tests/serialisation/recorders.h"

// What each persistent class saves, as its walk records it; and two whole streams, byte for byte.

namespace {

using namespace sample;
using namespace std::string_literals;

class Note : public Attribute {
public:
    using Attribute::Attribute;
    std::ostream& toCpp(std::ostream& os, std::string const&) const override { return os; }
};

class Formula : public AttributeWithExpr {
public:
    using AttributeWithExpr::AttributeWithExpr;
    std::ostream& toCpp(std::ostream& os, std::string const&) const override { return os; }
};

/// A block with two ports and nothing else.
class PlainMmi : public BB {
public:
    explicit PlainMmi(Foundry const* foundry = nullptr) : BB(foundry) { pin(1, 1); }
    ~PlainMmi() override = default;
    std::string getName() const override { return "mmi"; }
};

// Parts of the walks.

std::string const kNoNotes = "id Annotations::1\nbeginCompAttribute 'Map' 1 'annotations'\ncount 0\nendCompAttribute\n";
std::string const kNoParameters =
    "id Attributes::1\nbeginCompAttribute 'PtrMap' 1 'attributes'\ncount 0\nendCompAttribute\n";

std::string notes(std::string const& descr, std::string const& name, std::string const& units) {
    return "id Annotations::1\nbeginCompAttribute 'Map' 1 'annotations'\ncount 3\n"
           "beginAttribute\nstring 'vrl::attrDescr'\nendAttribute ''\n"
           "beginAttribute\nstring '" +
           descr +
           "'\nendAttribute ''\n"
           "beginAttribute\nstring 'vrl::attrName'\nendAttribute ''\n"
           "beginAttribute\nstring '" +
           name +
           "'\nendAttribute ''\n"
           "beginAttribute\nstring 'vrl::attrUnitName'\nendAttribute ''\n"
           "beginAttribute\nstring '" +
           units + "'\nendAttribute ''\nendCompAttribute\n";
}

std::string expression(std::string const& text, std::string const& calculated) {
    return "id AttributeWithExpr::1\nbeginAttribute\nstring '" + text +
           "'\nendAttribute 'expr'\nid AttributeWithExpr::2\nbeginAttribute\nbool " + calculated +
           "\nendAttribute 'calc'\n";
}

std::string choice(std::string const& member, std::string const& section, std::string const& flow) {
    return "beginCompAttribute 'Foundry::CSInfo' 1 '" + member +
           "'\ncount 2\n"
           "id CSInfo::1\nbeginAttribute\nstring '" +
           section +
           "'\nendAttribute 'default CS name'\n"
           "id CSInfo::2\nbeginAttribute\nstring '" +
           flow + "'\nendAttribute 'default Flow name'\nendCompAttribute\n";
}

std::string port(std::string const& name, std::string const& section) {
    return "beginAttribute\nstring '" + name + "'\nendAttribute ''\nbeginCompAttribute 'BB::Port' 1 '" + name +
           "'\ncount 1\nid Port::1\n" + choice("currCS", section, "") + "endCompAttribute\n";
}

TEST(PersistedLayout, OfAnnotations) {
    Annotations annotations;
    annotations.addAnnotation("key", "text");
    EXPECT_EQ(recorded(annotations), "beginCompAttribute 'Annotations' 1 ''\ncount 1\n"
                                     "id Annotations::1\nbeginCompAttribute 'Map' 1 'annotations'\ncount 1\n"
                                     "beginAttribute\nstring 'key'\nendAttribute ''\n"
                                     "beginAttribute\nstring 'text'\nendAttribute ''\n"
                                     "endCompAttribute\nendCompAttribute\n");
}

TEST(PersistedLayout, OfAnAttributeHasTheNameAmongItsNotes) {
    Note note("width", "a width", "um");
    EXPECT_EQ(recorded(note), "beginCompAttribute 'Attribute' 1 ''\ncount 1\n" + notes("a width", "width", "um") +
                                  "endCompAttribute\n");
}

TEST(PersistedLayout, OfAnAttributeWithAnExpression) {
    Formula formula("width", "2*pi", "a width", "um");
    formula.setCalculated(true);
    EXPECT_EQ(recorded(formula), "beginCompAttribute 'AttributeWithExpr' 1 'width[um]'\ncount 3\n" +
                                     notes("a width", "width", "um") + expression("2*pi", "1") + "endCompAttribute\n");
}

TEST(PersistedLayout, OfValuesOfEachType) {
    Value<bool> flag("n", true);
    Value<int> number("n", -5);
    Value<double> real("n", 2.5, "x", "d", "um");
    Value<std::complex<double>> complex("n", {1.5, -2});
    Value<std::string> text("n", "words");
    std::string const head =
        "' 1 'n[]'\ncount 4\n" + notes("", "n", "") + expression("", "0") + "id Value::1\nbeginAttribute\n";
    std::string const tail = "endAttribute 'val'\nendCompAttribute\n";
    EXPECT_EQ(recorded(flag), "beginCompAttribute 'Value_bool" + head + "bool 1\n" + tail);
    EXPECT_EQ(recorded(number), "beginCompAttribute 'Value_Int" + head + "int -5\n" + tail);
    EXPECT_EQ(recorded(complex), "beginCompAttribute 'Value_Complex" + head + "complex (1.5,-2)\n" + tail);
    EXPECT_EQ(recorded(text), "beginCompAttribute 'Value_String" + head + "string 'words'\n" + tail);
    EXPECT_EQ(recorded(real), "beginCompAttribute 'Value_Double' 1 'n[um]'\ncount 4\n" + notes("d", "n", "um") +
                                  expression("x", "0") + "id Value::1\nbeginAttribute\ndouble 2.5\n" + tail);
}

TEST(PersistedLayout, OfARangeIsThatOfItsValue) {
    ValueRange<double, Value<double>> range("n", 2.5, 0, 9, "d", "um");
    Value<double> value("n", 2.5, "d", "um");
    EXPECT_EQ(recorded(range), recorded(value));
}

TEST(PersistedLayout, OfAutoRangesHasTheFlagBetweenExpressionAndValue) {
    AutoValueRange<int, Value<int>> number("n", 5, 0, 9, "d", "um");
    AutoValueRange<double, Value<double>> real("n", 2.5, 0, 9, "d", "um");
    AutoValueRange<std::complex<double>, Value<std::complex<double>>> complex("n", 1.5, 0.0, 9.0, "d", "um");
    real.setAutoChangeable(true);
    std::string const head = "' 1 ''\ncount 5\n" + notes("d", "n", "um") + expression("", "0") +
                             "id AutoValueRange::1\nbeginAttribute\nbool ";
    std::string const middle = "endAttribute 'is auto-changeable'\nid Value::1\nbeginAttribute\n";
    std::string const tail = "endAttribute 'val'\nendCompAttribute\n";
    EXPECT_EQ(recorded(number),
              "beginCompAttribute 'AutoValueRange<vrl::Int>" + head + "0\n" + middle + "int 5\n" + tail);
    EXPECT_EQ(recorded(real),
              "beginCompAttribute 'AutoValueRange<vrl::Double>" + head + "1\n" + middle + "double 2.5\n" + tail);
    EXPECT_EQ(recorded(complex),
              "beginCompAttribute 'AutoValueRange<vrl::Complex>" + head + "0\n" + middle + "complex (1.5,0)\n" + tail);
}

TEST(PersistedLayout, OfAValueWithoutItsNotesHasEmptyStringsInItsDoc) {
    Value<double> value("width", 2.5, "", "um");
    value.delAnnotation("vrl::attrUnitName");
    EXPECT_EQ(recorded(value).substr(0, 41), "beginCompAttribute 'Value_Double' 1 'widt");
    EXPECT_EQ(recorded(value).substr(0, 46), "beginCompAttribute 'Value_Double' 1 'width[]'\n");
    value.clear();
    EXPECT_EQ(recorded(value).substr(0, 41), "beginCompAttribute 'Value_Double' 1 '[]'\n");
}

TEST(PersistedLayout, OfAttributesAndComponentsIsTheListOfParameters) {
    Value<int> number("n", 5);
    std::string const members = "count 2\n" + kNoNotes +
                                "id Attributes::1\nbeginCompAttribute 'PtrMap' 1 'attributes'\ncount 1\n"
                                "beginAttribute\nstring 'n'\nendAttribute ''\n" +
                                recorded(number) + "endCompAttribute\nendCompAttribute\n";
    Attributes list;
    list.addInteger("n", 5);
    EXPECT_EQ(recorded(list), "beginCompAttribute 'Attributes' 1 ''\n" + members);
    vrlEmptyComponent component;
    component.addInteger("n", 5);
    EXPECT_EQ(recorded(component), "beginCompAttribute 'Component' 1 ''\n" + members);
    Fab foundry;
    foundry.addInteger("n", 5);
    foundry.setCS("wg");
    EXPECT_EQ(recorded(foundry), "beginCompAttribute 'Component' 1 ''\n" + members);
}

TEST(PersistedLayout, OfAChoiceOfCrossSectionIsItsTwoNames) {
    Fab const foundry;
    Foundry::CSInfo cs(&foundry);
    cs.setCS("wg");
    cs.setFlow("strip");
    EXPECT_EQ(recorded(cs), choice("", "wg", "strip"));
}

TEST(PersistedLayout, OfAPortIsItsChoiceWithTheNameAsDoc) {
    BB::Port in("in0", nullptr, EnumList::Optics);
    in.getCS().setCS("wg");
    EXPECT_EQ(recorded(in), "beginCompAttribute 'BB::Port' 1 'in0'\ncount 1\nid Port::1\n" +
                                choice("currCS", "wg", "") + "endCompAttribute\n");
}

TEST(PersistedLayout, OfABlockIsSavedUnderItsKind) {
    Fab const foundry;
    PlainMmi block(&foundry);
    block.getCS().setCS("rib");
    block.getPort("out0")->getCS().setCS("wg");
    EXPECT_EQ(recorded(block), "beginCompAttribute 'mmi' 1 ''\ncount 5\n" + kNoNotes + kNoParameters + "id BB::1\n" +
                                   choice("defaultCS", "rib", "") +
                                   "id BB::2\nbeginAttribute\nstring 'Fab'\nendAttribute 'foundryName'\n"
                                   "id BB::3\nbeginCompAttribute 'Vector' 1 'ports'\ncount 2\n" +
                                   port("in0", "") + port("out0", "wg") + "endCompAttribute\nendCompAttribute\n");
}

std::string const kEmptyTables =
    "id Netlist::1\nbeginAttribute\nunsigned 1\nendAttribute 'numBB'\n"
    "id Netlist::2\nbeginAttribute\nunsigned 1\nendAttribute 'nodeCount'\n"
    "id Netlist::3\nbeginCompAttribute 'Map' 1 'nameToBB'\ncount 0\nendCompAttribute\n"
    "id Netlist::4\nbeginCompAttribute 'Map' 1 'portToNode'\ncount 0\nendCompAttribute\n"
    "id Netlist::5\nbeginCompAttribute 'Vector' 1 'inputNodes'\ncount 0\nendCompAttribute\n"
    "id Netlist::6\nbeginCompAttribute 'Vector' 1 'outputNodes'\ncount 0\nendCompAttribute\n"
    "id Netlist::7\nbeginCompAttribute 'PtrMap' 1 'BBList'\ncount 0\nendCompAttribute\n"
    "id Netlist::8\nbeginCompAttribute 'Vector' 1 'DCNodes'\ncount 0\nendCompAttribute\n";

TEST(PersistedLayout, OfANetlist) {
    resetUniqueIDs();
    Netlist circuit;
    EXPECT_EQ(recorded(circuit), "beginCompAttribute 'Netlist' 1 ''\ncount 10\n" + kNoNotes + kNoParameters +
                                     kEmptyTables + "endCompAttribute\n");
}

TEST(PersistedLayout, OfACompositeHasTheSharedListOnce) {
    resetUniqueIDs();
    Splitter composite;
    std::string const expected = "beginCompAttribute 'splitter' 1 ''\ncount 13\n" + kNoNotes + kNoParameters +
                                 "id BB::1\n" + choice("defaultCS", "", "") +
                                 "id BB::2\nbeginAttribute\nstring ''\nendAttribute 'foundryName'\n"
                                 "id BB::3\nbeginCompAttribute 'Vector' 1 'ports'\ncount 3\n" +
                                 port("in0", "") + port("out0", "") + port("out1", "") + "endCompAttribute\n" +
                                 kEmptyTables + "endCompAttribute\n";
    EXPECT_EQ(recorded(composite), expected);
    EXPECT_EQ(recorded(*composite.getAsBB()), expected);
    EXPECT_EQ(recorded(*composite.getAsNetlist()), expected);
}

TEST(PersistedLayout, OfAPlainCompositeHasTheKindOfItsBlockSide) {
    class Unnamed : public CBB {
    public:
        Unnamed() : BB(nullptr), CBB(nullptr) {}
        ~Unnamed() override = default;
    };
    Unnamed composite;
    EXPECT_EQ(recorded(composite).substr(0, 36), "beginCompAttribute 'X' 1 ''\ncount 13");
}

TEST(PersistedNames, OfEachClassPrefixTheIdsOfItsOwnMembers) {
    Annotations annotations;
    Note note;
    Formula formula;
    Value<int> value("n");
    ValueRange<int, Value<int>> range("n", 1, 0, 2);
    AutoValueRange<int, Value<int>> autoRange("n", 1, 0, 2);
    Attributes list;
    vrlEmptyComponent component;
    Foundry::CSInfo cs(nullptr);
    BB::Port in;
    PlainMmi block;
    Netlist circuit;
    Splitter composite;
    EXPECT_EQ(TestAccess::className(annotations), "Annotations");
    EXPECT_EQ(TestAccess::className<Attribute>(note), "Attribute");
    EXPECT_EQ(TestAccess::className<AttributeWithExpr>(formula), "AttributeWithExpr");
    EXPECT_EQ(TestAccess::className(value), "Value");
    EXPECT_EQ(TestAccess::className(range), "Value");
    EXPECT_EQ(TestAccess::className(autoRange), "AutoValueRange");
    EXPECT_EQ(TestAccess::className(list), "Attributes");
    EXPECT_EQ(TestAccess::className<Component>(component), "Component");
    EXPECT_EQ(TestAccess::className(cs), "CSInfo");
    EXPECT_EQ(TestAccess::className(in), "Port");
    EXPECT_EQ(TestAccess::className<BB>(block), "BB");
    EXPECT_EQ(TestAccess::className(circuit), "Netlist");
    EXPECT_EQ(TestAccess::className<CBB>(composite), "CBB");
}

TEST(PersistedNames, EachClassRegistersItsOwnMembersAndNoOthers) {
    Annotations annotations;
    Note note;
    Formula formula;
    Value<int> value("n");
    AutoValueRange<int, Value<int>> autoRange("n", 1, 0, 2);
    Attributes list;
    vrlEmptyComponent component;
    Foundry::CSInfo cs(nullptr);
    BB::Port in;
    PlainMmi block;
    Netlist circuit;
    Splitter composite;
    EXPECT_EQ(TestAccess::ownMembers(annotations), 1u);
    EXPECT_EQ(TestAccess::ownMembers<Attribute>(note), 0u);
    EXPECT_EQ(TestAccess::ownMembers<AttributeWithExpr>(formula), 2u);
    EXPECT_EQ(TestAccess::ownMembers(value), 1u);
    EXPECT_EQ(TestAccess::ownMembers(autoRange), 1u);
    EXPECT_EQ(TestAccess::ownMembers(list), 1u);
    EXPECT_EQ(TestAccess::ownMembers<Component>(component), 0u);
    EXPECT_EQ(TestAccess::ownMembers(cs), 2u);
    EXPECT_EQ(TestAccess::ownMembers(in), 1u);
    EXPECT_EQ(TestAccess::ownMembers<BB>(block), 3u);
    EXPECT_EQ(TestAccess::ownMembers(circuit), 8u);
    EXPECT_EQ(TestAccess::ownMembers<CBB>(composite), 0u);
}

// The streams below are typed by hand from the byte tables: M and a number are the marker of that depth.

#define M0 "\x3d\x40\x00\x00\x00\x00"
#define M1 "\x3d\x40\x01\x00\x00\x00"
#define M2 "\x3d\x40\x02\x00\x00\x00"
#define M3 "\x3d\x40\x03\x00\x00\x00"
#define M4 "\x3d\x40\x04\x00\x00\x00"
#define M5 "\x3d\x40\x05\x00\x00\x00"
#define M6 "\x3d\x40\x06\x00\x00\x00"

// clang-format off
std::string const kBoolStream =
    M0 "\x0a\x00\x00\x00" "Value_bool" "\x01\x00\x00\x00"
    "\x04\x00\x00\x00"
    "\x0e\x00\x00\x00" "Annotations::1"
    M1 "\x03\x00\x00\x00" "Map" "\x01\x00\x00\x00" "\x00\x00\x00\x00" M1
    "\x14\x00\x00\x00" "AttributeWithExpr::1"
    M1 "\x00\x00\x00\x00" M1
    "\x14\x00\x00\x00" "AttributeWithExpr::2"
    M1 "\x00" M1
    "\x08\x00\x00\x00" "Value::1"
    M1 "\x01" M1
    M0 ""s;

// One block of the kind "mmi" under the number 1 and the name "m1", between the input node 1 and the output node 2. The
// process-wide numbers are at 1 and 2.
std::string const kNetlistStream =
    M0 "\x07\x00\x00\x00" "Netlist" "\x01\x00\x00\x00"
    "\x0a\x00\x00\x00"
    "\x0e\x00\x00\x00" "Annotations::1"
    M1 "\x03\x00\x00\x00" "Map" "\x01\x00\x00\x00" "\x00\x00\x00\x00" M1
    "\x0d\x00\x00\x00" "Attributes::1"
    M1 "\x06\x00\x00\x00" "PtrMap" "\x01\x00\x00\x00" "\x00\x00\x00\x00" M1
    "\x0a\x00\x00\x00" "Netlist::1"
    M1 "\x01\x00\x00\x00" M1
    "\x0a\x00\x00\x00" "Netlist::2"
    M1 "\x02\x00\x00\x00" M1
    "\x0a\x00\x00\x00" "Netlist::3"
    M1 "\x03\x00\x00\x00" "Map" "\x01\x00\x00\x00" "\x01\x00\x00\x00"
        M2 "\x02\x00\x00\x00" "m1" M2
        M2 "\x01\x00\x00\x00" M2
    M1
    "\x0a\x00\x00\x00" "Netlist::4"
    M1 "\x03\x00\x00\x00" "Map" "\x01\x00\x00\x00" "\x02\x00\x00\x00"
        M2 "\x02\x00\x00\x00" "m1" M2
        M2 "\x03\x00\x00\x00" "in0" M2
        M2 "\x01\x00\x00\x00" M2
        M2 "\x02\x00\x00\x00" "m1" M2
        M2 "\x04\x00\x00\x00" "out0" M2
        M2 "\x02\x00\x00\x00" M2
    M1
    "\x0a\x00\x00\x00" "Netlist::5"
    M1 "\x06\x00\x00\x00" "Vector" "\x01\x00\x00\x00" "\x01\x00\x00\x00"
        M2 "\x01\x00\x00\x00" M2
    M1
    "\x0a\x00\x00\x00" "Netlist::6"
    M1 "\x06\x00\x00\x00" "Vector" "\x01\x00\x00\x00" "\x01\x00\x00\x00"
        M2 "\x02\x00\x00\x00" M2
    M1
    "\x0a\x00\x00\x00" "Netlist::7"
    M1 "\x06\x00\x00\x00" "PtrMap" "\x01\x00\x00\x00" "\x01\x00\x00\x00"
        M2 "\x01\x00\x00\x00" M2
        M2 "\x03\x00\x00\x00" "mmi" "\x01\x00\x00\x00"
            "\x05\x00\x00\x00"
            "\x0e\x00\x00\x00" "Annotations::1"
            M3 "\x03\x00\x00\x00" "Map" "\x01\x00\x00\x00" "\x00\x00\x00\x00" M3
            "\x0d\x00\x00\x00" "Attributes::1"
            M3 "\x06\x00\x00\x00" "PtrMap" "\x01\x00\x00\x00" "\x00\x00\x00\x00" M3
            "\x05\x00\x00\x00" "BB::1"
            M3 "\x0f\x00\x00\x00" "Foundry::CSInfo" "\x01\x00\x00\x00"
                "\x02\x00\x00\x00"
                "\x09\x00\x00\x00" "CSInfo::1"
                M4 "\x00\x00\x00\x00" M4
                "\x09\x00\x00\x00" "CSInfo::2"
                M4 "\x00\x00\x00\x00" M4
            M3
            "\x05\x00\x00\x00" "BB::2"
            M3 "\x00\x00\x00\x00" M3
            "\x05\x00\x00\x00" "BB::3"
            M3 "\x06\x00\x00\x00" "Vector" "\x01\x00\x00\x00" "\x02\x00\x00\x00"
                M4 "\x03\x00\x00\x00" "in0" M4
                M4 "\x08\x00\x00\x00" "BB::Port" "\x01\x00\x00\x00"
                    "\x01\x00\x00\x00"
                    "\x07\x00\x00\x00" "Port::1"
                    M5 "\x0f\x00\x00\x00" "Foundry::CSInfo" "\x01\x00\x00\x00"
                        "\x02\x00\x00\x00"
                        "\x09\x00\x00\x00" "CSInfo::1"
                        M6 "\x00\x00\x00\x00" M6
                        "\x09\x00\x00\x00" "CSInfo::2"
                        M6 "\x00\x00\x00\x00" M6
                    M5
                M4
                M4 "\x04\x00\x00\x00" "out0" M4
                M4 "\x08\x00\x00\x00" "BB::Port" "\x01\x00\x00\x00"
                    "\x01\x00\x00\x00"
                    "\x07\x00\x00\x00" "Port::1"
                    M5 "\x0f\x00\x00\x00" "Foundry::CSInfo" "\x01\x00\x00\x00"
                        "\x02\x00\x00\x00"
                        "\x09\x00\x00\x00" "CSInfo::1"
                        M6 "\x00\x00\x00\x00" M6
                        "\x09\x00\x00\x00" "CSInfo::2"
                        M6 "\x00\x00\x00\x00" M6
                    M5
                M4
            M3
        M2
    M1
    "\x0a\x00\x00\x00" "Netlist::8"
    M1 "\x06\x00\x00\x00" "Vector" "\x01\x00\x00\x00" "\x00\x00\x00\x00" M1
    M0 ""s;
// clang-format on

TEST(WholeStream, OfAnAnonymousBooleanIsWrittenByteForByte) {
    Value<bool> value("flag", true, "a flag", "");
    value.clear();
    EXPECT_EQ(saved(value), kBoolStream);
    EXPECT_EQ(kBoolStream.size(), 181u);
}

TEST(WholeStream, OfAnAnonymousBooleanIsRead) {
    Value<bool> value("flag", false, "x", "", "");
    value.setCalculated(true);
    EXPECT_TRUE(readBack(value, kBoolStream));
    EXPECT_TRUE(value.getValue());
    EXPECT_FALSE(value.isCalculated());
    EXPECT_EQ(value.getExpression(), "");
    EXPECT_EQ(value.size(), 0u);
}

TEST(WholeStream, OfANetlistIsWrittenByteForByte) {
    resetUniqueIDs();
    Netlist circuit;
    circuit.addBB(new PlainMmi, "m1", 1);
    circuit.setInputNode(circuit.addNode("m1", "in0"));
    circuit.setOutputNode(circuit.addNode("m1", "out0", 2));
    EXPECT_EQ(saved(circuit), kNetlistStream);
    resetUniqueIDs();
}

TEST(WholeStream, OfANetlistIsReadAndSetsTheNumbersOfTheProcess) {
    auto const kind = registered<PlainMmi>(FactoryLoader<BB>::factory(), "mmi");
    Netlist circuit;
    for (int i = 0; i < 5; ++i) circuit.createNode();
    EXPECT_TRUE(readBack(circuit, kNetlistStream));
    ASSERT_EQ(circuit.sizeElements(), 1u);
    ASSERT_NE(circuit.getBB("m1"), nullptr);
    EXPECT_EQ(circuit.getBB("m1"), circuit.getBB(1));
    EXPECT_EQ(circuit.getBB("m1")->getName(), "mmi");
    EXPECT_EQ(circuit.sizeNodes(), 2u);
    EXPECT_EQ(circuit.getNode("m1", "in0"), 1u);
    EXPECT_EQ(circuit.getNode("m1", "out0"), 2u);
    EXPECT_EQ(Netlist::Nodes(circuit.beginInputNodes(), circuit.endInputNodes()), Netlist::Nodes{1});
    EXPECT_EQ(Netlist::Nodes(circuit.beginOutputNodes(), circuit.endOutputNodes()), Netlist::Nodes{2});
    EXPECT_EQ(circuit.beginDCNodes(), circuit.endDCNodes());
    EXPECT_EQ(circuit.createNode(), 2u);
    EXPECT_EQ(circuit.addBB(new PlainMmi), "elm#1");
    resetUniqueIDs();
}

}  // namespace
