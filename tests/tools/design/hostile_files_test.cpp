#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <random>
#include <sstream>

#include "design/design.h"
#include "design/design_json.h"
#include "tests/support/files.h"
#include "tests/tools/design/saved_objects.h"
#include "text/failure.h"

namespace {

using vrl_test::savedObjects;
using vrl_test::TemporaryFolder;

/// What came of reading: "" if all went well, or the text of the Failure. What was read is shown in all forms.
std::string readAndShow(TemporaryFolder const& folder, std::string const& bytes) {
    std::filesystem::remove(folder / "bad.vrl");  // a new file costs less than one that is written again
    try {
        auto const design = vrltool::readDesign(vrl_test::writeFile(folder / "bad.vrl", bytes));
        std::ostringstream shown;
        design.object.print(shown);
        vrl::AsciiStreamSerialiser listing(shown);
        design.object.write(listing);
        vrltool::writeJson(shown, vrltool::designJson(design));
        return shown.str().empty() ? "shows nothing" : "";
    } catch (vrltool::Failure const& failure) {
        return failure.what();
    }
}

class HostileFiles : public testing::TestWithParam<std::string> {
protected:
    std::string const good = savedObjects().at(GetParam());
    TemporaryFolder const folder;
};

TEST_P(HostileFiles, AreRefusedAtEveryTruncation) {
    ASSERT_EQ(readAndShow(folder, good), "");
    std::size_t refused = 0;
    for (std::size_t length = 0; length < good.size(); ++length)
        if (!readAndShow(folder, good.substr(0, length)).empty()) ++refused;
    EXPECT_EQ(refused, good.size());
}

TEST_P(HostileFiles, WithAFlippedBitAreReadOrRefused) {
    std::size_t refused = 0;
    for (std::size_t at = 0; at < good.size(); ++at) {
        std::string bad = good;
        bad[at] = static_cast<char>(bad[at] ^ (1 << at % 8));
        if (!readAndShow(folder, bad).empty()) ++refused;
    }
    EXPECT_GT(refused, 0u);
    EXPECT_LT(refused, good.size());
}

TEST_P(HostileFiles, WithRandomBytesAfterTheirTypeAreReadOrRefused) {
    std::mt19937 random(20111);
    std::size_t const head = good.find_first_of(std::string(1, '\0'), 10) + 4;
    std::size_t refused = 0;
    for (int round = 0; round < 300; ++round) {
        std::string bad = good.substr(0, head);
        for (int i = 0; i < 400; ++i) bad += static_cast<char>(random() % (round % 3 == 0 ? 4 : 256));
        if (!readAndShow(folder, bad).empty()) ++refused;
    }
    EXPECT_GT(refused, 0u);
}

// Beginnings of all classes; the great ones are made of the same members.
INSTANTIATE_TEST_SUITE_P(Of, HostileFiles,
                         testing::Values("annotations", "block", "choice", "double", "flagged_double", "foreign_block",
                                         "foreign_netlist", "foreign_parameter", "list", "port"),
                         [](auto const& tested) { return tested.param; });

}  // namespace
