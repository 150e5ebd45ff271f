#pragma once

#include <stdexcept>
#include <string>

namespace vrltool {

/// What a command answers with; it is the exit status of the program.
enum class Outcome {
    kFine = 0,      ///< done, and nothing to complain of
    kFindings = 1,  ///< done, with findings or differences
    kFailed = 2     ///< could not be done
};

/// Ends a command that cannot be done. It names the file or the thing, what is wrong with it, and the hint.
class Failure : public std::runtime_error {
public:
    /// `hint` may be empty; no text ends in a line feed.
    Failure(std::string const& thing, std::string const& what, std::string const& hint = "")
        : std::runtime_error(thing + ": " + what), hintText(hint) {}

    /// What to do about it; empty if that is plain.
    std::string const& hint() const { return hintText; }

private:
    std::string hintText;
};

}  // namespace vrltool
