#pragma once

#include <string>
#include <vector>

#include "check/findings.h"
#include "values/node.h"

namespace vrltool::check {

/// Findings that somebody has accepted, and why. Element, port and parameter are patterns; an empty one fits all.
///
/// An exception may be bound to what it accepts, so that it ends when that changes: to a value, or to a least and a
/// greatest one. A value is that of the parameter, or what several findings of the rule have in common.
struct Exception {
    Rule const* rule;
    std::string element, port, parameter;
    values::Node value, min, max;  ///< null if it is not bound
    std::string reason;
    std::string place;  ///< "FILE:LINE:COLUMN"
    int line;
    std::size_t uses = 0;
    std::string idleSince = {};  ///< why no finding uses it; empty if none fits

    /// Takes a finding that it covers, unless an exception before it, `taker`, did. Then it is `taker`.
    void offer(RuleFinding const& finding, Exception const*& taker);
    /// "open-port at arms,in*".
    std::string text() const;
    /// Why no finding uses it, for people.
    std::string idleText() const;
    /// The same for those that accept the same findings.
    using Key = std::vector<std::string>;
    Key key() const;

private:
    bool fitsPlace(RuleFinding const& finding) const;
    bool accepts(RuleFinding const& finding) const;
    /// "2" or "values from 1 to 5".
    std::string acceptedText() const;
};

/// The file with the exceptions of a design: DESIGN.exceptions.yml, beside it.
std::string exceptionsPath(std::string const& design);

/// Whether there is anything at the path, if only a link to nothing.
bool hasExceptions(std::string const& path);

/// The exceptions of a file, in its order. A Failure says what is wrong with the file, and where: rule and reason are
/// required.
std::vector<Exception> readExceptions(std::string const& path);

}  // namespace vrltool::check
