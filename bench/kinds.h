#pragma once

#include "bench/circuit.h"
#include "vrllib/vrllib.h"

// The kinds of blocks of the circuit in the library, and their foundry: for the benchmarks, and as a plug-in for the
// tool.

namespace bench {

class BenchFoundry final : public vrl::Foundry {
public:
    BenchFoundry() { setCS(kCrossSection); }
    std::string getName() const override { return kFoundry; }
    std::string describe() const override { return kFoundry; }
};

/// Registers the 20 kinds.
void registerKinds(FactoryArg<std::string, vrl::BB, vrl::Foundry const*>& factory);

}  // namespace bench
