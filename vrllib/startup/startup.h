#pragma once

#include <string>
#include <vector>

#include "vrllib/base/export.h"

/// @file
/// Start-up: the one call that brings the library up, and what a host may say before it.
///
/// Everything that goes wrong is a line in the message channel; no failure stops start-up with an error. The
/// configuration file is the one source: lines of the form "key = value", "#include name", and comments after ";" or
/// "#". Threads: one thread, before any other use of the library.
///
/// One reading of a configuration, start-up or vrlInit_getList, ends at a limit with one line in the message channel:
/// 10,000 included files, 64 MiB, 1,000,000 lines, 35,000 loads (a library in one folder is seven), 8 MiB of messages.

/// Brings the library up: clears the message channel, chooses the configuration file, reads it line by line and loads
/// what it names, makes sure that the standard plug-ins are there, and calls the post-load hook of each plug-in.
///
/// `showMessages`: show the message channel once, after the last line and before the standard plug-ins are loaded at
/// the end. `verbose`: report the files of `sodllfile` lines and standard plug-ins that cannot be mapped. The file
/// stays the one of the first call; a further call reads it again and loads again. What an entry point throws passes
/// through.
VRL_API void vrlInit_vrllib(bool showMessages, bool verbose);

/// The path of the configuration file: the one that was set, otherwise the first that is found, otherwise that of a
/// default file which is written on each call. Empty if that cannot be written. Never null.
VRL_API char const* vrlConfigFile();

/// Sets the path of the configuration file; it need not exist. Null or empty goes back to the search.
VRL_API void vrlConfigFile(char const* path);

/// Where the configuration file is searched for, in order; the first that exists is taken.
VRL_API std::vector<std::string> vrlConfigFilePlaces();

/// Sets the value of ${version}, without the patch that may follow: "5.1.3 patch 2" becomes "5.1.3".
VRL_API void vrlInit_setVersion(char const* version);

/// Sets the value of ${user}.
VRL_API void vrlInit_setUsername(char const* name);
