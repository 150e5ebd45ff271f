#pragma once

#include <iosfwd>
#include <set>
#include <string>
#include <vector>

namespace vrltool::booklet {

/**@{*/
/// A text or a name for a cell. What would be too high for a page ends in an ellipsis.
std::string cellText(std::string const& text);
std::string cellName(std::string const& name);
/**@}*/

/// A table that may go on over pages, its heading on each.
class TexTable {
public:
    struct Column {
        char type;     ///< 'P' of prose or 'N' of names
        double share;  ///< of the width of the text
        std::string heading;
    };

    explicit TexTable(std::vector<Column> all) : columns(std::move(all)) {}
    /// Adds a row of LaTeX; as many cells as columns.
    void add(std::vector<std::string> cells) { rows.push_back(std::move(cells)); }
    /// The next row begins a group, with a gap above it.
    void beginGroup() { groups.insert(rows.size()); }
    void write(std::ostream& os) const;

private:
    std::vector<Column> columns;
    std::vector<std::vector<std::string>> rows;
    std::set<std::size_t> groups;  ///< the places of their first rows
};

}  // namespace vrltool::booklet
