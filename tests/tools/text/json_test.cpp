#include "text/json.h"

#include <gtest/gtest.h>

#include <limits>
#include <nlohmann/json.hpp>
#include <sstream>

namespace {

using vrltool::Json;

std::string written(Json const& value) {
    std::ostringstream os;
    vrltool::writeJson(os, value);
    return os.str();
}

TEST(Json, BeginsWithFormatAndVersion) {
    EXPECT_EQ(written(vrltool::jsonHead("show", 1)), "{\n  \"format\": \"vrl-show\",\n  \"version\": 1\n}\n");
}

TEST(Json, KeepsTheOrderOfItsMembers) {
    Json json;
    json["z"] = 1;
    json["a"] = Json::array();
    EXPECT_EQ(written(json), "{\n  \"z\": 1,\n  \"a\": []\n}\n");
}

TEST(Json, ReplacesBytesThatAreNoUtf8) {
    EXPECT_EQ(written(Json("caf\xC3\xA9 \xFF \x1B")), "\"caf\xC3\xA9 \xEF\xBF\xBD \\u001b\"\n");
}

TEST(Json, HasWordsForNumbersThatItCannotWrite) {
    double const infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(vrltool::jsonNumber(0.1), Json(0.1));
    EXPECT_EQ(vrltool::jsonNumber(std::numeric_limits<double>::quiet_NaN()), Json("nan"));
    EXPECT_EQ(vrltool::jsonNumber(infinity), Json("inf"));
    EXPECT_EQ(vrltool::jsonNumber(-infinity), Json("-inf"));
}

}  // namespace
