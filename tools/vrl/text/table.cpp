#include "text/table.h"

#include <algorithm>
#include <ostream>
#include <utility>

#include "text/utf8.h"

namespace vrltool {

namespace {

std::size_t width(std::string const& text) { return charactersOf(text).size(); }

std::vector<std::string> printableCells(std::vector<std::string> cells) {
    for (std::string& cell : cells) cell = printable(cell);
    return cells;
}

}  // namespace

Table::Table(std::vector<std::string> headings) : headingRows(headings.empty() ? 0 : 1) {
    if (headingRows) rows.push_back(printableCells(std::move(headings)));
}

void Table::add(std::vector<std::string> cells) { rows.push_back(printableCells(std::move(cells))); }

void Table::write(std::ostream& os, std::size_t indent) const {
    std::vector<std::size_t> widths;
    for (auto const& row : rows) {
        widths.resize(std::max(widths.size(), row.size()));
        for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], width(row[i]));
    }
    for (auto const& row : rows) {
        std::string line(indent, ' ');
        for (std::size_t i = 0; i < row.size(); ++i) line += row[i] + std::string(widths[i] - width(row[i]) + 2, ' ');
        line.erase(line.find_last_not_of(' ') + 1);
        os << line << '\n';
    }
}

std::string printable(std::string const& text) {
    static char const digits[] = "0123456789ABCDEF";
    auto const isControl = [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; };
    if (std::none_of(text.begin(), text.end(), isControl)) return text;
    std::string result;
    for (char const c : text) {
        auto const byte = static_cast<unsigned char>(c);
        if (isControl(c))
            result += std::string("\\x") + digits[byte >> 4] + digits[byte & 15];
        else
            result += c;
    }
    return result;
}

std::string counted(std::size_t count, std::string const& singular, std::string const& plural) {
    return std::to_string(count) + " " + (count == 1 ? singular : plural.empty() ? singular + "s" : plural);
}

}  // namespace vrltool
