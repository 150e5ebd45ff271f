#include <memory>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/serialisation/recorders.h"

// Plain parameters and ports without a choice are written and read in one step where the stream is a binary one. Bytes,
// results, messages and what is left in the stream and in the objects are those of the walk member by member, which a
// reader and a writer that the library does not know get.

namespace {

using namespace sample;

/// Saved as a type of its own, though it has no members of its own.
class Renamed : public Value<double> {
public:
    using Value<double>::Value;
    std::string getFactoryName() const override { return "Value_Renamed"; }
};

class Doubled : public Value<int> {
public:
    using Value<int>::Value;
    Doubled& operator=(Doubled const&) = default;

protected:
    int do_setValue(int const& value) override { return Value<int>::do_setValue(2 * value); }
};

/// Parameters of every kind, and ports, of which two have the same name.
class Mixed : public BB {
public:
    explicit Mixed(Foundry const* foundry = nullptr) : BB(foundry) {
        addBool("bool", true, "a switch");
        addInteger("int", 3, "a number", "1");
        addDouble("double", 2.5, "a length", "um");
        addComplex("complex", {1, -1}, "an index");
        addString("string", "text", "a title");
        addString("empty", "");
        addAttribute(new ValueRange<int, Value<int>>("ranged int", 1, 0, 9, "a ranged number"));
        addAttribute(new ValueRange<double, Value<double>>("ranged double", 1, 0, 9, "a ranged length", "um"));
        addAttribute(new ValueRange<std::complex<double>, Value<std::complex<double>>>("ranged complex", 1, 0, 9));
        addAttribute(new AutoValueRange<int, Value<int>>("auto", 1, 0, 9, "a number for an optimiser"));
        addAttribute(new Renamed("renamed", 1.5, "a length", "um"));
        addAttribute(new Doubled("doubled", 7, "a number", "1"));
        for (char const* const name : {"in0", "out0", "twice", "twice", ""}) addPort(name, EnumList::Optics);
    }
    std::string getName() const override { return "mixed"; }
};

template <class T>
std::string savedInSteps(T& object) {
    std::ostringstream out;
    ForwardingWriter writer(out);
    EXPECT_TRUE(object.write(&writer));
    return out.str();
}

/// Changes a block in a way that a seed decides.
class Changes {
public:
    explicit Changes(unsigned int seed) : random(seed) {}

    void make(BB& block) {
        for (std::size_t left = below(8); left > 0; --left) {
            Attribute& parameter = anyOf(block);
            BB::Port& port = *(block.beginPort() + static_cast<std::ptrdiff_t>(below(5)));
            switch (below(14)) {
            case 0:
                parameter.setAnnotation("note", text());
                break;
            case 1:
                parameter.setAnnotation("vrl::attrDescr", text());
                break;
            case 2:
                if (parameter.size() > 0) parameter.beginAnnotation()->second = text();
                break;
            case 3:
                parameter.clear();
                break;
            case 4:
                dynamic_cast<AttributeWithExpr&>(parameter).setExpression(text());
                break;
            case 5:
                dynamic_cast<AttributeWithExpr&>(parameter).setCalculated(below(2) == 0);
                break;
            case 6:
                parameter.setStringValue(below(2) == 0 ? "1" : "2.5+I3");
                break;
            case 7:
                port.getCS().setCS(text());
                break;
            case 8:
                port.getCS();
                break;
            case 9:
                save(port);
                break;
            case 10:
                port = *(block.beginPort() + static_cast<std::ptrdiff_t>(below(5)));
                break;
            case 11:
                port.setCS(block.beginPort()->getCS());
                break;
            case 12:
                save(block);
                break;
            default:
                block.addAttribute(copyOf(block));
            }
        }
    }

private:
    std::size_t below(std::size_t limit) { return static_cast<std::size_t>(random() % limit); }
    std::string text() {
        static std::string const texts[] = {"", "a", std::string("a\0b", 3), "a longer text than a short string holds"};
        return texts[below(4)];
    }
    static Attribute& anyOf(BB& block, std::size_t at) {
        return const_cast<Attribute&>(static_cast<Attributes&>(block).get(at));
    }
    Attribute& anyOf(BB& block) { return anyOf(block, below(12)); }
    /// A copy of a parameter, which goes on saving the source if that was saved.
    Attribute* copyOf(BB& block) {
        auto* const copy = new Value<double>(dynamic_cast<Value<double>&>(anyOf(block, 2)));
        copy->setAnnotation("vrl::attrName", "copy " + std::to_string(++copies));
        copy->setStringValue("9");
        return copy;
    }
    template <class T>
    static void save(T& object) {
        std::ostringstream out;
        ForwardingWriter writer(out);
        object.write(&writer);
    }

