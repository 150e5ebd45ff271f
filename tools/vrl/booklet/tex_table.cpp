#include "booklet/tex_table.h"

#include <ostream>

#include "booklet/tex_text.h"
#include "text/number.h"

namespace vrltool::booklet {

namespace {

constexpr std::size_t kMostLetters = 400;

void writeRow(std::ostream& os, std::vector<std::string> const& cells) {
    for (std::size_t i = 0; i < cells.size(); ++i) os << (i > 0 ? " & " : "") << cells[i];
    os << " \\\\\n";
}

}  // namespace

std::string cellText(std::string const& text) { return texText(shortened(text, kMostLetters)); }

std::string cellName(std::string const& name) { return texName(shortened(name, kMostLetters)); }

void TexTable::write(std::ostream& os) const {
    std::vector<std::string> headings;
    os << "{\\small\n\\begin{longtable}{@{}";
    for (Column const& column : columns) {
        os << column.type << '{' << numberText(column.share) << '}';
        headings.push_back("\\vrlhead{" + column.heading + "}");
    }
    os << "@{}}\n\\toprule\n";
    writeRow(os, headings);
    os << "\\midrule\n\\endhead\n\\bottomrule\n\\endlastfoot\n";
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (i > 0 && groups.count(i) > 0) os << "\\addlinespace[2pt]\n";
        writeRow(os, rows[i]);
    }
    os << "\\end{longtable}}\n\n";
}

}  // namespace vrltool::booklet
