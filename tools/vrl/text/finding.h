#pragma once

#include <string>

namespace vrltool {

/// How much a finding weighs, lightest first. Errors and warnings make the exit status 1, notes do not.
enum class Severity { kOff, kNote, kWarning, kError };

/// "off", "note", "warning" or "error".
char const* severityWord(Severity severity);

/// Something that a command found to be wrong or odd. Each command adds where that is.
struct Finding {
    Severity severity;
    std::string what;
    std::string hint;  ///< what to do about it; empty if that is plain
};

}  // namespace vrltool
