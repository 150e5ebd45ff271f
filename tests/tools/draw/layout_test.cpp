#include <gtest/gtest.h>

#include <string>

#include "draw/layout/channel.h"
#include "draw/layout/diagram.h"
#include "draw/layout/flow.h"

namespace {

using namespace vrltool::draw::layout;

std::string pathText(std::vector<Point> const& path) {
    std::string text;
    for (Point const& point : path) text += std::to_string(point.x) + "," + std::to_string(point.y) + " ";
    return text;
}

FlowNode const kBlock{{Side::kLeft, Side::kRight}};
FlowNode const kEnd{{Side::kRight}, true};

TEST(Flow, TurnsBlocksSoThatWiresRunToTheRight) {
    Flow const flow{{kEnd, kBlock, kBlock, kBlock}, {{{0, 0}, {1, 1}}, {{1, 0}, {2, 0}}, {{2, 1}, {3, 1}}}};
    Columns const columns = columnsOf(flow);
    EXPECT_EQ(columns.turned, (std::vector<bool>{false, true, false, true}));
    EXPECT_EQ(columns.column, (std::vector<std::size_t>{0, 1, 2, 3}));
    EXPECT_EQ(columns.parts.size(), 1u);
}

TEST(Flow, PutsTheRootOfATreeAtTheLeft) {
    FlowNode const splitter{{Side::kLeft, Side::kRight, Side::kRight}};
    Flow const flow{{kEnd, kEnd, splitter, kEnd}, {{{0, 0}, {2, 1}}, {{1, 0}, {2, 2}}, {{3, 0}, {2, 0}}}};
    Columns const columns = columnsOf(flow);
    EXPECT_EQ(columns.column, (std::vector<std::size_t>{2, 2, 1, 0}));
    EXPECT_FALSE(columns.turned[2]);
}

FlowNode endWithWish(int wish) { return {{Side::kRight}, true, false, wish}; }

TEST(Flow, BeginsAtTheEndThatBelongsLeftMost) {
    Flow const flow{{endWithWish(-1), endWithWish(-3), kBlock}, {{{0, 0}, {2, 0}}, {{2, 1}, {1, 0}}}};
    EXPECT_EQ(columnsOf(flow).column, (std::vector<std::size_t>{2, 0, 1}));
}

TEST(Flow, GrantsMoreOfWhatEndsWish) {
    FlowNode const splitter{{Side::kLeft, Side::kRight, Side::kRight}};
    Flow const flow{{endWithWish(3), endWithWish(-2), endWithWish(-2), splitter},
                    {{{0, 0}, {3, 0}}, {{1, 0}, {3, 1}}, {{2, 0}, {3, 2}}}};
    EXPECT_EQ(columnsOf(flow).column, (std::vector<std::size_t>{2, 0, 0, 1}));
}

TEST(Flow, CountsColumnsAlongTheLongestWay) {
    Flow const flow{{kBlock, kBlock, kBlock}, {{{0, 1}, {1, 0}, {2, 0}}, {{1, 1}, {2, 0}}}};
    EXPECT_EQ(columnsOf(flow).column, (std::vector<std::size_t>{0, 1, 2}));
}

TEST(Flow, CutsACircle) {
    Flow const flow{{kBlock, kBlock}, {{{0, 1}, {1, 0}}, {{1, 1}, {0, 0}}}};
    EXPECT_EQ(columnsOf(flow).column, (std::vector<std::size_t>{0, 1}));
}

TEST(Flow, TellsPartsApart) {
    Flow const flow{{kBlock, kBlock, kBlock}, {{{0, 1}, {2, 0}}}};
    EXPECT_EQ(columnsOf(flow).parts, (std::vector<std::vector<std::size_t>>{{0, 2}, {1}}));
}

TEST(Channel, NeedsNoTrackForALevelNet) {
    Channel const channel = routeChannel({{{8}, {8}}, {{16}, {16}}});
    EXPECT_EQ(channel.tracks, 0u);
    EXPECT_TRUE(channel.trunks.empty());
}

TEST(Channel, TurnsFirstWhatComesFromTheLeftOnALineOfAnother) {
    Channel const channel = routeChannel({{{8}, {16}}, {{0}, {8}}});
    ASSERT_EQ(channel.trunks.size(), 2u);
    EXPECT_EQ(channel.trunks[0].track, 0u);
    EXPECT_EQ(channel.trunks[1].track, 1u);
}

TEST(Channel, SplitsOneOfTwoNetsThatChangePlaces) {
    Channel const channel = routeChannel({{{0}, {64}}, {{64}, {0}}});
    ASSERT_EQ(channel.trunks.size(), 3u);
    EXPECT_EQ(channel.tracks, 3u);
    Trunk const& first = channel.trunks[channel.trunks[2].net];
    EXPECT_EQ(first.right, channel.trunks[2].left);
    EXPECT_LT(first.track, channel.trunks[2].track);
}

TEST(Channel, SharesATrackWhereNetsAreApart) { EXPECT_EQ(routeChannel({{{0}, {8}}, {{32}, {24}}}).tracks, 1u); }

// Takes seconds, and with steps that are quadratic minutes.
TEST(Channel, RoutesThirtyThousandNets) {
    std::vector<ChannelNet> nets;
    int const count = 30000;
    for (int i = 0; i < count; ++i) nets.push_back({{i * kGrid}, {(i % 2 == 0 ? i + 1 : i - 1) * kGrid}});
    EXPECT_EQ(routeChannel(nets).trunks.size(), 45000u) << "of each pair, one is split";
}

Node const kNode{80, 24, 24, 0, {{false, 0, {}}, {true, 0, {}}}};

Node inColumn(std::size_t column) {
    Node node = kNode;
    node.column = column;
    return node;
}

TEST(Place, PutsAChainOnOneLine) {
    Diagram const diagram{{inColumn(0), inColumn(1)}, {{{0, 1}, {1, 0}}}};
    Placed const placed = place(diagram);
    EXPECT_EQ(placed.nodes, (std::vector<Point>{{0, 24}, {104, 24}}));
    ASSERT_EQ(placed.wires.size(), 1u);
    ASSERT_EQ(placed.wires[0].paths.size(), 1u);
    EXPECT_EQ(pathText(placed.wires[0].paths[0]), "80,24 104,24 ");
    EXPECT_EQ(placed.width, 184);
    EXPECT_EQ(placed.height, 48);
}

TEST(Place, LeadsAWireBackAroundItsBlocks) {
    Diagram const diagram{{inColumn(0), inColumn(1)}, {{{0, 1}, {1, 0}}, {{1, 1}, {0, 0}}}};
    Placed const placed = place(diagram);
    ASSERT_EQ(placed.wires[1].paths.size(), 1u);
    EXPECT_EQ(placed.wires[1].paths[0].size(), 6u);
}

TEST(Place, PutsAJunctionWhereThreePortsMeet) {
    Diagram const diagram{{inColumn(0), inColumn(1), inColumn(1)}, {{{0, 1}, {1, 0}, {2, 0}}}};
    Placed const placed = place(diagram);
    EXPECT_EQ(placed.wires[0].paths.size(), 3u);
    EXPECT_EQ(placed.wires[0].junctions.size(), 1u);
}

TEST(Place, WidensTheWayToTheLastColumn) {
    Diagram const diagram{{inColumn(0), inColumn(1)}, {{{0, 1}, {1, 0}}}, {}, 400};
    Placed const placed = place(diagram);
    EXPECT_EQ(placed.width, 400);
    EXPECT_EQ(placed.nodes[1], (Point{320, 24}));
}

TEST(Place, KeepsTheNetStraightThatMattersMore) {
    Node source = inColumn(0);
    source.pins.push_back({true, 16, {}});
    Diagram const diagram{{source, inColumn(1), inColumn(1)}, {{{0, 1}, {1, 0}}, {{0, 2}, {2, 0}}}, {1, 4}};
    Placed const placed = place(diagram);
    EXPECT_EQ(placed.wires[0].paths[0].size(), 4u);
    EXPECT_EQ(placed.wires[1].paths[0].size(), 2u);
}

/// Two nodes whose wires cross if neither is flipped.
Diagram twisted(bool canFlip) {
    Node const left{80, 24, 24, 0, {{true, -8, {}}, {true, 8, {}}}, canFlip};
    Node const right{80, 24, 24, 1, {{false, -8, {}}, {false, 8, {}}}, canFlip};
    return {{left, right}, {{{0, 0}, {1, 1}}, {{0, 1}, {1, 0}}}};
}

TEST(Place, FlipsANodeWhereWiresCrossOtherwise) {
    Placed const placed = place(twisted(true));
    EXPECT_EQ(placed.flipped, (std::vector<bool>{true, false}));
    EXPECT_EQ(pathText(placed.wires[0].paths[0]), "80,32 104,32 ");
    EXPECT_EQ(pathText(placed.wires[1].paths[0]), "80,16 104,16 ");
}

TEST(Place, FlipsNoNodeThatMustNot) { EXPECT_EQ(place(twisted(false)).flipped, (std::vector<bool>{false, false})); }

TEST(Place, TakesAnEmptyDiagram) { EXPECT_EQ(place({}).width, 0); }

}  // namespace
