// Throws a string from its entry point.

#include "tests/plugins/samples/kinds.h"

VRL_PLUGIN_EXPORT void initLibraryNetlist(FactoryNoArg<std::string, vrl::Netlist>*) { throw "no netlist today"; }
