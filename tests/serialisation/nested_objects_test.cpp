#include <memory>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "tests/serialisation/composites.h"
#include "tests/serialisation/recorders.h"

// Objects in each other: what is written with true is read back with true, and depth does no harm in either direction.

namespace underground {

using namespace sample;

/// An object that holds one object of its own class, made while reading.
class Burrow {
public:
    virtual ~Burrow() = default;
    VRL_PERSISTENT_ROOT(Burrow)

public:
    Burrow() = default;
    /// That many in each other.
    explicit Burrow(int levels) {
        if (levels > 1) inner = std::make_unique<Burrow>(levels - 1);
    }

    int depth() const { return inner ? inner->depth() + 1 : 1; }

private:
    class Wrapper : public SerialisableBase {
    public:
        Wrapper(std::unique_ptr<Burrow>& place, std::string const& memberName)
            : SerialisableBase(&place, memberName), inner(place) {}
        bool write(SerialiserBase* s) override {
            if (inner) return Serialisable<Burrow>(*inner, "").write(s);
            return Serialisable<int>(bottom, "").write(s);
        }
        bool read(DeSerialiserBase* d) override {
            std::string type;
            d->previewType(type);
            if (type != "Burrow") return Serialisable<int>(bottom, "").read(d);
            inner = std::make_unique<Burrow>();
            return Serialisable<Burrow>(*inner, "").read(d);
        }

    private:
        std::unique_ptr<Burrow>& inner;
        int bottom = 0;  // saved where nothing is inside, and previewed as an empty type
    };

    std::unique_ptr<Burrow> inner;
    SerRegister serRegister;
    SerrDoneFlag serDone;
};

VRL_DEFINE_PERSISTENCE_ROOT(Burrow)
SerFormat<Burrow> const& Burrow::serFormat() {
    static auto const format = SerFormat<Burrow>("Burrow", 1).member<Wrapper>(1, "inner", &Burrow::inner);
    return format;
}

/// The stream of that many objects in each other.
std::string burrowBytes(int depth) {
    std::ostringstream out;
    BinaryStreamSerialiser writer(out);
    for (int i = 0; i < depth; ++i) {
        writer.beginCompAttribute("Burrow", 1, "");
        writer.writeNumberAttributes(i + 1 < depth ? 1 : 0);
        if (i + 1 < depth) writer.writeSerialisationId("Burrow::1");
    }
    for (int i = 0; i < depth; ++i) writer.endCompAttribute();
    return out.str();
}

}  // namespace underground

namespace {

using namespace sample;
using namespace underground;

/// A circuit with that many composites in each other.
class Nest {
public:
    explicit Nest(int depth) {
        shared_ptr<BB> outer(new Splitter);
        for (int i = 1; i < depth; ++i) {
            auto* const around = new Splitter;
            around->getAsNetlist()->addBB(outer, "inner", 1);
            outer = shared_ptr<BB>(around->getAsBB());
        }
        circuit.addBB(outer, "outer", 1);
    }

    Netlist circuit;
};

/// The bytes that an object would have if depth had no bound.
template <class T>
std::string unboundedBytes(T&& object) {
    std::ostringstream out;
    ForwardingWriter writer(out);
    return object.write(&writer) ? out.str() : "write failed";
}

/// Whether an object is written inside that many compounds.
template <class T>
bool isWrittenInside(unsigned compounds, T& object) {
    std::ostringstream out;
    BinaryStreamSerialiser writer(out);
    for (unsigned i = 0; i < compounds; ++i) writer.beginCompAttribute("Outer", 1, "");
    return object.write(&writer);
}

bool isListed(Burrow& burrow) {
    std::ostringstream out;
    AsciiStreamSerialiser listing(out);
    return burrow.write(&listing);
}

std::string times(int count, std::string const& text) {
    std::string all;
    for (int i = 0; i < count; ++i) all += text;
    return all;
}

class NestedObjects : public testing::Test {
protected:
    NestedObjects() { vrlCoutReset(); }
    ~NestedObjects() override { vrlCoutReset(); }

