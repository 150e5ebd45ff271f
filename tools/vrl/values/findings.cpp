#include "values/findings.h"

#include <nlohmann/json.hpp>
#include <ostream>

#include "text/table.h"
#include "text/utf8.h"

namespace vrltool::values {

namespace {

/// The text with its names; a very long one is cut.
std::string shown(std::string text, std::set<std::string> const& names) {
    if (!names.empty()) text += ": " + listText({names.begin(), names.end()}, 20);
    if (text.size() > 2000) {
        text.resize(2000);
        text.resize(firstStrayByte(text));
        text += "...";
    }
    return printable(text);
}

}  // namespace

Outcome Findings::outcome() const {
    return all.empty() || all.begin()->first.severity == Severity::kNote ? Outcome::kFine : Outcome::kFindings;
}

void Findings::write(std::ostream& os) const {
    for (auto const& [finding, names] : all)
        os << placeText(finding.path, finding.mark) << ": " << severityWord(finding.severity) << ": "
           << shown(finding.text, names) << '\n';
}

Json Findings::json() const {
    Json list = Json::array();
    for (auto const& [finding, names] : all) {
        Json json{{"severity", severityWord(finding.severity)}, {"file", finding.path}};
        if (!finding.mark.isNull()) {
            json["line"] = finding.mark.line;
            json["column"] = finding.mark.column;
        }
        json["text"] = shown(finding.text, names);
        list.push_back(std::move(json));
    }
    return list;
}

}  // namespace vrltool::values
