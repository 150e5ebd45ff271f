// What another plug-in depends on.

#include "vrllib/core/export.h"

VRL_PLUGIN_EXPORT int catalogueHelper() { return 1; }
