#include "check/exceptions.h"

#include <filesystem>

#include "text/pattern.h"
#include "text/phrases.h"
#include "values/node.h"

namespace vrltool::check {

namespace {

using values::Node;
using values::Shapes;

Shapes const& shapesOfFile() {
    static Shapes const shapes{
        {"exceptions",
         "l",
         {{"*", "m", {{"rule", "t"}, {"element", "t"}, {"port", "t"}, {"parameter", "t"}, {"reason", "t"}}}}}};
    return shapes;
}

/// A member that has to be there and must not be empty.
std::string needed(std::string const& path, Node const& exception, char const* name) {
    Node const& node = member(exception, name);
    if (node.text.find_first_not_of(' ') == std::string::npos)
        values::fail(path, exception.mark, std::string("the exception has no ") + name,
                     "each has a 'rule' and a 'reason', and may have 'element', 'port' and 'parameter'");
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

}  // namespace

bool Exception::covers(RuleFinding const& finding) const {
    Place const& at = finding.place;
    return finding.rule == rule && fitsOrAny(at.element, element) && fitsOrAny(at.port, port) &&
           fitsOrAny(at.parameter, parameter);
}

std::string Exception::text() const {
    std::string where = element.empty() ? "any element" : element;
    if (!port.empty()) where += "," + port;
    if (!parameter.empty()) where += "." + parameter;
    return std::string(rule->id) + " at " + where;
}

std::string exceptionsPath(std::string const& design) { return design + ".exceptions.yml"; }

std::vector<Exception> readExceptions(std::string const& design) {
    std::string const path = exceptionsPath(design);
    std::error_code none;
    if (!std::filesystem::exists(std::filesystem::symlink_status(path, none))) return {};
    Node const file = values::readFile(path);
    if (!isMap(file)) values::fail(path, file.mark, wrongKind("the file", file, "a map with 'exceptions'"));
    auto const wrong = values::misfits(file, "the exceptions", shapesOfFile());
    if (!wrong.empty()) values::fail(path, wrong.front().mark, wrong.front().text, wrong.front().hint);
    std::vector<Exception> exceptions;
    for (auto const& part : member(file, "exceptions")) {
        Node const& given = part.second;
        auto const text = [&](char const* name) { return member(given, name).text; };
        exceptions.push_back({&knownRule(path, given), text("element"), text("port"), text("parameter"),
                              needed(path, given, "reason"), placeText(path, given.mark)});
    }
    return exceptions;
}

}  // namespace vrltool::check
