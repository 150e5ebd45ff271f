#pragma once

#include <string>

// The steps of a load, the same for every target. Private.

namespace Vorlane_v1_0::detail {

/// Calls an entry point with the factory that it expects.
using EntryCall = void (*)(void* entryPoint, void* factory);

/// One load; see the free loadDllSo.
bool loadModule(char const* file, char const* entry, EntryCall call, void* factory, char const* label, bool verbose);

/// The load of one file for one target.
using FileLoad = bool (*)(char const* file, bool verbose);

/// The loads of FactoryLoader<T>; see there.
bool loadList(char const* list, bool verbose, FileLoad load);
bool loadFolder(char const* dir, char const* postfix, bool verbose, FileLoad load);
bool loadVariable(char const* name, bool verbose, FileLoad load);

/// The name of the function that returns the version of a plug-in, and that function of a module; null if it has none.
inline constexpr char kVersionFunction[] = "getAPIversion";
using VersionFunction = unsigned (*)();
VersionFunction versionFunction(void* module);

/// Puts the tag in place of the first "wX" that follows "lib_".
void replaceTag(std::string& text);

}  // namespace Vorlane_v1_0::detail
