#include "system/supervised.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <iostream>

namespace {

using vrltool::Supervised;

/// What the parent sees of a copy that reports at length, writes an error, and is ready at once: the parent is reading
/// then.
Supervised::Start startedBusily(int reports) {
    Supervised copy;
    if (copy.isCopy()) {
        for (int i = 0; i < reports; ++i) copy.report("call");
        std::cerr << "the last words" << std::endl;
        copy.beReady();
        _exit(0);
    }
    auto start = copy.waitUntilReady(600, [](std::size_t) {});
    copy.waitForEnd();
    return start;
}

TEST(Supervised, HandsOnWhatWasWrittenJustBeforeTheCopyWasReady) {
    constexpr int kStarts = 500;
    for (int i = 0; i < kStarts; ++i) {
        auto const start = startedBusily(i);
        ASSERT_TRUE(start.ready);
        ASSERT_EQ(start.errors, "the last words\n") << i;
    }
}

}  // namespace
