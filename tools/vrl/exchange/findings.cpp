#include "exchange/findings.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <ostream>
#include <tuple>
#include <utility>

#include "exchange/reader.h"
#include "text/table.h"

namespace vrltool::exchange {

namespace {

char const* word(Severity severity) {
    static char const* const words[] = {"error", "warning", "note"};
    return words[static_cast<int>(severity)];
}

std::string withHint(std::string const& text, std::string const& hint) {
    return hint.empty() ? text : text + "; " + hint;
}

/// A line that people can read, whatever names are in it.
std::string line(std::string text) {
    constexpr std::size_t kLongest = 2000;
    if (text.size() > kLongest) {
        std::size_t end = kLongest;
        while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) --end;  // no half of a character
        text = text.substr(0, end) + "...";
    }
    return printable(text);
}

}  // namespace

void Findings::add(Severity severity, std::string const& path, Mark const& mark, std::string const& text) {
    Finding finding{severity, path, mark, line(text)};
    if (!told.insert(placeText(path, mark) + ": " + finding.text).second) return;
    all.push_back(std::move(finding));
    ++counts[static_cast<std::size_t>(severity)];
}

void Findings::error(std::string const& path, Mark const& mark, std::string const& text, std::string const& hint) {
    add(Severity::kError, path, mark, withHint(text, hint));
}

void Findings::warning(std::string const& path, Mark const& mark, std::string const& text, std::string const& hint) {
    add(Severity::kWarning, path, mark, withHint(text, hint));
}

void Findings::note(std::string const& path, Mark const& mark, std::string const& text) {
    add(Severity::kNote, path, mark, text);
}

Outcome Findings::outcome() const {
    return count(Severity::kError) + count(Severity::kWarning) > 0 ? Outcome::kFindings : Outcome::kFine;
}

std::vector<Finding const*> Findings::sorted() const {
    std::vector<Finding const*> result;
    result.reserve(all.size());
    for (Finding const& finding : all) result.push_back(&finding);
    std::stable_sort(result.begin(), result.end(), [](Finding const* a, Finding const* b) {
        auto const order = [](Finding const* f) {
            return std::tuple(f->severity == Severity::kNote, f->mark.line == 0, f->mark.line == 0 ? "" : f->path,
                              f->mark.line, f->mark.column);
        };
        return order(a) < order(b);
    });
    return result;
}

void Findings::write(std::ostream& os) const {
    for (Finding const* finding : sorted())
        os << placeText(finding->path, finding->mark) << ": " << word(finding->severity) << ": " << finding->text
           << '\n';
}

Json Findings::json() const {
    Json list = Json::array();
    for (Finding const* finding : sorted()) {
        Json json{{"severity", word(finding->severity)}, {"file", finding->path}};
        if (finding->mark.line > 0) {
            json["line"] = finding->mark.line;
            json["column"] = finding->mark.column;
        }
        json["text"] = finding->text;
        list.push_back(std::move(json));
    }
    return list;
}

}  // namespace vrltool::exchange
