#pragma once

#include <iosfwd>
#include <map>
#include <set>
#include <string>
#include <tuple>

#include "text/failure.h"
#include "text/finding.h"
#include "text/json.h"
#include "text/phrases.h"
#include "values/node.h"

namespace vrltool::values {

/// A finding with the place that it is about: a file, and unless it is about all of it, a mark in it.
struct PlacedFinding {
    Severity severity;
    std::string path;
    Mark mark;
    std::string text;  ///< what there is to say, and a hint

    /// Errors and warnings first, by their places, those without a place last; then the notes in the same way.
    bool operator<(PlacedFinding const& other) const { return key() < other.key(); }

private:
    std::tuple<bool, bool, std::string, int, int, std::string> key() const {
        return {severity == Severity::kNote, mark.isNull(), path, mark.line, mark.column, text};
    }
};

/// What a command has to report of the files that it reads, each thing once: the elements of an array share their
/// places. Errors are what cannot be carried over; warnings are carried over and look wrong, or are lost; notes say
/// what is kept beside the circuit.
class Findings {
public:
    /// Adds a finding about a place in a file, or about the file. A hint such as "did you mean 'a'?" may follow.
    void add(Severity severity, std::string const& path, Mark const& mark, std::string const& text,
             std::string const& hint = "") {
        auto const added = all.try_emplace({severity, path, mark, hint.empty() ? text : text + "; " + hint});
        errorCount += added.second && severity == Severity::kError;
    }
    /// Adds a name to the finding of that text, which lists all of them: "TEXT: 'a' and 'b'".
    void addName(Severity severity, std::string const& path, Mark const& mark, std::string const& text,
                 std::string const& name) {
        all[{severity, path, mark, text}].insert(inQuotes(name));
    }

    std::size_t errors() const { return errorCount; }
    /// kFindings for errors and warnings; notes do not count.
    Outcome outcome() const;

    /// One line each: "PATH:LINE:COLUMN: error: TEXT".
    void write(std::ostream& os) const;
    /// [{"severity", "file", "line", "column", "text"}], in the same order.
    Json json() const;

private:
    std::map<PlacedFinding, std::set<std::string>> all;  ///< with their names
    std::size_t errorCount = 0;
};

}  // namespace vrltool::values
