#include "text/table.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

using vrltool::counted;
using vrltool::printable;
using vrltool::Table;

std::string written(Table const& table, std::size_t indent = 0) {
    std::ostringstream os;
    table.write(os, indent);
    return os.str();
}

TEST(Table, AlignsItsColumnsWithoutTrailingBlanks) {
    Table table({"name", "unit", "what it is"});
    table.add({"length", "um", "from port to port"});
    table.add({"w", "", ""});
    EXPECT_EQ(written(table), "name    unit  what it is\n"
                              "length  um    from port to port\n"
                              "w\n");
    EXPECT_EQ(written(table, 2), "  name    unit  what it is\n"
                                 "  length  um    from port to port\n"
                                 "  w\n");
}

TEST(Table, CountsCharactersAndNotBytes) {
    Table table;
    table.add({"\xC2\xB5m", "a"});
    table.add({"deg", "b"});
    EXPECT_EQ(written(table), "\xC2\xB5m   a\ndeg  b\n");
}

TEST(Table, TakesRowsOfAnyLength) {
    Table table({"a"});
    table.add({});
    table.add({"1", "2", "3"});
    EXPECT_EQ(written(table), "a\n\n1  2  3\n");
}

TEST(Table, KnowsWhetherItHasRows) {
    Table plain;
    EXPECT_TRUE(plain.empty());
    EXPECT_EQ(written(plain), "");
    Table headed({"a"});
    EXPECT_TRUE(headed.empty());
    headed.add({"1"});
    EXPECT_FALSE(headed.empty());
}

TEST(Table, ShowsControlCharactersAsNumbers) {
    Table table({"na\tme"});
    table.add({"\x1B[31mred\n"});
    EXPECT_EQ(written(table), "na\\x09me\n\\x1B[31mred\\x0A\n");
}

TEST(Printable, LeavesPrintableCharactersAndNumbersControlCharacters) {
    EXPECT_EQ(printable(""), "");
    EXPECT_EQ(printable("caf\xC3\xA9 ~"), "caf\xC3\xA9 ~");
    EXPECT_EQ(printable(std::string("a\0\x1F\x7F\r\n", 6)), "a\\x00\\x1F\\x7F\\x0D\\x0A");
}

TEST(Counted, ChoosesTheNumberOfTheNoun) {
    EXPECT_EQ(counted(0, "block"), "0 blocks");
    EXPECT_EQ(counted(1, "block"), "1 block");
    EXPECT_EQ(counted(2, "block"), "2 blocks");
    EXPECT_EQ(counted(2, "library", "libraries"), "2 libraries");
}

}  // namespace
