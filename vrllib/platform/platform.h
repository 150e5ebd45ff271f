#pragma once

#include <cstdio>
#include <optional>
#include <string>
#include <vector>

// Everything that the library asks of the operating system. Private: no header of the interface includes this one, and
// nothing above it knows which system it runs on. posix.cpp and windows.cpp implement it.

namespace Vorlane_v1_0::platform {

/// Why a call of the loader failed.
struct SystemError {
    enum class Reason {
        kOther,
        kMissingSymbol,   ///< the ordinary case of a library that lacks a symbol
        kNotARegularFile  ///< a folder, a pipe or a device in place of a library
    };

    unsigned code = 0;  ///< 0: the system reported no reason
    std::string text;   ///< the system's own text, empty if it has none
    Reason reason = Reason::kOther;
};

/// Maps a shared library, which is never unmapped. Null on failure; an empty path fails without a call of the system.
void* loadLibrary(char const* path, SystemError& error);

/// The address of an exported symbol of that very module, not of one that it depends on. Null if it has none.
void* findSymbol(void* module, char const* name, SystemError& error);

/// The file of a mapped library, and the file that holds a mapped address; empty if the system does not know.
std::string moduleFile(void* module);
std::string fileWith(void const* address);

/// An entry of a folder that matched a pattern.
struct Match {
    std::string name;  ///< bare name, without the folder
    bool isFolder = false;
};

/// The entries that match a path whose last component is a pattern (`*` any run, `?` one character), sorted by bytes.
/// Empty if the folder cannot be read or nothing matches.
std::vector<Match> listMatches(std::string const& pattern);

/// What was pressed in a message box.
enum class Button { kOk = 1, kCancel = 2 };

/// Shows a message modally with the buttons OK and Cancel. It never blocks a program that nobody watches. Null texts
/// count as empty.
Button showMessageBox(char const* text, char const* caption);

bool pathExists(std::string const& path);

/// Makes one folder. A failure, an existing folder included, goes unreported.
void makeFolder(std::string const& path);

/// The value of an environment variable, or nothing. A privileged program sees none where the system reports that it is
/// one.
std::optional<std::string> environment(char const* name);

/// Opens a configuration file, which has to be a regular file, for reading, in text mode. Null if it cannot be opened;
/// a folder cannot. It never waits for somebody to write.
std::FILE* openForReading(char const* path);

/// Where a configuration file is searched for, in order.
std::vector<std::string> configFilePlaces();

/// Where the default configuration file is written: a place that is not searched. Empty if there is none.
std::string defaultConfigFile();

/// Makes the folder for a user's configuration file and the one for the default file, with their parents.
void makeConfigFolders();

/// Opens the default configuration file for writing, emptied. Null if it cannot be opened or the place is not safe.
std::FILE* openDefaultConfigFile();

/// The separator of folders in a path.
extern char const kSeparator;

/// The keys of the configuration file that this system reads, compared over their whole length.
extern char const* const kLibraryFolderKey;
extern char const* const kLibraryPostfixKey;

}  // namespace Vorlane_v1_0::platform
