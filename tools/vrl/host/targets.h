#pragma once

#include <array>

namespace vrltool {

/// A target of a load: the entry point that a plug-in has for it, and the terms for its keys.
struct TargetTerms {
    char const* entry;
    char const* id;      ///< for programs
    char const* plural;  ///< for people
};

/// The seven targets, in the order of vrl::LoadTarget.
extern std::array<TargetTerms, 7> const kTargets;

}  // namespace vrltool
