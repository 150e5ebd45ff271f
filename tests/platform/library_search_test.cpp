#include "vrllib/platform/library_search.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/files.h"

namespace {

namespace platform = Vorlane_v1_0::platform;

void append(std::string& bytes, std::uint32_t number) { bytes.append(reinterpret_cast<char const*>(&number), 4); }

/// A cache with these names and paths.
std::string cacheOf(std::vector<std::pair<std::string, std::string>> const& entries) {
    std::string bytes = "glibc-ld.so.cache1.1";
    std::string texts;
    auto const textsBegin = static_cast<std::uint32_t>(48 + 24 * entries.size());
    append(bytes, static_cast<std::uint32_t>(entries.size()));
    for (int i = 0; i < 6; ++i) append(bytes, 0);
    for (auto const& entry : entries) {
        append(bytes, 0x303);
        for (std::string const& text : {entry.first, entry.second}) {
            append(bytes, textsBegin + static_cast<std::uint32_t>(texts.size()));
            texts += text + std::string(1, '\0');
        }
        for (int i = 0; i < 3; ++i) append(bytes, 0);
    }
    return bytes + texts;
}

std::string const kTwo = cacheOf({{"liba.so.1", "/opt/a/liba.so.1"}, {"libb.so", "/opt/b/libb.so"}});

TEST(LibraryCache, HasThePathOfAName) {
    EXPECT_EQ(platform::cachedPath(kTwo, "liba.so.1"), "/opt/a/liba.so.1");
    EXPECT_EQ(platform::cachedPath(kTwo, "libb.so"), "/opt/b/libb.so");
    EXPECT_EQ(platform::cachedPath(kTwo, "libc.so"), "");
}

TEST(LibraryCache, MayComeAfterAnOlderForm) {
    EXPECT_EQ(platform::cachedPath("ld.so-1.7.0 and its entries" + kTwo, "libb.so"), "/opt/b/libb.so");
}

TEST(LibraryCache, IsEmptyIfItIsTruncated) {
    for (std::size_t size = 0; size < 48 + 24; ++size)
        EXPECT_EQ(platform::cachedPath(kTwo.substr(0, size), "liba.so.1"), "") << size;
    EXPECT_EQ(platform::cachedPath("", "liba.so.1"), "");
}

TEST(LibrarySearch, TakesAPathAsItIs) { EXPECT_EQ(platform::findLibrary("./x.so"), "./x.so"); }

TEST(LibrarySearch, SearchesTheNamedFoldersFirst) {
    vrl_test::TemporaryFolder const folder;
    std::string const own = vrl_test::writeFile(folder / "libm.so.6", "not the system's");
    EXPECT_EQ(platform::findLibrary("libm.so.6", {folder.path().string()}), own);
    EXPECT_NE(platform::findLibrary("libm.so.6"), own);
    EXPECT_NE(platform::findLibrary("libm.so.6"), "");
    EXPECT_EQ(platform::findLibrary("no such library.so"), "");
}

}  // namespace
