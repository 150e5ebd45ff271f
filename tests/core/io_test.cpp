#include "vrllib/core/io.h"

#include <iostream>
#include <sstream>
#include <string>
#include <type_traits>

#include <gtest/gtest.h>

#include "tests/support/capture.h"
#include "tests/support/files.h"
#include "tests/support/sample_design.h"

namespace {

using namespace Vorlane_v1_0;

/// One object of each class, of a concrete kind that can be made here.
struct OfAttribute {
    using Class = Attribute;
    Value<int> object{"count", 7};
};
struct OfAttributes {
    using Class = Attributes;
    OfAttributes() { object.addInteger("count", 7); }
    Attributes object;
};
struct OfBlock {
    using Class = BB;
    sample::Mmi object;
};
struct OfFoundry {
    using Class = Foundry;
    sample::Fab object;
};
struct OfNetlist {
    using Class = Netlist;
    Netlist object;
};

template <class Case>
class IOTest : public testing::Test {
protected:
    using ObjectClass = typename Case::Class;
    using ObjectIO = IO<ObjectClass, void, void>;

    /// Where a file would be.
    std::string path() const { return (folder / "object.vrl").string(); }

    Case sampleCase;
    ObjectClass& object = sampleCase.object;
    vrl_test::TemporaryFolder folder;
};

struct NamedByClass {
    template <class Case>
    static std::string GetName(int) {
        if (std::is_same_v<Case, OfAttribute>) return "Attribute";
        if (std::is_same_v<Case, OfAttributes>) return "Attributes";
        if (std::is_same_v<Case, OfBlock>) return "BB";
        if (std::is_same_v<Case, OfFoundry>) return "Foundry";
        return "Netlist";
    }
};

using Cases = testing::Types<OfAttribute, OfAttributes, OfBlock, OfFoundry, OfNetlist>;
TYPED_TEST_SUITE(IOTest, Cases, NamedByClass);

template <class Class>
std::string printedText(Class const& object) {
    std::ostringstream text;
    object.operator<<(text);
    return text.str();
}
std::string printedText(Foundry const& foundry) { return foundry.describe(); }

TYPED_TEST(IOTest, ReadFailsWithItsMessageInTheLog) {
    vrl_test::Captured const errors(std::cerr);
    std::ostringstream log;
    std::string const before = printedText(this->object);

    EXPECT_FALSE(TestFixture::ObjectIO::read(&this->object, this->path().c_str(), log));
    EXPECT_EQ(log.str(), "No Boost\n");
    EXPECT_EQ(errors.text(), "");
    EXPECT_EQ(printedText(this->object), before);
}

TYPED_TEST(IOTest, ReadOfAFileThatIsThereFailsAsWell) {
    std::ostringstream log;
    std::string const path = vrl_test::writeFile(this->path(), "anything");

    EXPECT_FALSE(TestFixture::ObjectIO::read(&this->object, path.c_str(), log));
    EXPECT_EQ(log.str(), "No Boost\n");
    EXPECT_EQ(vrl_test::readFile(path), "anything");
}

TYPED_TEST(IOTest, ReadStringFailsWithItsMessageInTheLog) {
    vrl_test::Captured const errors(std::cerr);
    std::ostringstream log;
    std::string const text = "anything";

    EXPECT_FALSE(TestFixture::ObjectIO::readString(&this->object, text, log));
    EXPECT_EQ(log.str(), "No Boost\n");
    EXPECT_EQ(errors.text(), "");
    EXPECT_EQ(text, "anything");
}

TYPED_TEST(IOTest, SaveFailsWithItsMessageOnStandardErrorAndMakesNoFile) {
    typename TestFixture::ObjectClass const& source = this->object;
    {
        vrl_test::Captured const errors(std::cerr);
        EXPECT_FALSE(TestFixture::ObjectIO::save(source, this->path().c_str()));
        EXPECT_EQ(errors.text(), "No Boost\n");
    }
    {
        vrl_test::Captured const errors(std::cerr);
        EXPECT_FALSE(TestFixture::ObjectIO::save(&source, this->path().c_str()));
        EXPECT_EQ(errors.text(), "No Boost\n");
    }
    EXPECT_FALSE(std::filesystem::exists(this->path()));
}

TYPED_TEST(IOTest, SaveStringFailsWithItsMessageOnStandardErrorAndLeavesTheString) {
    typename TestFixture::ObjectClass const& source = this->object;
    std::string text = "as it was";
    {
        vrl_test::Captured const errors(std::cerr);
        EXPECT_FALSE(TestFixture::ObjectIO::saveString(source, &text));
        EXPECT_EQ(errors.text(), "No Boost\n");
    }
    {
        vrl_test::Captured const errors(std::cerr);
        EXPECT_FALSE(TestFixture::ObjectIO::saveString(&source, &text));
        EXPECT_EQ(errors.text(), "No Boost\n");
    }
    EXPECT_EQ(text, "as it was");
}

TYPED_TEST(IOTest, NullArgumentsFailInTheSameWay) {
    typename TestFixture::ObjectClass* const none = nullptr;
    typename TestFixture::ObjectClass const* const nothing = nullptr;
    vrl_test::Captured const errors(std::cerr);
    std::ostringstream log;

    EXPECT_FALSE(TestFixture::ObjectIO::read(none, nullptr, log));
    EXPECT_FALSE(TestFixture::ObjectIO::readString(none, "", log));
    EXPECT_EQ(log.str(), "No Boost\nNo Boost\n");
    EXPECT_FALSE(TestFixture::ObjectIO::save(this->object, nullptr));
    EXPECT_FALSE(TestFixture::ObjectIO::save(nothing, nullptr));
    EXPECT_FALSE(TestFixture::ObjectIO::saveString(this->object, nullptr));
    EXPECT_FALSE(TestFixture::ObjectIO::saveString(nothing, nullptr));
    EXPECT_EQ(errors.text(), "No Boost\nNo Boost\nNo Boost\nNo Boost\n");
}

TYPED_TEST(IOTest, HasNoDataAndTheSignaturesThatPluginsLinkTo) {
    using Class = typename TestFixture::ObjectClass;
    using Io = typename TestFixture::ObjectIO;
    EXPECT_TRUE(std::is_empty_v<Io>);
    bool (*const read)(Class*, char const*, std::ostream&) = &Io::read;
    bool (*const readString)(Class*, std::string const&, std::ostream&) = &Io::readString;
    bool (*const saveObject)(Class const&, char const*) = &Io::save;
    bool (*const savePointer)(Class const*, char const*) = &Io::save;
    bool (*const saveStringOfObject)(Class const&, std::string*) = &Io::saveString;
    bool (*const saveStringOfPointer)(Class const*, std::string*) = &Io::saveString;

    vrl_test::Captured const errors(std::cerr);
    EXPECT_FALSE(read(&this->object, "", std::cerr) || readString(&this->object, "", std::cerr));
    EXPECT_FALSE(saveObject(this->object, "") || savePointer(&this->object, ""));
    EXPECT_FALSE(saveStringOfObject(this->object, nullptr) || saveStringOfPointer(&this->object, nullptr));
    EXPECT_EQ(errors.text(), "No Boost\nNo Boost\nNo Boost\nNo Boost\nNo Boost\nNo Boost\n");
}

}  // namespace
