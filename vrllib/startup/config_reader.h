#pragma once

#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <vector>

// The lines of a configuration file and of its includes. Private: the start-up reader and the key reader both stand on
// it.

namespace Vorlane_v1_0::detail {

/// How many files one reading has opened. A look-up of the folder that an include starts belongs to the same reading.
struct Reading {
    unsigned opened = 0;
};

/// Whether a line is cut at its comment before its macros are expanded or behind that.
enum class LineOrder { kCutFirst, kExpandFirst };

/// Reads a file line by line; an include is read in place of its line.
class ConfigReader {
public:
    ConfigReader(LineOrder lineOrder, Reading& counted) : order(lineOrder), reading(counted) {}

    /// Opens the file to begin with. False if it cannot be opened.
    bool open(std::string const& path);

    /// The next line that is neither empty nor starts with "#", without its line end and comment and with its macros
    /// expanded; nothing at the end. What does not fit the line array comes as further lines.
    std::optional<std::string> nextLine();

private:
    struct Close {
        void operator()(std::FILE* file) const;
    };
    using Stream = std::unique_ptr<std::FILE, Close>;

    bool readPiece();
    std::string prepared() const;
    void include(std::string const& line);

    LineOrder order;
    Reading& reading;
    std::vector<Stream> streams;  // the last one is being read, the others wait for it to end
    std::vector<char> buffer;
};

/// The value of a line: behind its first "=" and the white space that follows. Nothing without a "=".
///
/// Cuts the trailing white space off the line.
std::optional<std::string> takeValue(std::string& line);

/// Every value of a key in the configuration file and its includes, as vrlInit_getList tells.
std::vector<std::string> readValues(std::string const& key, Reading& reading);

/// The configuration folder, as vrlcfgPath tells.
std::string configFolder(Reading& reading);

}  // namespace Vorlane_v1_0::detail
