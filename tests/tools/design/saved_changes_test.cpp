#include "design/saved_changes.h"

#include <gtest/gtest.h>

#include "design/save.h"
#include "design/saved_places.h"
#include "tests/support/files.h"
#include "tests/tools/design/saved_objects.h"
#include "tests/tools/sample_circuit.h"
#include "text/failure.h"

// A saved design is changed in its bytes: what nobody here understands stays as it is.

namespace {

using vrl_test::readFile;
using vrl_test::SampleCircuit;
using vrl_test::savedObjects;
using vrl_test::TemporaryFolder;
using vrl_test::writeFile;
using vrltool::readDesign;
using vrltool::SavedChanges;
using vrltool::savedMarker;
using vrltool::savedNumber;
using vrltool::SavedPlace;
using vrltool::savedString;

std::string bytesOf(double value) {
    std::ostringstream bytes;
    vrl::BinaryStreamSerialiser(bytes).write(value);
    return bytes.str();
}

std::string replaced(std::string text, std::string const& from, std::string const& to) {
    auto const at = text.find(from);
    return at == std::string::npos ? "nothing to replace" : text.replace(at, from.size(), to);
}

SavedChanges::Path pathTo(std::vector<std::string> const& elements, std::string const& parameter) {
    SavedChanges::Path path;
    for (std::string const& element : elements) path.insert(path.end(), {"Netlist::7", element});
    path.insert(path.end(), {"Attributes::1", parameter});
    return path;
}

/// What comes of setting a number, or the text of the Failure.
std::string afterSetting(std::string const& bytes, SavedChanges::Path const& path, vrl::Value<double>& parameter,
                         double value) {
    SavedChanges changes;
    changes.make(path, parameter, [&](vrl::Value<double>& changed) { changed.setValue(value); });
    try {
        return changes.madeIn(bytes, "a.vrl");
    } catch (vrltool::Failure const& failure) {
        return std::string(failure.what()) + "; " + failure.hint();
    }
}

class ResavedDesigns : public testing::TestWithParam<std::string> {};

TEST_P(ResavedDesigns, KeepEveryByte) {
    SampleCircuit const started;
    TemporaryFolder const folder;
    std::string const bytes = savedObjects().at(GetParam()) + "=@ and what comes after the object";
    auto const design = readDesign(writeFile(folder / "in.vrl", bytes));
    saveDesign(design, {}, folder / "out.vrl");
    EXPECT_EQ(readFile(folder / "out.vrl"), bytes);
}

std::vector<std::string> names() {
    std::vector<std::string> all;
    for (auto const& object : savedObjects()) all.push_back(object.first);
    return all;
}

INSTANTIATE_TEST_SUITE_P(Of, ResavedDesigns, testing::ValuesIn(names()),
                         [](auto const& tested) { return tested.param; });

TEST(SavedChanges, OfAMissingBlockReplaceOneValue) {
    std::string const bytes = savedObjects().at("foreign_block");
    vrl::Value<double> gain("gain", 1.5, "gain of the section", "dB");
    EXPECT_EQ(afterSetting(bytes, pathTo({}, "gain"), gain, 2.5), replaced(bytes, bytesOf(1.5), bytesOf(2.5)));
}

TEST(SavedChanges, InsideOfAMissingCompositeReplaceOneValue) {
    std::string const bytes = savedObjects().at("foreign_composite");
    vrl::BB* const bend = vrl::BB::create(nullptr, "sfBend");
    auto& radius = *dynamic_cast<vrl::Value<double>*>(bend->getAttribute("radius"));
    std::string const after = afterSetting(bytes, pathTo({"2"}, "radius"), radius, 25);
    EXPECT_EQ(after, replaced(bytes, bytesOf(10), bytesOf(25)));
    vrl::BB::destroy(bend);
}

TEST(SavedChanges, OfAnUnknownParameterTypeLeaveItsMembersAlone) {
    SampleCircuit const started;
    std::string const curve = savedObjects().at("foreign_parameter");
    std::string const bytes = savedObjects().at("netlist_with_foreign_blocks");
    EXPECT_NE(curve.find("ForeignCurve"), std::string::npos);
    vrl::Value<double> gain("gain", 1.5, "gain of the section", "dB");
    EXPECT_EQ(afterSetting(bytes, pathTo({"3"}, "gain"), gain, -2), replaced(bytes, bytesOf(1.5), bytesOf(-2)));
}

/// A list of one number, after which a member of a newer version follows.
std::string newerList(std::string const& content) {
    std::ostringstream bytes;
    vrl::Attributes list;
    list.addDouble("width", 0.5, "width", "um");
    vrl::BinaryStreamSerialiser writer(bytes);
    list.write(&writer);
    std::string text = replaced(bytes.str(), savedNumber(2) + savedString("Annotations::1"),
                                savedNumber(3) + savedString("Annotations::1"));
    return text.insert(text.size() - 6, savedString("Newer::1") + savedMarker(1) + content + savedMarker(1));
}

TEST(SavedChanges, KeepAMemberThatNobodyKnows) {
    std::string const nested = savedString("Newer") + savedNumber(1) + savedNumber(0);
    for (std::string const& content :
         {std::string("x"), nested, savedMarker(1) + "y", std::string("=@="), savedMarker(0)}) {
        std::string const bytes = newerList(content);
        vrl::Value<double> width("width", 0.5, "width", "um");
        EXPECT_EQ(afterSetting(bytes, pathTo({}, "width"), width, 0.75), replaced(bytes, bytesOf(0.5), bytesOf(0.75)))
            << content;
    }
}

TEST(SavedChanges, AddAParameterThatAnOlderFileLacks) {
    vrl::Attributes list;
    std::ostringstream bytes;
    vrl::BinaryStreamSerialiser writer(bytes);
    list.write(&writer);
    vrl::Value<double> width("width", 0.5, "width", "um"), height("height", 0.2, "height", "um");
    SavedChanges changes;
    changes.make(pathTo({}, "width"), width, [](auto& changed) { changed.setValue(0.75); });
    changes.make(pathTo({}, "height"), height, [](auto& changed) { changed.setValue(0.25); });
    vrl::Attributes expected;
    expected.addDouble("width", 0.75, "width", "um");
    expected.addDouble("height", 0.25, "height", "um");
    std::ostringstream expectedBytes;
    vrl::BinaryStreamSerialiser expectedWriter(expectedBytes);
    expected.write(&expectedWriter);
    EXPECT_EQ(changes.madeIn(bytes.str(), "a.vrl"), expectedBytes.str());
}

TEST(SavedChanges, RefuseAFileThatDoesNotHoldWhatWasRead) {
    std::string const bytes = savedObjects().at("foreign_block");
    vrl::Value<double> gain("gain", 1.25, "gain of the section", "dB");
    EXPECT_EQ(
        afterSetting(bytes, pathTo({}, "gain"), gain, 2.5),
        "a.vrl: cannot be changed, since it holds another value than was read near byte 465; have the program that "
        "wrote it save it again");
    EXPECT_EQ(
        afterSetting(bytes, pathTo({"7"}, "gain"), gain, 3),
        "a.vrl: cannot be changed, since it lacks 'Netlist::7', to which the change belongs; have the program that "
        "wrote it save it again");
}

TEST(SavedChanges, RefuseAnItemThatIsRepeated) {
    std::string bytes = savedObjects().at("list");
    bytes = replaced(bytes, savedString("enabled") + savedMarker(2), savedString("periods") + savedMarker(2));
    bytes = replaced(bytes, savedString("big") + savedMarker(2), savedString("gib") + savedMarker(2));
    vrl::Value<double> periods("periods");
    EXPECT_EQ(
        afterSetting(bytes, pathTo({}, "periods"), periods, 2.5),
        "a.vrl: cannot be changed, since it repeats 'periods' near byte 1605; have the program that wrote it save "
        "it again");
}

TEST(SavedChanges, RefuseMarkersThatAreNotWhereTheyBelong) {
    std::string bytes = savedObjects().at("foreign_block");
    bytes[bytes.size() - 4] = 7;
    vrl::Value<double> gain("gain", 1.5, "gain of the section", "dB");
    EXPECT_EQ(afterSetting(bytes, pathTo({}, "gain"), gain, 2.5),
              "a.vrl: cannot be changed, since it has no marker of the depth 0 near byte " +
                  std::to_string(bytes.size() - 6) + "; have the program that wrote it save it again");
}

TEST(SavedChanges, OfATruncatedOrDamagedFileAreMadeOrRefused) {
    std::string const good = newerList("x");
    std::size_t refused = 0;
    for (std::size_t at = 0; at < good.size(); ++at) {
        vrl::Value<double> width("width", 0.5, "width", "um");
        refused += afterSetting(good.substr(0, at), pathTo({}, "width"), width, 0.75).compare(0, 7, "a.vrl: ") == 0;
        std::string bad = good;
        bad[at] = static_cast<char>(bad[at] ^ (1 << at % 8));
        width.setValue(0.5);
        std::string const after = afterSetting(bad, pathTo({}, "width"), width, 0.75);
        EXPECT_TRUE(after.size() >= bad.size() || after.compare(0, 7, "a.vrl: ") == 0) << at;
    }
    EXPECT_EQ(refused, good.size());
}

TEST(SavedChanges, ThatAreTakenBackAreNone) {
    vrl::Value<double> width("width", 0.5, "width", "um");
    SavedChanges changes;
    EXPECT_TRUE(changes.make(pathTo({}, "width"), width, [](auto& changed) { changed.setValue(0.75); }));
    EXPECT_FALSE(changes.empty());
    EXPECT_TRUE(changes.make(pathTo({}, "width"), width, [](auto& changed) { changed.setValue(0.5); }));
    EXPECT_TRUE(changes.empty());
}

}  // namespace
