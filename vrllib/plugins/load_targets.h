#pragma once

#include <array>

namespace Vorlane_v1_0::detail {

/// The loads of one target.
struct LoadTarget {
    bool (*loadLibs)(char const* list, bool verbose);
    bool (*loadDir)(char const* dir, char const* postfix, bool verbose);
    bool (*loadEnvString)(char const* name, bool verbose);
};

/// The seven targets, in the order in which one load is done for all of them.
std::array<LoadTarget, 7> const& loadTargets();

/// Loads a list for each target.
void loadLibsForAll(char const* list, bool verbose);

}  // namespace Vorlane_v1_0::detail
