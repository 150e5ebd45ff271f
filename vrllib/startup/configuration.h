#pragma once

#include <string>
#include <vector>

#include "vrllib/base/export.h"

/// @file
/// The configuration for the rest of the system: the values of any key, the folder that holds the file and folders
/// below it, macros of the host, and loads by name at any time after start-up.
///
/// A standard plug-in is one that is loaded without being named in the file. An alias is a macro of the host.
/// Null texts count as empty. Threads: one thread at a time; nothing is locked.

/// Every value of a key in the configuration file and its includes, in file order.
///
/// A key is compared with the start of a line, so "ConfigPath" also takes "ConfigPathOld = x", and an empty key every
/// value. Values may be empty. The list is empty, with a warning in the message channel, if there is no file to read.
VRL_API std::vector<std::string> vrlInit_getList(std::string const& key);

/// The configuration folder: the first ConfigPath of the file unchanged, otherwise the folder of the file.
///
/// Without a trailing separator, unless that value has one. Kept until vrlConfigFile(path) is called.
VRL_API std::string vrlcfgPath();

/**@{*/
/// A sub-folder of the configuration folder. Each level that ends at a "/" of the name is made if need be.
///
/// A folder is tried once in a process and a failure is not reported. Without a name this is the configuration folder,
/// with no separator after it whatever `appendSeparator` says.
VRL_API std::string vrlcfgFolder(char const* name, bool appendSeparator);
VRL_API std::string vrlcfgFolder(std::string const& name, bool appendSeparator);
/**@}*/

/**@{*/
/// A file in such a sub-folder. Without a folder the name follows the configuration folder with nothing in between.
VRL_API std::string vrlcfgFolderFile(char const* file, char const* folder);
VRL_API std::string vrlcfgFolderFile(std::string const& file, std::string const& folder);
/**@}*/

/// Replaces "${name}" by a value in every line that is read from now on. The first alias of a name wins.
VRL_API void vrlInit_config_alias(char const* name, char const* value);

/// Loads a plug-in by name from each folder of the configuration, for all targets; from the system's own search if the
/// configuration names no folder, and then failures are always reported. "vrldll" is tried once in a process.
VRL_API void vrlInit_loadSo(char const* name, bool verbose);

/// The same as vrlInit_loadSo.
VRL_API void vrlInit_PDK(char const* name, bool verbose);

/// Loads a list of files or patterns, separated by ";", for all targets; the names are taken as they are.
VRL_API void vrlInit_loadFoundry(char const* list, bool verbose);

/// Adds a standard plug-in.
VRL_API void vrlInit_StandardSo(std::string const& name);

/// Writes into the message channel which file is used, which libraries are looked for, and what was loaded or failed.
VRL_API void vrlCoutShowAPIinfo();
