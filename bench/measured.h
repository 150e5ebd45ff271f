#pragma once

#include <functional>

/// Calls what a benchmark measures. Under callgrind counting is on in here and nowhere else.
extern "C" void bench_measured(std::function<void()> const& work);

namespace bench {

inline void measured(std::function<void()> const& work) { bench_measured(work); }

}  // namespace bench
