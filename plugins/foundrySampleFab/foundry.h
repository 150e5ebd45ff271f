#pragma once

#include <string>

#include "vrllib/vrllib.h"

namespace samplefab {

/// The demonstration foundry: silicon on insulator, 220 nm thick, in oxide. All lengths are in um.
///
/// Blocks that say nothing else are made with strips.
class SampleFab : public vrl::Foundry {
public:
    static constexpr char const* kName = "SampleFab";

    SampleFab();
    ~SampleFab() override;
    std::string getName() const override { return kName; }
    std::string describe() const override;
};

}  // namespace samplefab
