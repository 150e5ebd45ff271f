#pragma once

#include <array>

namespace Vorlane_v1_0::detail {

/// The entry point of a target, and its loads.
struct TargetLoads {
    char const* entry;
    bool (*loadLibs)(char const* list, bool verbose);
    bool (*loadDir)(char const* dir, char const* postfix, bool verbose);
    bool (*loadEnvString)(char const* name, bool verbose);
};

/// The seven targets, in the order of LoadTarget.
std::array<TargetLoads, 7> const& loadTargets();

/// Loads a list for each target.
void loadLibsForAll(char const* list, bool verbose);

}  // namespace Vorlane_v1_0::detail
