#include "bench/measured.h"

// In a file of its own, so that no compiler takes the call away.
extern "C" void bench_measured(std::function<void()> const& work) { work(); }
