// A shared library that is no plug-in.

#include "vrllib/base/export.h"

VRL_PLUGIN_EXPORT int unrelated() { return 1; }
