#pragma once

#include <string>

#include "tests/support/child.h"

namespace vrl_test {

/// All that a command wrote, and its exit status in a last line.
inline std::string whole(Outcome const& outcome) {
    return outcome.out + outcome.err + "status " + std::to_string(outcome.status) + "\n";
}

}  // namespace vrl_test
