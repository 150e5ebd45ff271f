#pragma once

#include <cstddef>
#include <vector>

namespace vrltool::validate {

/// Watches from now on what is taken with operator new, by this program and by plug-ins: each block then lies between
/// borders, so that a short overrun damages nothing else. For the children that run checks; other processes are
/// unaffected.
void watchHeap();

/// A block that something was written before or after.
struct Overrun {
    std::size_t size;    ///< of the block, in bytes
    void const* caller;  ///< the code that took it
};

/// The overruns since the last call, of blocks that were freed meanwhile and of those in use; each once.
std::vector<Overrun> overrunsSoFar();

/// The bytes in use, those of C included. Exact for what is taken with operator new.
std::size_t heapInUse();

/// Called before each block is taken, while it is not null; what it takes itself is not reported to it.
using HeapListener = void (*)();
void setHeapListener(HeapListener listener);

}  // namespace vrltool::validate
