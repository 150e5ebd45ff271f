#include "vrllib/core/blob.h"

#include <string>
#include <type_traits>

#include <gtest/gtest.h>

#include "tests/support/child.h"
#include "tests/support/slots.h"

namespace {

using Vorlane_v1_0::Blob;

/// Bytes that note what they are asked for.
class Data : public Blob {
public:
    explicit Data(std::string b) : bytes(std::move(b)) {}
    unsigned char const* getData() const override {
        asked += "data ";
        return reinterpret_cast<unsigned char const*>(bytes.data());
    }
    std::size_t getSize() const override {
        asked += "size ";
        return bytes.size();
    }

    std::string const bytes;
    mutable std::string asked;
};

class Empty : public Blob {
public:
    unsigned char const* getData() const override { return nullptr; }
    std::size_t getSize() const override { return 0; }
};

class Refusing : public Blob {
public:
    unsigned char const* getData() const override { throw std::string("no data"); }
    std::size_t getSize() const override { return 1; }
};

/// What a scenario writes, if it ends well.
std::string outputOf(std::string const& scenario) {
    vrl_test::Sandbox const sandbox(LIBRARY_SCENARIOS_PROGRAM);
    auto const outcome = sandbox.run(scenario);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
    return outcome.out;
}

TEST(BlobRegistry, ListsNothingButItsHeadingWhileItIsEmpty) { EXPECT_EQ(outputOf("EmptyBlobList"), "Blob's:\n"); }

TEST(BlobRegistry, InitEntersNothing) { EXPECT_EQ(outputOf("InitOfBlobs"), "Blob's:\n"); }

TEST(BlobRegistry, ListsTheNamesInKeyOrderOnOneLine) { EXPECT_EQ(outputOf("BlobsInKeyOrder"), "Blob's:  B a c b\n"); }

TEST(BlobRegistry, KeepsTheFirstObjectUnderATakenNameAndDeletesNone) {
    EXPECT_EQ(outputOf("BlobWithATakenName"), "Blob's: x\n1\n");
}

TEST(BlobRegistry, ReturnsNullForAnythingButTheExactName) { EXPECT_EQ(outputOf("UnknownBlobs"), "111111\n"); }

TEST(BlobRegistry, OutlivesOtherStaticObjectsAndDeletesNoBlob) {
    EXPECT_EQ(outputOf("BlobsAtExit"), "Blob's: a name that is too long for a short string\n1\n");
}

TEST(BlobSave, WritesTheBytesAsTheyAreOverALongerFile) {
    vrl_test::TemporaryFolder const folder;
    std::string const path = vrl_test::writeFile(folder / "data.bin", "a text that is longer than the new one");
    Data const data(std::string("\0\r\n\xFF end", 8));

    EXPECT_TRUE(data.save(path));
    EXPECT_EQ(vrl_test::readFile(path), std::string("\0\r\n\xFF end", 8));
}

TEST(BlobSave, AsksForTheSizeAndThenForTheData) {
    vrl_test::TemporaryFolder const folder;
    Data const data("abc");

    EXPECT_TRUE(data.save((folder / "data.bin").string()));
    EXPECT_EQ(data.asked, "size data ");
}

TEST(BlobSave, ToAnUnwritablePathIsFalseAndAsksTheObjectNothing) {
    vrl_test::TemporaryFolder const folder;
    Data const data("abc");

    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    EXPECT_FALSE(data.save((folder / "none" / "data.bin").string()));
    EXPECT_FALSE(data.save(folder.path().string()));
    EXPECT_FALSE(data.save(""));
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(data.asked, "");
    EXPECT_EQ(data.bytes, "abc");
    EXPECT_FALSE(std::filesystem::exists(folder / "none"));
}

TEST(BlobSave, OfNoBytesMakesAnEmptyFile) {
    vrl_test::TemporaryFolder const folder;
    std::string const path = vrl_test::writeFile(folder / "data.bin", "old");

    EXPECT_TRUE(Empty().save(path));
    EXPECT_EQ(vrl_test::readFile(path), "");
    EXPECT_TRUE(std::filesystem::exists(path));
}

TEST(BlobSave, ToAFullDiskIsStillTrue) {
    ASSERT_TRUE(std::filesystem::exists("/dev/full"));

    EXPECT_TRUE(Data("abc").save("/dev/full"));
    EXPECT_TRUE(Data(std::string(100000, 'x')).save("/dev/full"));
}

TEST(BlobSave, PassesOnWhatTheObjectThrowsAndClosesTheFile) {
    vrl_test::TemporaryFolder const folder;
    auto const openFiles = [] {
        std::filesystem::directory_iterator const files("/proc/self/fd");
        return std::distance(begin(files), end(files));
    };
    auto const before = openFiles();

    EXPECT_THROW(Refusing().save((folder / "data.bin").string()), std::string);
    EXPECT_EQ(openFiles(), before);
}

TEST(Blob, IsAbstractAndCopiedFreely) {
    EXPECT_TRUE(std::is_abstract_v<Blob>);
    EXPECT_TRUE(std::has_virtual_destructor_v<Blob>);
    EXPECT_EQ(sizeof(Blob), sizeof(void*));
    Data const first("abc");
    Data const copy(first);
    EXPECT_EQ(copy.bytes, "abc");
    Empty empty;
    Empty const other;
    EXPECT_EQ(&(empty = other), &empty);
}

TEST(Blob, OrderOfItsVirtualOperationsIsDestructorDataSize) {
    EXPECT_EQ(vrl_test::slotOf(&Blob::getData), 2U);
    EXPECT_EQ(vrl_test::slotOf(&Blob::getSize), 3U);
}

}  // namespace
