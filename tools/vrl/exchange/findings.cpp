#include "exchange/findings.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <ostream>
#include <tuple>

#include "text/table.h"
#include "text/utf8.h"

namespace vrltool::exchange {

bool PlacedFinding::operator<(PlacedFinding const& other) const {
    auto const key = [](PlacedFinding const& f) {
        return std::tuple<bool, bool, std::string const&, int, int, std::string const&>(
            f.severity == Severity::kNote, f.mark.is_null(), f.path, f.mark.line, f.mark.column, f.text);
    };
    return key(*this) < key(other);
}

void Findings::add(Severity severity, std::string const& path, Mark const& mark, std::string const& text,
                   std::string const& hint) {
    std::string shown = hint.empty() ? text : text + "; " + hint;
    if (shown.size() > 2000) {
        shown.resize(2000);
        shown.resize(firstStrayByte(shown));
        shown += "...";
    }
    all.insert({severity, path, mark, printable(shown)});
}

std::size_t Findings::errors() const {
    return static_cast<std::size_t>(
        std::count_if(all.begin(), all.end(), [](PlacedFinding const& f) { return f.severity == Severity::kError; }));
}

Outcome Findings::outcome() const {
    return all.empty() || all.begin()->severity == Severity::kNote ? Outcome::kFine : Outcome::kFindings;
}

void Findings::write(std::ostream& os) const {
    for (PlacedFinding const& finding : all)
        os << placeText(finding.path, finding.mark) << ": " << severityWord(finding.severity) << ": " << finding.text
           << '\n';
}

Json Findings::json() const {
    Json list = Json::array();
    for (PlacedFinding const& finding : all) {
        Json json{{"severity", severityWord(finding.severity)}, {"file", finding.path}};
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
