#pragma once

#include <iosfwd>
#include <set>
#include <string>

#include "exchange/node.h"
#include "text/failure.h"
#include "text/finding.h"
#include "text/json.h"

namespace vrltool::exchange {

/// A finding with the place that it is about: a file, and unless it is about all of it, a mark in it.
struct PlacedFinding {
    Severity severity;
    std::string path;
    Mark mark;
    std::string text;  ///< what there is to say, and a hint

    /// Errors and warnings first, by their places, those without a place last; then the notes in the same way.
    bool operator<(PlacedFinding const& other) const;
};

/// What an import or export has to report, each thing once: the elements of an array share their places.
///
/// Errors are what cannot be carried over; warnings are carried over and look wrong, or are lost; notes say what is
/// kept beside the circuit.
class Findings {
public:
    /// Adds a finding about a place in a file, or about the file. A hint such as "did you mean 'a'?" may follow.
    void add(Severity severity, std::string const& path, Mark const& mark, std::string const& text,
             std::string const& hint = "");

    std::size_t errors() const;
    /// kFindings for errors and warnings; notes do not count.
    Outcome outcome() const;

    /// One line each: "PATH:LINE:COLUMN: error: TEXT".
    void write(std::ostream& os) const;
    /// [{"severity", "file", "line", "column", "text"}], in the same order.
    Json json() const;

private:
    std::set<PlacedFinding> all;
};

}  // namespace vrltool::exchange
