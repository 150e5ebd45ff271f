#pragma once

#include <string>
#include <vector>

#include "circuit/parameters.h"
#include "design/saved_changes.h"
#include "setting/target.h"
#include "text/finding.h"

namespace vrltool::setting {

/// What became of one target.
struct Setting {
    Target target;
    Parameter before, after;       ///< of a parameter
    std::string oldName, newName;  ///< of a choice; empty for none
    bool changed = false;

    /// "2 um -> 20 um", or the one value if nothing changed.
    std::string text() const;
};

/// What the words of a command line make of a design.
struct Settings {
    std::vector<Assignment> assignments;
    std::vector<Setting> settings;  ///< in the order of the words, then of the elements
    std::vector<Finding> findings;  ///< what forbids it, and what was forced or cannot be known
    SavedChanges changes;

    bool forbidden() const;
};

/// Does all of it in memory. `kind`, if it is not empty, leaves elements of other kinds alone. `force` accepts values
/// out of range and names that a foundry does not have.
Settings setAll(Design const& design, std::vector<std::string> const& words, std::string const& kind, bool force);

}  // namespace vrltool::setting
