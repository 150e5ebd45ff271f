#include "vrllib/base/version.h"

unsigned int vrlLibraryVersion() { return VRL_VERSION; }

char const* vrlLibraryVersionText() { return VRL_VERSION_TEXT; }
