#pragma once

#include <string>
#include <vector>

#include "check/findings.h"

namespace vrltool::check {

/// Findings that somebody has accepted, and why. Element, port and parameter are patterns; an empty one fits all.
struct Exception {
    Rule const* rule;
    std::string element, port, parameter;
    std::string reason;
    std::string place;  ///< "FILE:LINE:COLUMN"
    std::size_t uses = 0;

    bool covers(RuleFinding const& finding) const;
    /// "open-port at arms,in*".
    std::string text() const;
};

/// The file with the exceptions of a design: DESIGN.exceptions.yml, beside it.
std::string exceptionsPath(std::string const& design);

/// The exceptions of a design, in the order of their file; none if there is no file. A Failure says what is wrong with
/// it, and where: rule and reason are required.
std::vector<Exception> readExceptions(std::string const& design);

}  // namespace vrltool::check
