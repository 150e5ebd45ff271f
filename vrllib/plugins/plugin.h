#pragma once

#include "vrllib/base/export.h"

/// @file
/// What a plug-in says about itself. factory_loader.h has the entry points for its classes.

/// Defines `getAPIversion`: the version of the library that a plug-in was made for, which the version gate of
/// needsLibaryVersion compares. Use it once in a plug-in, in no namespace.
///
///     VRL_PLUGIN_API_VERSION(2, 1, 11);
#define VRL_PLUGIN_API_VERSION(major, minor, patch)                                                                    \
    VRL_PLUGIN_EXPORT unsigned int getAPIversion() { return ((major)*100U + (minor)) * 100U + (patch); }               \
    static_assert((minor) < 100U && (patch) < 100U, "minor and patch take two digits each")
