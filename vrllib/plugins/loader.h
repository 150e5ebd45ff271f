#pragma once

#include <iosfwd>
#include <list>
#include <string>

#include "vrllib/base/export.h"

/// @file
/// The loader of plug-ins: the version gate, the library tag, the modules and what became of them.
///
/// A plug-in is a shared library that exports, under plain names, an entry point for each type that it serves (see
/// FactoryLoader), `unsigned getAPIversion()` as soon as the host asks for a version, and `void initLibraryPostLoad()`
/// if it wants to be called when everything is loaded. A module is a mapped file; its handle is the system's. The tag
/// is the two characters after "lib_" in the name of a library; configuration text has the marker "wX" in their place.
/// Plug-ins are never unloaded.
/// Threads: one thread at a time; nothing is locked.

/// Sets the lowest version that a plug-in may have, as (major * 100 + minor) * 100 + patch; 0, 0, 0 accepts any.
VRL_API void needsLibaryVersion(unsigned int major, unsigned int minor, unsigned int patch);

/// Whether a module passes the version gate: it needs getAPIversion if a version was asked for. Newer ones pass.
VRL_API bool checkLibraryVersion(void* module);

/// Sets the tag. What is longer than two characters is cut.
VRL_API void soloader_setDllTag(char const* tag);

/// The tag: "wn" at first. The text belongs to the library.
VRL_API char const* soloader_getDllTag();

/// Appends a module to the list of handles, even if it is there already.
VRL_API void soload_addSo(void* module);

/// Stores the ends of the list of handles: one for each entry point that was called, in that order. A null place is
/// skipped. The list only grows, so the iterators stay valid.
VRL_API void soload_iter(std::list<void*>::iterator* begin, std::list<void*>::iterator* end);

/// Calls the function of that name, without arguments, in each module of the list that exports it.
///
/// A module that is in the list twice is called twice. What is appended meanwhile is called as well.
VRL_API void soloader_Call(char const* name);

/// Calls initLibraryPostLoad in each module of the list.
VRL_API void soloader_PostLoad();

/// Notes the file text of a load that worked.
VRL_API void InsertSuccessfullyLoadedDll(std::string file);

/// Notes the file text of a load that failed.
VRL_API void InsertUnsuccessfullyLoadedDll(std::string file);

/// Writes the file texts that worked at least once, sorted, one on a line.
VRL_API std::ostream& GetSuccessfullyLoadedDlls(std::ostream& os);

/// Writes the file texts that never worked, sorted, one on a line.
VRL_API std::ostream& GetUnsuccessfullyLoadedDlls(std::ostream& os);
