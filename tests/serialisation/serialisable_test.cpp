#include "vrllib/serialisation/serialisable.h"

#include <complex>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "tests/serialisation/composites.h"
#include "tests/serialisation/recorders.h"

namespace {

using namespace sample;

/// Streams nothing and fails.
class Broken : public SerialisableBase {
public:
    Broken() : SerialisableBase(this, "broken") {}
    bool write(SerialiserBase*) override { return false; }
    bool read(DeSerialiserBase*) override { return false; }
};

/// A class whose persistence is written by hand, and which notes what it is asked for.
class Gadget {
public:
    explicit Gadget(std::string* callLog = nullptr) : calls(callLog) {
        reg.registerSerialisable(generateIDStr("Gadget", 1), new Serialisable<int>(number, "number"));
    }
    virtual ~Gadget() = default;

    virtual std::string getSerTypeName() { return noted("getSerTypeName"), "Gadget"; }
    virtual int getSerVerNo() { return noted("getSerVerNo"), version; }
    virtual std::string getSerDoc() { return noted("getSerDoc"), "doc "; }
    virtual SerRegister* getSerRegister() { return noted("getSerRegister"), registers ? &reg : nullptr; }

    int number = 5;
    int version = 3;
    bool registers = true;
    SerRegister reg;

private:
    void noted(std::string const& call) {
        if (calls) *calls += call + "\n";
    }
    std::string* calls;
};

/// What a Gadget of that number writes.
std::string gadgetBytes(int number, int version = 3) {
    std::ostringstream stream;
    BinaryStreamSerialiser writer(stream);
    Gadget gadget;
    gadget.number = number;
    gadget.version = version;
    EXPECT_TRUE(Serialisable<Gadget>(gadget, "").write(&writer));
    return stream.str();
}

bool readGadget(Gadget& gadget, std::string const& bytes) {
    std::istringstream stream(bytes);
    BinaryStreamDeSerialiser reader(stream);
    return Serialisable<Gadget>(gadget, "").read(&reader);
}

TEST(SerialisableBase, WritesAndReadsNothingAndReturnsTrue) {
    int target = 7;
    SerialisableBase base(&target, "name");
    Recorder recorder;
    Script script;
    EXPECT_TRUE(base.write(&recorder));
    EXPECT_TRUE(base.read(&script));
    EXPECT_EQ(recorder.calls, "");
    EXPECT_EQ(script.calls, "");
    EXPECT_EQ(target, 7);
}

TEST(SerialisableBase, CopiesCarryNameAndTarget) {
    int target = 7;
    SerialisableBase const base(&target, "name");
    SerialisableBase const copy(base);
    SerialisableBase assigned(nullptr, "other");
    assigned = base;
    EXPECT_EQ(copy.getName(), "name");
    EXPECT_EQ(copy.getTarget(), &target);
    EXPECT_EQ(assigned.getName(), "name");
    EXPECT_EQ(assigned.getTarget(), &target);
}

TEST(PlainValue, IsOneAttributeThatCarriesItsName) {
    bool flag = true;
    unsigned int size = 4294967295u;
    int step = -7;
    double width = 2.5;
    std::complex<double> index(1.5, -2);
    std::string text = "x";
    Serialisable<bool> asBool(flag, "flag");
    Serialisable<unsigned int> asUnsigned(size, "size");
    Serialisable<int> asInt(step, "step");
    Serialisable<double> asDouble(width, "width");
    Serialisable<std::complex<double>> asComplex(index, "index");
    Serialisable<std::string> asString(text, "text");
    EXPECT_EQ(recorded(asBool), "beginAttribute\nbool 1\nendAttribute 'flag'\n");
    EXPECT_EQ(recorded(asUnsigned), "beginAttribute\nunsigned 4294967295\nendAttribute 'size'\n");
    EXPECT_EQ(recorded(asInt), "beginAttribute\nint -7\nendAttribute 'step'\n");
    EXPECT_EQ(recorded(asDouble), "beginAttribute\ndouble 2.5\nendAttribute 'width'\n");
    EXPECT_EQ(recorded(asComplex), "beginAttribute\ncomplex (1.5,-2)\nendAttribute 'index'\n");
    EXPECT_EQ(recorded(asString), "beginAttribute\nstring 'x'\nendAttribute 'text'\n");
}

TEST(PlainValue, IsReadBetweenBeginAndEnd) {
    Script script;
    script.numbers = {1, 8, 7, 2.5, 1.25};
    script.texts = {"x"};
    bool flag = false;
    unsigned int size = 0;
    int step = 0;
    double width = 0;
    std::complex<double> index;
    std::string text;
    EXPECT_TRUE(Serialisable<bool>(flag, "").read(&script));
    EXPECT_TRUE(Serialisable<unsigned int>(size, "").read(&script));
    EXPECT_TRUE(Serialisable<int>(step, "").read(&script));
    EXPECT_TRUE(Serialisable<double>(width, "").read(&script));
    EXPECT_TRUE(Serialisable<std::complex<double>>(index, "").read(&script));
    EXPECT_TRUE(Serialisable<std::string>(text, "").read(&script));
    EXPECT_EQ(script.calls, "beginAttribute\nbool\nendAttribute\nbeginAttribute\nunsigned\nendAttribute\n"
                            "beginAttribute\nint\nendAttribute\nbeginAttribute\ndouble\nendAttribute\n"
                            "beginAttribute\ncomplex\nendAttribute\nbeginAttribute\nstring\nendAttribute\n");
    EXPECT_TRUE(flag);
    EXPECT_EQ(size, 8u);
    EXPECT_EQ(step, 7);
    EXPECT_EQ(width, 2.5);
    EXPECT_EQ(index, std::complex<double>(1.25, 0));
    EXPECT_EQ(text, "x");
}

TEST(PlainValue, ThatCannotBeReadHasNoEnd) {
    Script script;
    int step = 3;
    EXPECT_FALSE(Serialisable<int>(step, "step").read(&script));
    EXPECT_EQ(script.calls, "beginAttribute\nint\n");
    EXPECT_EQ(step, 3);
}

TEST(PlainValue, IsAWrapperOfItsAddressAndName) {
    double width = 2.5;
    Serialisable<double> const wrapper(width, "width");
    EXPECT_EQ(wrapper.getTarget(), &width);
    EXPECT_EQ(wrapper.getName(), "width");
    width = 3.5;
    Serialisable<double> copy(wrapper);
    EXPECT_EQ(recorded(copy), "beginAttribute\ndouble 3.5\nendAttribute 'width'\n");
}

TEST(PairOfStrings, IsTwoAttributesWithoutNamesAndWithoutACompound) {
    std::pair<std::string, std::string> pair("m1", "in0");
    Serialisable<std::pair<std::string, std::string>> wrapper(pair, "pair");
    EXPECT_EQ(recorded(wrapper), "beginAttribute\nstring 'm1'\nendAttribute ''\n"
                                 "beginAttribute\nstring 'in0'\nendAttribute ''\n");
}

TEST(PairOfStrings, IsReadWhole) {
    std::pair<std::string, std::string> pair;
    Script script;
    script.texts = {"m1", "in0"};
    EXPECT_TRUE((Serialisable<std::pair<std::string, std::string>>(pair, "").read(&script)));
    EXPECT_EQ(pair, std::make_pair(std::string("m1"), std::string("in0")));
}

TEST(PairOfStrings, KeepsBothStringsIfOneCannotBeRead) {
    std::pair<std::string, std::string> pair("old", "pair");
    Script script;
    script.texts = {"m1"};
    EXPECT_FALSE((Serialisable<std::pair<std::string, std::string>>(pair, "").read(&script)));
    EXPECT_EQ(script.calls, "beginAttribute\nstring\nendAttribute\nbeginAttribute\nstring\n");
    EXPECT_EQ(pair, std::make_pair(std::string("old"), std::string("pair")));
    EXPECT_FALSE((Serialisable<std::pair<std::string, std::string>>(pair, "").read(&script)));
    EXPECT_EQ(pair, std::make_pair(std::string("old"), std::string("pair")));
}

TEST(ObjectWrapper, WritesDocAndNameThenTypeVersionAndMembers) {
    Recorder recorder;
    Gadget gadget(&recorder.calls);
    EXPECT_TRUE(Serialisable<Gadget>(gadget, "member").write(&recorder));
    EXPECT_EQ(recorder.calls, "getSerDoc\ngetSerTypeName\ngetSerVerNo\n"
                              "beginCompAttribute 'Gadget' 3 'doc member'\n"
                              "getSerRegister\ncount 1\n"
                              "id Gadget::1\nbeginAttribute\nint 5\nendAttribute 'number'\n"
                              "endCompAttribute\n");
}

TEST(ObjectWrapper, WithoutARegisterOpensTheCompoundAndSaysSo) {
    Caught const errors;
    Gadget gadget;
    gadget.registers = false;
    Recorder recorder;
    EXPECT_FALSE(Serialisable<Gadget>(gadget, "").write(&recorder));
    EXPECT_EQ(recorder.calls, "beginCompAttribute 'Gadget' 3 'doc '\n");
    EXPECT_EQ(errors.text(), "failed to register serialisables for class:Gadget\n");
}

TEST(ObjectWrapper, SaysWhichObjectCouldNotBeWritten) {
    Caught const errors;
    Gadget gadget;
    gadget.reg.registerSerialisable("Gadget::0", new Broken);
    Recorder recorder;
    EXPECT_FALSE(Serialisable<Gadget>(gadget, "").write(&recorder));
    EXPECT_EQ(recorder.calls, "beginCompAttribute 'Gadget' 3 'doc '\ncount 2\nid Gadget::0\n");
    EXPECT_EQ(errors.text(), "failed to serialise Gadgetobject\n");
}

TEST(ObjectWrapper, ReadsWithTheRegisterFirstAndAsksForNoDoc) {
    Script script;
    script.types = {"Gadget"};
    script.versions = {3};
    script.counts = {1};
    script.texts = {"Gadget::1"};
    script.numbers = {42};
    Gadget gadget(&script.calls);
    EXPECT_TRUE(Serialisable<Gadget>(gadget, "member").read(&script));
    EXPECT_EQ(script.calls, "getSerRegister\ngetSerTypeName\ngetSerVerNo\nbeginCompAttribute\ncount\nid\n"
                            "beginAttribute\nint\nendAttribute\nendCompAttribute\n");
    EXPECT_EQ(gadget.number, 42);
}

TEST(ObjectWrapper, WithoutARegisterReadsNothing) {
    Caught const errors;
    Gadget gadget;
    gadget.registers = false;
    Script script;
    EXPECT_FALSE(Serialisable<Gadget>(gadget, "").read(&script));
    EXPECT_EQ(script.calls, "");
    EXPECT_EQ(errors.text(), "failed to register serialisables for class:Gadget\n");
}

TEST(ObjectWrapper, RefusesAnotherTypeInSilence) {
    Caught const errors;
    Gadget gadget;
    Script script;
    script.types = {"gadget"};
    script.versions = {3};
    EXPECT_FALSE(Serialisable<Gadget>(gadget, "").read(&script));
    EXPECT_EQ(script.calls, "beginCompAttribute\n");
    EXPECT_EQ(errors.text(), "");
}

TEST(ObjectWrapper, RefusesAnotherVersionInSilence) {
    Caught const errors;
    Gadget gadget;
    EXPECT_FALSE(readGadget(gadget, gadgetBytes(42, 2)));
    EXPECT_FALSE(readGadget(gadget, gadgetBytes(42, 4)));
    EXPECT_EQ(gadget.number, 5);
    EXPECT_EQ(errors.text(), "");
    EXPECT_TRUE(readGadget(gadget, gadgetBytes(42, 3)));
    EXPECT_EQ(gadget.number, 42);
}

TEST(ObjectWrapper, RefusesVersionTwoOfAClassOfTheLibrary) {
    Caught const errors;
    Annotations notes;
    std::string bytes = saved(notes);
    bytes[6 + 4 + 11] = 2;
    EXPECT_FALSE(readBack(notes, bytes));
    EXPECT_EQ(errors.text(), "");
}

TEST(ObjectWrapper, SaysWhichObjectCouldNotBeRead) {
    Caught const errors;
    Gadget gadget;
    Script script;
    script.types = {"Gadget"};
    script.versions = {3};
    script.counts = {2};
    script.texts = {"Gadget::1"};
    script.numbers = {42};
    EXPECT_FALSE(Serialisable<Gadget>(gadget, "").read(&script));
    EXPECT_EQ(script.calls, "beginCompAttribute\ncount\nid\nbeginAttribute\nint\nendAttribute\nid\n");
    EXPECT_EQ(gadget.number, 42);
    EXPECT_EQ(errors.text(), "failed to de-serialise Gadgetobject\n");
}

TEST(ObjectWrapper, OfABaseStreamsTheWholeDerivedObject) {
    Value<double> value("width", 2.5, "", "um");
    Attribute& base = value;
    Serialisable<Attribute> wrapper(base, "");
    EXPECT_EQ(recorded(wrapper), recorded(value));
    EXPECT_EQ(recorded(base), recorded(value));
}

/// An attribute of the classes that have no value.
template <class Base>
class Bare : public Base {
public:
    using Base::Base;
    std::ostream& toCpp(std::ostream& os, std::string const&) const override { return os; }
};

/// The calls that the wrapper for objects of that class makes to a writer.
template <class T>
std::string toldByWrapper(T& object) {
    Serialisable<T> wrapper(object, "");
    return recorded(wrapper);
}

TEST(ObjectWrapper, IsThereForEveryPersistentClass) {
    Annotations annotations;
    Bare<Attribute> attribute;
    Bare<AttributeWithExpr> expression;
    Value<bool> flag("n");
    Value<int> number("n");
    Value<double> real("n");
    Value<std::complex<double>> complex("n");
    Value<std::string> text("n");
    Attributes list;
    vrlEmptyComponent component;
    Foundry::CSInfo cs(nullptr);
    BB::Port port;
    BB* const block = new Mmi;
    Netlist circuit;
    circuit.addBB(block, "m", 1);
    Splitter composite;
    EXPECT_EQ(toldByWrapper(annotations), recorded(annotations));
    EXPECT_EQ(toldByWrapper<Attribute>(attribute), recorded(attribute));
    EXPECT_EQ(toldByWrapper<AttributeWithExpr>(expression), recorded(expression));
    EXPECT_EQ(toldByWrapper(flag), recorded(flag));
    EXPECT_EQ(toldByWrapper(number), recorded(number));
    EXPECT_EQ(toldByWrapper(real), recorded(real));
    EXPECT_EQ(toldByWrapper(complex), recorded(complex));
    EXPECT_EQ(toldByWrapper(text), recorded(text));
    EXPECT_EQ(toldByWrapper(list), recorded(list));
    EXPECT_EQ(toldByWrapper<Component>(component), recorded(component));
    EXPECT_EQ(toldByWrapper(cs), recorded(cs));
    EXPECT_EQ(toldByWrapper(port), recorded(port));
    EXPECT_EQ(toldByWrapper(*block), recorded(*block));
    EXPECT_EQ(toldByWrapper(circuit), recorded(circuit));
    EXPECT_EQ(toldByWrapper<CBB>(composite), recorded(composite));
}

}  // namespace
