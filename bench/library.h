#pragma once

#include <cstddef>
#include <memory>

#include "vrllib/vrllib.h"

namespace bench {

struct NetlistDeleter {
    void operator()(vrl::Netlist* netlist) const { vrl::Netlist::destroy(netlist); }
};
using NetlistPtr = std::unique_ptr<vrl::Netlist, NetlistDeleter>;

/// Registers the 20 kinds of blocks.
void registerKinds();

/// The circuit of circuit.h in the library, numbered from 1.
NetlistPtr buildNetlist(std::size_t blocks);

}  // namespace bench
