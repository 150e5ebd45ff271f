// What another plug-in depends on.

#include "vrllib/base/export.h"

VRL_PLUGIN_EXPORT int catalogueHelper() { return 1; }
