#pragma once

/// @file
/// The version of the library alone, for users that need no more.

#include "vrllib/base/version.h"
