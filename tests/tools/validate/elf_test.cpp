#include "validate/elf.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/support/files.h"

namespace {

using vrltool::validate::ElfFile;
using vrltool::validate::parseElf;

std::string smallLibrary() { return vrl_test::readFile(VRL_BROKEN_PLUGINS "/lib_wn_Alone.so.5.1.3"); }

TEST(Elf, ReadsNamesAndDependenciesOfALibrary) {
    ElfFile const file = vrltool::validate::readElf(VRL_LIBRARY);
    EXPECT_EQ(file.error, "");
    EXPECT_EQ(file.soname, "lib_wn_vrllib.so.2");
    EXPECT_EQ(std::count(file.needed.begin(), file.needed.end(), "libc.so.6"), 1);
    auto const found =
        std::find_if(file.exported.begin(), file.exported.end(),
                     [](vrltool::validate::ElfSymbol const& symbol) { return symbol.name == "resetUniqueIDs"; });
    ASSERT_NE(found, file.exported.end());
    EXPECT_TRUE(found->function);
}

TEST(Elf, ReadsTheOneNameOfASmallLibrary) {
    ElfFile const file = parseElf(smallLibrary());
    EXPECT_EQ(file.error, "");
    ASSERT_EQ(file.exported.size(), 1u);
    EXPECT_EQ(file.exported[0].name, "solve");
    EXPECT_TRUE(file.exported[0].function);
}

TEST(Elf, RefusesEveryTruncation) {
    std::string const whole = smallLibrary();
    for (std::size_t size = 0; size < whole.size(); ++size)
        EXPECT_NE(parseElf(whole.substr(0, size)).error, "") << size;
    EXPECT_EQ(parseElf(whole.substr(0, 4)).error, "is cut short: parts that its headers name are missing");
    EXPECT_EQ(parseElf(whole.substr(0, 1000)).error, "is cut short: parts that its headers name are missing");
}

TEST(Elf, SurvivesEveryByteOfTheMappedPartsBeingWrong) {
    std::string const whole = smallLibrary();
    for (std::size_t i = 0; i < whole.size(); ++i) {
        std::string bytes = whole;
        bytes[i] = static_cast<char>(~bytes[i]);
        ElfFile const file = parseElf(bytes);
        EXPECT_LE(file.exported.size(), bytes.size());
    }
}

TEST(Elf, SaysWhatAnotherFormatIs) {
    EXPECT_EQ(parseElf("MZ\x90").error, "is a Windows library");
    EXPECT_EQ(parseElf("!<arch>\nrest").error, "is a static archive");
    EXPECT_EQ(parseElf("#!/bin/sh\n").error, "is a script");
    EXPECT_EQ(parseElf("sodllfile = a\n").error, "is no shared library");
    EXPECT_EQ(parseElf("").error, "is no shared library");
}

}  // namespace
