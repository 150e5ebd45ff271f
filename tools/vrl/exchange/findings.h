#pragma once

#include <array>
#include <iosfwd>
#include <set>
#include <string>
#include <vector>

#include "exchange/tree.h"
#include "text/failure.h"
#include "text/json.h"

namespace vrltool::exchange {

/// How much a finding weighs. Errors are what cannot be carried over; warnings are carried over and look wrong; notes
/// tell what is kept beside the circuit.
enum class Severity { kError, kWarning, kNote };

/// Something to be told of an import or export, with the place in its file.
struct Finding {
    Severity severity;
    std::string path;
    Mark mark;
    std::string text;
};

/// What there is to tell, each thing once: the elements of an array share their places.
class Findings {
public:
    /**@{*/
    /// Adds a finding. A hint such as "did you mean 'a'?" may follow.
    void error(std::string const& path, Mark const& mark, std::string const& text, std::string const& hint = "");
    void warning(std::string const& path, Mark const& mark, std::string const& text, std::string const& hint = "");
    void note(std::string const& path, Mark const& mark, std::string const& text);
    /**@}*/

    std::size_t count(Severity severity) const { return counts[static_cast<std::size_t>(severity)]; }
    /// Findings for errors and warnings; notes are none.
    Outcome outcome() const;

    /// One line each: "PATH:LINE:COLUMN: error: TEXT". Errors and warnings first, by their places, what has no place
    /// behind them; then the notes likewise.
    void write(std::ostream& os) const;
    /// [{"severity", "file", "line", "column", "text"}], in the same order.
    Json json() const;

private:
    void add(Severity severity, std::string const& path, Mark const& mark, std::string const& text);
    std::vector<Finding const*> sorted() const;

    std::vector<Finding> all;
    std::set<std::string> told;
    std::array<std::size_t, 3> counts{};
};

}  // namespace vrltool::exchange
