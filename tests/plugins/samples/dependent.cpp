// Has no entry point itself, but depends on a library that has one.

#include "vrllib/base/export.h"

VRL_PLUGIN_EXPORT int unrelatedToo() { return 2; }
