#include "harm.h"

#include <unistd.h>

#include <cstdlib>
#include <iostream>

#include "fault.h"

namespace broken {

namespace {

// So that no compiler finds out that nobody reads these.
void* volatile lost = nullptr;

/// Writes a little beyond its memory, unseen by the sanitisers, which other builds do not have.
__attribute__((no_sanitize("address"), noinline)) void writeBeyond() {
    auto* const numbers = new double[4];
    double volatile* const seen = numbers;
    for (int i = 0; i < 6; ++i) seen[i] = 1.0;
    delete[] numbers;
}

}  // namespace

void harmInConstructor() {
    if (kFault == Fault::kConstructorCrashes) std::abort();
    if (kFault == Fault::kConstructorHangs)
        for (;;) pause();
    if (kFault == Fault::kConstructorPrints) std::cout << "a block is made\n";
    if (kFault == Fault::kConstructorChangesFolder && chdir("/") != 0) std::abort();
    if (kFault == Fault::kLeaks) lost = new char[4096];
    if (kFault == Fault::kLeaksOfC) lost = std::malloc(4096);
    if (kFault == Fault::kOverruns) writeBeyond();
}

}  // namespace broken
