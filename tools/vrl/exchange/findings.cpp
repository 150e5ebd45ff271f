#include "exchange/findings.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <ostream>

#include "text/table.h"

namespace vrltool::exchange {

namespace {

char const* word(Severity severity) {
    static char const* const words[] = {"error", "warning", "note"};
    return words[static_cast<int>(severity)];
}

/// A line that people can read, whatever names are in it; no character of UTF-8 is cut in two.
std::string line(std::string const& text) {
    std::size_t end = std::min<std::size_t>(text.size(), 2000);
    while (end > 0 && end < text.size() && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) --end;
    return printable(text.substr(0, end) + (end < text.size() ? "..." : ""));
}

}  // namespace

void Findings::add(Severity severity, std::string const& path, Mark const& mark, std::string const& text,
                   std::string const& hint) {
    std::string const shown = line(hint.empty() ? text : text + "; " + hint);
    if (!known.insert(placeText(path, mark) + ": " + shown).second) return;
    bool const whole = mark.is_null();
    all.emplace(std::tuple(severity == Severity::kNote, whole, whole ? "" : path, mark.line, mark.column),
                Finding{severity, path, mark, shown});
    ++counts[static_cast<std::size_t>(severity)];
}

void Findings::write(std::ostream& os) const {
    for (auto const& [order, finding] : all)
        os << placeText(finding.path, finding.mark) << ": " << word(finding.severity) << ": " << finding.text << '\n';
}

Json Findings::json() const {
    Json list = Json::array();
    for (auto const& [order, finding] : all) {
        Json json{{"severity", word(finding.severity)}, {"file", finding.path}};
        if (!finding.mark.is_null()) {
            json["line"] = finding.mark.line + 1;
            json["column"] = finding.mark.column + 1;
        }
        json["text"] = finding.text;
        list.push_back(std::move(json));
    }
    return list;
}

}  // namespace vrltool::exchange
