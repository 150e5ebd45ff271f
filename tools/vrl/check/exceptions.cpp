#include "check/exceptions.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <limits>
#include <map>
#include <optional>

#include "text/number.h"
#include "text/pattern.h"
#include "text/phrases.h"

namespace vrltool::check {

namespace {

using values::Node;
using values::Shapes;

constexpr char const kMembers[] =
    "each has a 'rule' and a 'reason', and may have 'element', 'port', 'parameter', and a 'value' or 'min' and 'max'";

void failOnMisfit(std::string const& path, Node const& whole, std::string const& what, Shapes const& shapes) {
    auto const wrong = values::misfits(whole, what, shapes);
    if (!wrong.empty()) values::fail(path, wrong.front().mark, wrong.front().text, wrong.front().hint);
}

void checkShape(std::string const& path, Node const& exception) {
    static Shapes const shapes{{"rule", "t"},   {"element", "t"}, {"port", "t"}, {"parameter", "t"},
                               {"reason", "t"}, {"value", "bt#"}, {"min", "#"},  {"max", "#"}};
    if (!isMap(exception)) values::fail(path, exception.mark, wrongKind("an exception", exception, "a map"), kMembers);
    failOnMisfit(path, exception, "an exception", shapes);
    bool const bounds = member(exception, "min").isDefined() || member(exception, "max").isDefined();
    if (bounds && member(exception, "value").isDefined())
        values::fail(path, exception.mark, "the exception has a value and bounds",
                     "give the value, or 'min' and 'max'");
}

/// A member that has to be there and must not be empty.
std::string needed(std::string const& path, Node const& exception, char const* name) {
    Node const& node = member(exception, name);
    if (node.text.find_first_not_of(' ') == std::string::npos)
        values::fail(path, exception.mark, std::string("the exception has no ") + name, kMembers);
    return node.text;
}

Rule const& knownRule(std::string const& path, Node const& exception) {
    std::string const id = needed(path, exception, "rule");
    for (Rule const& rule : allRules())
        if (id == rule.id) return rule;
    values::fail(path, member(exception, "rule").mark, "there is no rule " + inQuotes(id),
                 namesHint(id, ruleIds(), "the rules"));
}

bool fitsOrAny(std::string const& name, std::string const& pattern) {
    return pattern.empty() || name == pattern || fits(name, pattern);
}

double numberOf(Node const& node) {
    if (node.text == ".nan") return std::numeric_limits<double>::quiet_NaN();
    if (node.text == ".inf") return std::numeric_limits<double>::infinity();
    if (node.text == "-.inf") return -std::numeric_limits<double>::infinity();
    return numberFrom(node.text);
}

std::optional<double> numberOf(RuleFinding const& finding) {
    if (!finding.facts.parameter) return {};
    ParameterValue const& value = finding.facts.parameter->value;
    if (auto const* const number = std::get_if<double>(&value)) return *number;
    if (auto const* const number = std::get_if<int>(&value)) return *number;
    return {};
}

/// The value of a parameter with its unit, or what the finding has in common with others.
std::string valueOf(RuleFinding const& finding) {
    if (!finding.facts.parameter) return finding.facts.common;
    Parameter const& parameter = *finding.facts.parameter;
    bool const hasUnit = !parameter.unit.empty() && parameter.unit != "1";
    return parameter.text + (hasUnit ? " " + parameter.unit : "");
}

/// "arms/upper.width".
std::string placeText(Place const& place) {
    std::string const name = place.port.empty() ? place.parameter : place.port;
    if (place.element.empty() && name.empty()) return "the design";
    if (place.element.empty() || name.empty()) return place.element + name;
    return place.element + (place.port.empty() ? "." : ",") + name;
}

/// "bend.radius is 2 um".
std::string foundText(RuleFinding const& finding) {
    std::string const place = placeText(finding.place);
    if (finding.facts.parameter) return place + " is " + valueOf(finding);
    return "what was found at " + place + " is " + inQuotes(finding.common());
}

/// Says of each that repeats another one which that is.
void noteRepeated(std::vector<Exception>& exceptions) {
    std::map<Exception::Key, Exception const*> first;
    for (Exception& each : exceptions) {
        auto const [known, isNew] = first.emplace(each.key(), &each);
        if (!isNew) each.idleSince = "it repeats the exception of line " + std::to_string(known->second->line);
    }
}

bool isValue(RuleFinding const& finding, Node const& value) {
    auto const number = numberOf(finding);
    if (number && value.kind == values::Kind::kNumber) {
        double const accepted = numberOf(value);
        return *number == accepted || (std::isnan(*number) && std::isnan(accepted));
    }
    std::string const text = valueOf(finding);
    return !text.empty() &&
           (value.text == text || (finding.facts.parameter && value.text == finding.facts.parameter->text));
}

}  // namespace

bool Exception::fitsPlace(RuleFinding const& finding) const {
    auto const fits = [&](Place const& at) {
        return fitsOrAny(at.element, element) && fitsOrAny(at.port, port) && fitsOrAny(at.parameter, parameter);
    };
    auto const& others = finding.facts.others;
    return finding.rule == rule && (fits(finding.place) || std::any_of(others.begin(), others.end(), fits));
}

bool Exception::accepts(RuleFinding const& finding) const {
    if (value.isDefined()) return isValue(finding, value);
    if (!min.isDefined() && !max.isDefined()) return true;
    auto const number = numberOf(finding);
    return number && (!min.isDefined() || *number >= numberOf(min)) && (!max.isDefined() || *number <= numberOf(max));
}

void Exception::offer(RuleFinding const& finding, Exception const*& taker) {
    if (!fitsPlace(finding)) return;
    std::string why;
    if (!accepts(finding)) {
        why = "it accepts " + acceptedText() + ", and " + foundText(finding);
    } else if (taker) {
        why = "the exception of line " + std::to_string(taker->line) + " covers the same";
    } else {
        ++uses;
        taker = this;
    }
    if (idleSince.empty()) idleSince = why;
}

std::string Exception::acceptedText() const {
    if (value.isDefined()) return isString(value) ? inQuotes(value.text) : value.text;
    std::string const least = min.isDefined() ? "from " + min.text : "";
    std::string const most = max.isDefined() ? (least.empty() ? "up to " : " to ") + max.text : "";
    return "values " + least + most;
}

std::string Exception::text() const {
    std::string where = element.empty() ? "any element" : element;
    if (!port.empty()) where += "," + port;
    if (!parameter.empty()) where += "." + parameter;
    return std::string(rule->id) + " at " + where;
}

std::string Exception::idleText() const {
    return (idleSince.empty() ? "nothing needs the exception any more" : idleSince) + ": " + text();
}

Exception::Key Exception::key() const { return {rule->id, element, port, parameter, value.text, min.text, max.text}; }

std::string exceptionsPath(std::string const& design) { return design + ".exceptions.yml"; }

bool hasExceptions(std::string const& path) {
    std::error_code none;
    return std::filesystem::exists(std::filesystem::symlink_status(path, none));
}

std::vector<Exception> readExceptions(std::string const& path) {
    std::error_code none;
    if (std::filesystem::is_regular_file(path, none) && std::filesystem::file_size(path, none) == 0) return {};
    Node const file = values::readFile(path);
    if (isNull(file)) return {};  // comments only
    if (!isMap(file)) values::fail(path, file.mark, wrongKind("the file", file, "a map with 'exceptions'"));
    failOnMisfit(path, file, "the file", {{"exceptions", "nl"}});
    std::vector<Exception> exceptions;
    for (auto const& part : member(file, "exceptions")) {
        Node const& given = part.second;
        checkShape(path, given);
        auto const text = [&](char const* name) { return member(given, name).text; };
        exceptions.push_back({&knownRule(path, given), text("element"), text("port"), text("parameter"),
                              member(given, "value"), member(given, "min"), member(given, "max"),
                              needed(path, given, "reason"), values::placeText(path, given.mark), given.mark.line});
    }
    noteRepeated(exceptions);
    return exceptions;
}

}  // namespace vrltool::check
