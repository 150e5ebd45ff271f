#pragma once

#include "vrllib/base/export.h"

/// @file
/// The version of the library: that of the headers as macros, that of the running library by a function. The two differ
/// where a program runs with another library than it was compiled against.

#define VRL_VERSION_MAJOR 2
#define VRL_VERSION_MINOR 1
#define VRL_VERSION_PATCH 11

/// The version as one number, in the form that needsLibaryVersion and getAPIversion compare.
#define VRL_VERSION ((VRL_VERSION_MAJOR * 100U + VRL_VERSION_MINOR) * 100U + VRL_VERSION_PATCH)

/// The version as text: "2.1.11".
#define VRL_VERSION_TEXT VRL_VERSION_TEXT_(VRL_VERSION_MAJOR, VRL_VERSION_MINOR, VRL_VERSION_PATCH)
/// @cond
#define VRL_VERSION_TEXT_(major, minor, patch) VRL_TEXT_OF_(major) "." VRL_TEXT_OF_(minor) "." VRL_TEXT_OF_(patch)
#define VRL_TEXT_OF_(number) #number
/// @endcond

/// The number of the running library, in the form of VRL_VERSION.
VRL_API unsigned int vrlLibraryVersion();

/// The text of the running library, in the form of VRL_VERSION_TEXT. It lives as long as the process.
VRL_API char const* vrlLibraryVersionText();
