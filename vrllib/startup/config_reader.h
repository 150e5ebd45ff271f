#pragma once

#include <cstddef>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <vector>

// The lines of a configuration file and of its includes. Private: the start-up reader and the key reader both use it.

namespace Vorlane_v1_0::detail {

/// What one reading has used of what a configuration may ask for. A look-up of the folder that an include starts
/// belongs to the same reading. Past a limit nothing is opened or read further, and one line in the message channel
/// says so; every limit is far above what configurations need.
class Reading {
public:
    Reading();

    /// The limit that is passed; null as long as none is.
    char const* limitPassed() const;

    std::size_t files = 0;
    bool filesSpent = false;  ///< an include was left out
    std::size_t bytes = 0;
    std::size_t lines = 0;
    bool loadsSpent = false;  ///< a load was left out
    bool isReported = false;

private:
    std::size_t messagesBefore;
};

/// Whether a line is cut at its comment before its macros are expanded, or after that.
enum class LineOrder { kCutFirst, kExpandFirst };

/// Reads a file line by line; an include is read in place of its line.
class ConfigReader {
public:
    ConfigReader(LineOrder lineOrder, Reading& counted) : order(lineOrder), reading(counted) {}

    /// Opens the file to begin with. False if it cannot be opened.
    bool open(std::string const& path);

    /// The next line that is neither empty nor starts with "#", without its line end and comment and with its macros
    /// expanded; nothing at the end, or past a limit. What does not fit the line array comes as further lines.
    std::optional<std::string> nextLine();

    /// The file of the last line, as it was opened, and the number of that line in it, from 1.
    std::string const& file() const { return currentFile; }
    unsigned lineNumber() const { return currentLine; }

private:
    struct Close {
        void operator()(std::FILE* file) const;
    };
    struct Source {
        std::unique_ptr<std::FILE, Close> stream;
        std::string path;
        unsigned lineEnds = 0;  // read so far
    };

    bool readPiece();
    std::string prepared() const;
    void include(std::string const& line);
    bool isOver();

    LineOrder order;
    Reading& reading;
    std::vector<Source> sources;  // the last one is being read, the others wait for it to end
    std::string piece;
    std::string currentFile;
    unsigned currentLine = 0;
};

/// The value of a line: what follows its first "=" and the white space after that. Nothing without a "=".
///
/// Cuts the trailing white space off the line.
std::optional<std::string> takeValue(std::string& line);

/// Every value of a key in the configuration file and its includes; see vrlInit_getList.
std::vector<std::string> readValues(std::string const& key, Reading& reading);

/// The configuration folder; see vrlcfgPath.
std::string configFolder(Reading& reading);

}  // namespace Vorlane_v1_0::detail
