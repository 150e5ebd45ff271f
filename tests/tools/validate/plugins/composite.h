#pragma once

#include <string>

#include "fault.h"
#include "vrllib/vrllib.h"

namespace broken {

/// Two blocks in a row, as a composite.
class Pair : public vrl::CBB {
public:
    explicit Pair(vrl::Foundry const* foundry);
    Pair(Pair const&) = delete;
    Pair& operator=(Pair const&) = delete;
    std::string getName() const override { return kFault == Fault::kOneKeyTwice ? "brBlock" : "brPair"; }
};

/// Whether the plug-in has one: its fault is in there, or it has the parts with the fault.
bool hasComposite();

}  // namespace broken
