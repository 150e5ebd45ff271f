#pragma once

#include <array>
#include <iosfwd>
#include <map>
#include <set>
#include <string>
#include <tuple>

#include "exchange/node.h"
#include "text/failure.h"
#include "text/json.h"

namespace vrltool::exchange {

/// Errors are what cannot be carried over; warnings are carried over and look wrong; notes say what is kept beside the
/// circuit.
enum class Severity { kError, kWarning, kNote };

/// What an import or export has to report, each thing once: the elements of an array share their places.
class Findings {
public:
    /// Adds a finding about a place in a file, or about the file. A hint such as "did you mean 'a'?" may follow.
    void add(Severity severity, std::string const& path, Mark const& mark, std::string const& text,
             std::string const& hint = "");

    std::size_t count(Severity severity) const { return counts[static_cast<std::size_t>(severity)]; }
    /// kFindings for errors and warnings; notes do not count.
    Outcome outcome() const { return all.size() > count(Severity::kNote) ? Outcome::kFindings : Outcome::kFine; }

    /// One line each: "PATH:LINE:COLUMN: error: TEXT". Errors and warnings first, by their places, those without a
    /// place last; then the notes in the same way.
    void write(std::ostream& os) const;
    /// [{"severity", "file", "line", "column", "text"}], in the same order.
    Json json() const;

private:
    struct Finding {
        Severity severity;
        std::string path;
        Mark mark;
        std::string text;
    };

    std::multimap<std::tuple<bool, bool, std::string, int, int>, Finding> all;  ///< in the order of the output
    std::set<std::string> known;
    std::array<std::size_t, 3> counts{};
};

}  // namespace vrltool::exchange