    KindsWithComposite const kinds;
    Caught const errors;
};

TEST_F(NestedObjects, AreReadToADepthOfTwoHundredAndFiftySix) {
    Burrow burrow;
    EXPECT_TRUE(readBack(burrow, burrowBytes(256)));
    EXPECT_EQ(burrow.depth(), 256);
    EXPECT_EQ(errors.text(), "");
}

TEST_F(NestedObjects, AreNotReadOneDeeper) {
    Burrow burrow;
    EXPECT_FALSE(readBack(burrow, burrowBytes(257)));
    EXPECT_EQ(burrow.depth(), 257);
}

TEST_F(NestedObjects, AreNotReadAHundredThousandDeep) {
    Burrow burrow;
    EXPECT_FALSE(readBack(burrow, burrowBytes(100000)));
    EXPECT_EQ(burrow.depth(), 257);
}

TEST_F(NestedObjects, AreWrittenToTheDepthToWhichTheyAreRead) {
    Burrow burrow(256);
    Burrow other;
    EXPECT_TRUE(readBack(other, saved(burrow)));
    EXPECT_EQ(other.depth(), 256);
    EXPECT_EQ(errors.text(), "");
}

TEST_F(NestedObjects, AreNotWrittenOneDeeper) {
    Burrow burrow(257);
    EXPECT_EQ(saved(burrow), "write failed");
    EXPECT_EQ(errors.text(), times(256, "failed to serialise Burrowobject\n"));
}

TEST_F(NestedObjects, CountTheCompoundsThatTheCallerBegan) {
    Foundry::CSInfo choice(nullptr);
    EXPECT_TRUE(isWrittenInside(255, choice));
    EXPECT_FALSE(isWrittenInside(256, choice));
}

TEST_F(NestedObjects, CountTheirContainers) {
    Annotations notes;
    EXPECT_TRUE(isWrittenInside(254, notes));
    EXPECT_FALSE(isWrittenInside(255, notes));
    EXPECT_EQ(errors.text(), "failed to serialise Annotationsobject\n");
}

TEST_F(NestedObjects, OfAnUnknownMemberAreSkippedAtAnyDepth) {
    std::ostringstream out;
    BinaryStreamSerialiser writer(out);
    writer.beginCompAttribute("Annotations", 1, "");
    writer.writeNumberAttributes(1);
    writer.writeSerialisationId("Burrow::1");
    for (int i = 0; i < 10000; ++i) writer.beginCompAttribute("Burrow", 1, "");
    for (int i = 0; i < 10000; ++i) writer.endCompAttribute();
    writer.endCompAttribute();
    Annotations notes;
    EXPECT_TRUE(readBack(notes, out.str()));
}

TEST_F(NestedObjects, OfCompositesAreReadToTheBound) {
    // The last choice of cross section of the innermost is three compounds further in than the composite itself.
    std::string const good = unboundedBytes(Nest(126).circuit);
    std::string const deep = unboundedBytes(Nest(127).circuit);
    std::string const deeper = unboundedBytes(Nest(300).circuit);
    BlockCounts const counts;
    {
        Netlist circuit;
        EXPECT_TRUE(readBack(circuit, good));
        EXPECT_EQ(BlockCounts::alive(), 126);
        EXPECT_EQ(errors.text(), "");
        EXPECT_FALSE(readBack(circuit, deep));
        EXPECT_FALSE(readBack(circuit, deeper));
    }
    EXPECT_EQ(BlockCounts::alive(), 0);
}

TEST_F(NestedObjects, OfCompositesAreWrittenExactlyWhereTheyAreRead) {
    for (int depth = 120; depth < 132; ++depth) {
        Nest nest(depth);
        Netlist circuit;
        EXPECT_EQ(saved(nest.circuit) != "write failed", readBack(circuit, unboundedBytes(nest.circuit))) << depth;
    }
}

TEST_F(NestedObjects, AreListedToADepthOfAThousand) {
    Burrow good(1000);
    Burrow deep(1001);
    EXPECT_TRUE(isListed(good));
    EXPECT_EQ(errors.text(), "");
    EXPECT_FALSE(isListed(deep));
    EXPECT_EQ(errors.text(), times(1000, "failed to serialise Burrowobject\n"));
    EXPECT_TRUE(isListed(good));
}

TEST_F(NestedObjects, OfACompositeInItselfAreNotWritten) {
    shared_ptr<BB> const block(new Splitter);
    auto& composite = dynamic_cast<CBB&>(*block);
    composite.getAsNetlist()->addBB(block, "itself", 1);
    std::ostringstream out;
    BinaryStreamSerialiser writer(out);
    EXPECT_FALSE(block->write(&writer));
    AsciiStreamSerialiser listing(out);
    EXPECT_FALSE(block->write(&listing));
    *composite.getAsNetlist() = Netlist();
}

}  // namespace