    std::mt19937 random;
    int copies = 0;
};

std::unique_ptr<Mixed> changed(unsigned int seed) {
    auto block = std::make_unique<Mixed>();
    Changes(seed).make(*block);
    return block;
}

/// Bytes are kept for annotations that many objects share.
class OneStepWalks : public testing::Test {
protected:
    std::vector<Mixed> const others = std::vector<Mixed>(8);
};

TEST_F(OneStepWalks, WriteTheBytesOfTheStepsForEveryBlock) {
    for (unsigned int seed = 0; seed < 400; ++seed) {
        auto const first = changed(seed), second = changed(seed);
        std::string const expected = savedInSteps(*second);
        ASSERT_EQ(saved(*first), expected) << seed;
        ASSERT_EQ(saved(*first), expected) << seed;
        ASSERT_EQ(savedInSteps(*first), expected) << seed;
    }
}

/// The result, the messages and the bytes of an object in a stream that begins at that depth.
template <class Writer, class T = Mixed>
std::string savedAt(unsigned int depth) {
    Caught const errors;
    T object;
    std::ostringstream out;
    Writer writer(out, depth);
    bool const result = object.write(&writer);
    return std::to_string(result) + errors.text() + out.str();
}

TEST_F(OneStepWalks, WriteTheBytesOfTheStepsAtEveryDepth) {
    for (unsigned int const depth : {0U, 1U, 7U, 250U, 251U, 252U}) {
        std::string const expected = savedAt<ForwardingWriter>(depth);
        EXPECT_EQ(savedAt<BinaryStreamSerialiser>(depth), expected) << depth;
        EXPECT_EQ(savedAt<BinaryStreamSerialiser>(depth), expected) << depth;
    }
}

/// The result and the messages alone.
template <class T>
std::string failureAt(unsigned int depth) {
    std::string const all = savedAt<BinaryStreamSerialiser, T>(depth);
    EXPECT_EQ((savedAt<BinaryStreamSerialiser, T>(depth)), all) << depth;
    return all.substr(0, all.find("=@"));
}

TEST_F(OneStepWalks, FailOnceWhereAnObjectLiesTooDeep) {
    EXPECT_EQ(failureAt<Mixed>(252), "1");
    EXPECT_EQ(failureAt<Mixed>(253),
              "0failed to serialise AutoValueRange<vrl::Int>object\nfailed to serialise mixedobject\n");
    EXPECT_EQ(failureAt<Mixed>(254), "0failed to serialise mixedobject\n");
    EXPECT_EQ(failureAt<Mixed>(255), "0failed to serialise mixedobject\n");
    EXPECT_EQ(failureAt<Mixed>(256), "0");
    EXPECT_EQ(failureAt<BB::Port>(254), "1");
    EXPECT_EQ(failureAt<BB::Port>(255), "0failed to serialise BB::Portobject\n");
    EXPECT_EQ(failureAt<BB::Port>(256), "0");
    EXPECT_EQ(failureAt<Pad>(252), "1");
    EXPECT_EQ(failureAt<Pad>(253), "0failed to serialise BB::Portobject\nfailed to serialise padobject\n");
}

/// A list whose one parameter is a copy of a value that was saved, and that value.
struct CopyOfSaved {
    CopyOfSaved() {
        saved(source);
        auto* const copy = new Value<double>(source);
        copy->setStringValue("9");
        list.add(copy);
    }
    Value<double> source{"double", 1, "a length", "um"};
    Attributes list;
};

TEST_F(OneStepWalks, SaveAndReadTheSourceOfACopyThatWasSaved) {
    CopyOfSaved one, other, third;
    EXPECT_EQ(saved(one.list), savedInSteps(other.list));
    third.source.setStringValue("5");
    EXPECT_NE(saved(third.list), saved(one.list));
    EXPECT_TRUE(readBack(one.list, saved(third.list)));
    EXPECT_EQ(one.source.getValue(), 5);
    EXPECT_EQ(one.list.getDouble("double"), 9);
}

TEST_F(OneStepWalks, LeaveWhatWasEnteredByHandToTheSteps) {
    Mixed block;
    int extra = 7;
    auto& value = dynamic_cast<Value<double>&>(*block.getAttribute("double"));
    TestAccess::registerOf(value)->registerSerialisable("Zusatz::1", new Serialisable<int>(extra, "extra"));
    TestAccess::registerOf(*block.beginPort())
        ->registerSerialisable("Zusatz::1", new Serialisable<int>(extra, "extra"));
    std::string const bytes = saved(block);
    EXPECT_EQ(bytes, savedInSteps(block));
    EXPECT_NE(bytes, saved(const_cast<Mixed&>(others.front())));
    extra = 0;
    EXPECT_TRUE(readBack(block, bytes));
    EXPECT_EQ(extra, 7);
}

/// A port of a class with its own name in the stream.
class NamedPort : public BB::Port {
public:
    using Port::Port;

protected:
    std::string getSerTypeName() override { return "NamedPort"; }
};

TEST_F(OneStepWalks, LeavePortsOfDerivedClassesToTheSteps) {
    NamedPort named("in0", nullptr, EnumList::Optics);
    BB::Port& port = named;
    std::string const bytes = saved(port);
    EXPECT_EQ(bytes, savedInSteps(port));
    EXPECT_NE(bytes.find("NamedPort"), bytes.npos);
    EXPECT_TRUE(readBack(port, bytes));
}

/// What a read leaves: its result, messages, the stream, the block, and a block that its ports were copied into.
template <class Reader>
std::string outcome(std::string const& bytes, unsigned int seed) {
    auto const block = changed(seed);
    std::istringstream in(bytes);
    std::ostringstream all;
    {
        Caught const errors;
        Reader reader(in);
        all << block->read(&reader) << errors.text();
    }
    all << in.rdstate();
    in.clear();
    Mixed copies;
    for (std::ptrdiff_t i = 0; i < 5; ++i) *(copies.beginPort() + i) = *(block->beginPort() + i);
    for (auto port = copies.beginPort(); port != copies.endPort(); ++port) port->getCS().setFlow("of the copy");
    all << " at " << in.tellg() << savedInSteps(*block) << savedInSteps(copies);
    for (auto port = copies.beginPort(); port != copies.endPort(); ++port) {
        ForwardingWriter writer(all);
        port->getCS().write(&writer);
    }
    return all.str();
}

TEST_F(OneStepWalks, ReadWhatTheStepsReadFromEveryStream) {
    std::mt19937 random(5);
    for (unsigned int seed = 0; seed < 300; ++seed) {
        std::string bytes = savedInSteps(*changed(seed));
        if (seed % 3 == 1) bytes[random() % bytes.size()] ^= static_cast<char>(1U << random() % 8);
        if (seed % 3 == 2) bytes.resize(random() % bytes.size());
        for (unsigned int target : {seed, seed + 1, 100000U})
            ASSERT_EQ(outcome<BinaryStreamDeSerialiser>(bytes, target), outcome<ForwardingReader>(bytes, target))
                << seed << " into " << target;
    }
}

}  // namespace
