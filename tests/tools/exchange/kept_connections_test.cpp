#include "exchange/kept_connections.h"

#include <gtest/gtest.h>

namespace {

using vrltool::exchange::KeptConnections;

TEST(KeptConnections, AreCurrentWhileTheirPortsShareANode) {
    KeptConnections kept;
    kept.add({"a,e1", "wire,e1"});
    kept.add({"wire,e1", "wire,e2"});
    kept.add({"wire,e2", "b,e1"});
    kept.add({"c,e1", "pad,e1"});
    kept.setNode("a,e1", 3);
    kept.setNode("b,e1", 3);
    kept.setNode("c,e1", 0);
    kept.setNode("elsewhere,e1", 4);
    kept.settle();
    EXPECT_TRUE(kept.isCurrent({"a,e1", "wire,e1"}));
    EXPECT_TRUE(kept.isCurrent({"wire,e2", "b,e1"}));
    EXPECT_TRUE(kept.isCurrent({"c,e1", "pad,e1"}));
    EXPECT_FALSE(kept.connect("a,e1", "b,e1"));
    EXPECT_TRUE(kept.connect("a,e1", "d,e1"));
    EXPECT_FALSE(kept.connect("d,e1", "b,e1"));
    EXPECT_TRUE(kept.connect("x,e1", "y,e1"));
}

TEST(KeptConnections, AreForgottenWhenAPortHasLeft) {
    KeptConnections kept;
    kept.add({"a,e1", "wire,e1"});
    kept.add({"wire,e1", "wire,e2"});
    kept.add({"wire,e2", "b,e1"});
    kept.setNode("a,e1", 3);
    kept.setNode("b,e1", 0);
    kept.settle();
    EXPECT_FALSE(kept.isCurrent({"a,e1", "wire,e1"}));
    EXPECT_FALSE(kept.isCurrent({"wire,e2", "b,e1"}));
    EXPECT_TRUE(kept.connect("a,e1", "b,e1"));
}

TEST(KeptConnections, OfManyPortsAreFoundQuickly) {
    KeptConnections kept;
    for (int i = 0; i < 200000; ++i) kept.add({"a" + std::to_string(i), "a" + std::to_string(i + 1)});
    for (int i = 0; i <= 200000; ++i) kept.setNode("a" + std::to_string(i), 1);
    kept.settle();
    EXPECT_TRUE(kept.isCurrent({"a0", "a200000"}));
    EXPECT_FALSE(kept.connect("a0", "a200000"));
}

}  // namespace
