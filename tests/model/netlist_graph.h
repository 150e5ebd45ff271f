#pragma once

#include <vector>

#include <gtest/gtest.h>

#include "vrllib/vrllib.h"

namespace sample {

inline std::vector<unsigned> inputsOf(vrl::Netlist const& netlist) {
    return {netlist.beginInputNodes(), netlist.endInputNodes()};
}
inline std::vector<unsigned> outputsOf(vrl::Netlist const& netlist) {
    return {netlist.beginOutputNodes(), netlist.endOutputNodes()};
}
inline std::vector<unsigned> directsOf(vrl::Netlist const& netlist) {
    return {netlist.beginDCNodes(), netlist.endDCNodes()};
}

/// Numbers from 1, and a netlist.
class NetlistGraph : public testing::Test {
protected:
    void SetUp() override { resetUniqueIDs(); }
    void TearDown() override { resetUniqueIDs(); }

    std::vector<unsigned> inputs() const { return inputsOf(netlist); }
    std::vector<unsigned> outputs() const { return outputsOf(netlist); }
    std::vector<unsigned> directs() const { return directsOf(netlist); }
    vrl::Netlist::NameMap names() const { return {netlist.beginElementName(), netlist.endElementName()}; }

    vrl::Netlist netlist;
};

}  // namespace sample
