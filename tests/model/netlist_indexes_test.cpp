#include <algorithm>
#include <random>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/sample_design.h"

// Look-ups by node and number use indexes; a walk over the tables has to find the same after every kind of change.

namespace {

using namespace Vorlane_v1_0;

std::pair<std::string, std::string> firstPort(Netlist const& n, unsigned node, std::string const* port = nullptr) {
    for (auto at = n.beginElementPort(); at != n.endElementPort(); ++at)
        if (at->second == node && (!port || at->first.second == *port)) return at->first;
    return {};
}

std::string firstName(Netlist const& n, unsigned number) {
    for (auto at = n.beginElementName(); at != n.endElementName(); ++at)
        if (at->second == number) return at->first;
    return "-";
}

constexpr unsigned kMostNodes = 60;

void expectSameAnswers(Netlist const& n) {
    for (unsigned node = 0; node <= kMostNodes; ++node) {
        std::string element = "x", port = "x";
        auto const expected = firstPort(n, node);
        ASSERT_EQ(n.findNode(node, &element, &port), !expected.second.empty()) << node;
        ASSERT_EQ(std::make_pair(element, port), expected) << node;
        for (std::string const name : {"in0", "out0", "p1"}) {
            auto const named = firstPort(n, node, &name);
            element = "x";
            ASSERT_EQ(n.findNamedNode(node, name, &element), !named.second.empty());
            ASSERT_EQ(element, named.first);
        }
        ASSERT_EQ(n.findElementName(node), firstName(n, node));
    }
}

void copyByStream(Netlist& target, Netlist& source) {
    std::stringstream stream;
    BinaryStreamSerialiser writer(stream);
    ASSERT_TRUE(source.write(&writer));
    BinaryStreamDeSerialiser reader(stream);
    ASSERT_TRUE(target.read(&reader));
}

TEST(NetlistIndexes, AgreeWithAWalkAfterEveryChange) {
    sample::Kinds const kinds;
    std::mt19937 random(3);
    auto const below = [&](unsigned limit) { return static_cast<unsigned>(random() % limit); };
    for (int round = 0; round < 60; ++round) {
        resetUniqueIDs();
        Netlist netlist, other;
        for (int step = 0; step < 40; ++step) {
            std::string const name = "e" + std::to_string(below(12));
            std::string const port = std::vector<std::string>{"in0", "out0", "p1", "p2"}[below(4)];
            switch (below(8)) {
            case 0:
            case 1:
                netlist.addBB(new sample::Mmi, name, below(3) ? 0 : 1 + below(kMostNodes));
                break;
            case 2:
                other = netlist;
                other.addBB(new sample::Pad, "other");
                other.addNode("other", port, 1 + below(kMostNodes));
                expectSameAnswers(other);
                break;
            case 3: {
                Netlist copy(netlist);
                copy.addNode(name, "p9", 1 + below(kMostNodes));
                expectSameAnswers(copy);
                break;
            }
            case 4:
                if (step % 5 == 0) {
                    Netlist source(netlist);
                    copyByStream(netlist, source);
                } else if (step % 5 == 1) {
                    netlist = other;
                }
                break;
            default:
                netlist.addNode(name, port, below(4) ? 1 + below(kMostNodes) : 0);
            }
            if (below(3) == 0) expectSameAnswers(netlist);
        }
        expectSameAnswers(netlist);
    }
}

/// What setInputNode, setOutputNode and setDCNode do, by a walk.
struct Lists {
    std::vector<unsigned> inputs, outputs, dc;

    static bool has(std::vector<unsigned> const& list, unsigned node) {
        return std::find(list.begin(), list.end(), node) != list.end();
    }
    void set(unsigned which, unsigned node) {
        auto& list = which == 0 ? inputs : which == 1 ? outputs : dc;
        if (!has(which == 2 ? dc : inputs, node)) list.push_back(node);
    }
};

TEST(NetlistIndexes, OfBoundaryNodesFollowTheirIterators) {
    std::mt19937 random(5);
    for (int round = 0; round < 20; ++round) {
        Netlist netlist;
        Lists expected;
        for (int step = 0; step < 400; ++step) {
            unsigned const node = static_cast<unsigned>(random() % 200), which = random() % 3;
            unsigned position = 0;
            if (which == 0) netlist.setInputNode(node, &position);
            if (which == 1) netlist.setOutputNode(node, &position);
            if (which == 2) netlist.setDCNode(node, &position);
            expected.set(which, node);
            auto const& list = which == 0 ? expected.inputs : which == 1 ? expected.outputs : expected.dc;
            ASSERT_EQ(position, static_cast<unsigned>(list.size()) - 1U);
            if (step % 50 == 49) {  // the iterators are good until the lists grow
                auto const input = netlist.beginInputNodes();
                netlist.setInputNode(expected.inputs.back());
                *input = 1000 + static_cast<unsigned>(step);
                expected.inputs.front() = *input;
                netlist.setInputNode(*input);
            }
            if (step % 90 == 89) {
                Netlist source(netlist);
                copyByStream(netlist, source);
            }
        }
        EXPECT_EQ(std::vector<unsigned>(netlist.beginInputNodes(), netlist.endInputNodes()), expected.inputs);
        EXPECT_EQ(std::vector<unsigned>(netlist.beginOutputNodes(), netlist.endOutputNodes()), expected.outputs);
        EXPECT_EQ(std::vector<unsigned>(netlist.beginDCNodes(), netlist.endDCNodes()), expected.dc);
    }
}

}  // namespace
