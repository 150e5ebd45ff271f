#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace vrltool {

/// Text in columns, each as wide as its widest cell in characters of UTF-8, two blanks apart; no trailing blanks.
///
/// Control characters, on which a terminal would act, are shown as "\xNN".
class Table {
public:
    /// Without a heading if there is none.
    explicit Table(std::vector<std::string> headings = {});
    /// Adds a row; missing cells are empty.
    void add(std::vector<std::string> cells);
    /// Whether there is any row besides the heading.
    bool empty() const { return rows.size() == headingRows; }
    /// Writes each row indented by `indent` blanks.
    void write(std::ostream& os, std::size_t indent = 0) const;

private:
    std::size_t headingRows;
    std::vector<std::vector<std::string>> rows;
};

/// A text with its control characters as "\xNN", fit for a terminal and for one line.
std::string printable(std::string const& text);

/// "1 block", "2 blocks".
std::string counted(std::size_t count, std::string const& singular, std::string const& plural = "");

}  // namespace vrltool
