#pragma once

#include <sstream>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "tests/support/sample_design.h"

namespace sample {

inline Foundry const* addressOf(Foundry const& foundry) { return &foundry; }

/// A block with the name of a foundry, which it does not know, and a choice of cross section.
class Named : public BB {
public:
    explicit Named(std::string const& fab, std::string const& csName = "", std::string const& flowName = "")
        : BB(fab.empty() ? nullptr : addressOf(Fab(fab))) {
        setFoundry(nullptr);
        getCS().setCS(csName);
        getCS().setFlow(flowName);
    }
    ~Named() override = default;
    std::string getName() const override { return "named"; }
};

/// A netlist that counts how often it is asked to bring its tables up to date.
class SyncedNetlist : public Netlist {
public:
    mutable int syncs = 0;

private:
    void mSync() override { ++syncs; }
};

class NetlistCheck : public testing::Test {
protected:
    void SetUp() override { resetUniqueIDs(); }
    void TearDown() override { resetUniqueIDs(); }

    /// What a list answers when it is checked, and what it complains of.
    static std::pair<bool, std::string> checked(Attributes const& list) {
        std::ostringstream complaints;
        bool const good = list.inSpec(complaints);
        return {good, complaints.str()};
    }

    SyncedNetlist netlist;
};

}  // namespace sample
