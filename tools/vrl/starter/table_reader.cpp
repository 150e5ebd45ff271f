#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

#include "circuit/direction.h"
#include "starter/block_table.h"
#include "starter/table_values.h"
#include "text/near_names.h"
#include "text/phrases.h"
#include "text/table.h"

namespace vrltool::starter {

using namespace values;

namespace {

constexpr std::size_t kLongestTableName = 100;

Shapes const kParameters{{"*",
                          "m",
                          {{"type", "t"},
                           {"default", ""},
                           {"min", ""},
                           {"max", ""},
                           {"unit", "t"},
                           {"description", "t"},
                           {"tunable", "b"}}}};
Shapes const kPorts{{"*", "mt", {{"domain", "t"}, {"crossSection", "t"}, {"flow", "t"}}}};
Shapes const kElements{{"*", "mt", {{"kind", "t"}, {"parameters", "m"}}}};
Shapes const kBlock{{"description", "t"},
                    {"crossSection", "t"},
                    {"flow", "t"},
                    {"ports", "m", kPorts},
                    {"parameters", "m", kParameters},
                    {"elements", "m", kElements},
                    {"connections", "l", {{"*", "l", {{"*", "t"}}}}},
                    {"outer", "m", {{"*", "t"}}}};
Shapes const kTable{
    {"foundry", "t"},
    {"description", "t"},
    {"crossSection", "t"},
    {"flow", "t"},
    {"parameters", "m", kParameters},
    {"crossSections", "m", {{"*", "m", {{"description", "t"}, {"width", "#"}, {"parameters", "m", kParameters}}}}},
    {"flows", "m", {{"*", "m", {{"crossSection", "t"}, {"parameters", "m", kParameters}}}}},
    {"blocks", "m", {{"*", "m", kBlock}}}};

/// "element,port" in its two parts; without a comma all of it is the element.
TablePlace placeOf(std::string const& text) {
    auto const comma = text.rfind(',');
    if (comma == std::string::npos) return {text, ""};
    return {text.substr(0, comma), text.substr(comma + 1)};
}

class Reader {
public:
    Reader(std::string const& file, Findings& all) : path(file), findings(all) {}

    BlockTable table(Node const& root) {
        BlockTable table;
        table.foundry = needed(root, root.mark, "foundry", "the table").text;
        if (member(root, "foundry").isDefined()) checkName(member(root, "foundry"), "the foundry");
        table.description = description(root, root.mark, "the table");
        table.parameters = parameters(root);
        for (auto const& [name, section] : mapOf(member(root, "crossSections")))
            table.sections.push_back(sectionOf(name, section));
        for (auto const& [name, flow] : mapOf(member(root, "flows"))) {
            checkName(name, "a flow");
            table.flows.push_back({name.text, member(flow, "crossSection").text, parameters(flow)});
        }
        needed(root, root.mark, "blocks", "the table");
        for (auto const& [kind, block] : mapOf(member(root, "blocks"))) table.blocks.push_back(blockOf(kind, block));
        checkChoices(table, root);
        table.choice = choiceOf(root);
        return table;
    }

private:
    void error(Mark const& mark, std::string const& text, std::string const& hint = "") {
        findings.add(Severity::kError, path, mark, text, hint);
    }

    Node const& needed(Node const& map, Mark const& mark, std::string const& name, std::string const& what) {
        Node const& node = member(map, name);
        if (!node.isDefined()) error(mark, what + " has no '" + name + "'");
        return node;
    }

    /// A description, which is needed.
    std::string description(Node const& map, Mark const& mark, std::string const& what) {
        Node const& node = needed(map, mark, "description", what);
        if (node.isDefined() && node.text.empty()) error(node.mark, "the description of " + what + " is empty");
        return node.text;
    }

    /// A name: in one line, without blanks around it, and without what separates names elsewhere.
    void checkName(Node const& name, std::string const& what, char separator = '@') {
        std::string const& text = name.text;
        auto const isControl = [](unsigned char c) { return c < 0x20 || c == 0x7F; };
        if (text.empty()) return error(name.mark, what + " without a name");
        std::string const shown = inQuotes(printable(text));
        if (text.size() > kLongestTableName)
            error(name.mark, shown + " is too long for a name", "use 100 bytes at most");
        else if (std::any_of(text.begin(), text.end(), isControl))
            error(name.mark, shown + " has control characters", "give it a name in one line");
        else if (text.front() == ' ' || text.back() == ' ')
            error(name.mark, shown + " begins or ends with a blank");
        else if (text.find(separator) != std::string::npos)
            error(name.mark, shown + " has a '" + std::string(1, separator) + "', which separates names");
    }

    TableChoice choiceOf(Node const& node) { return {member(node, "crossSection").text, member(node, "flow").text}; }

    TableSection sectionOf(Node const& name, Node const& section) {
        checkName(name, "a cross section");
        std::string const what = "the cross section " + inQuotes(printable(name.text));
        Node const& width = needed(section, name.mark, "width", what);
        if (width.isDefined() && !(numberOf(width) > 0.0 && std::isfinite(numberOf(width))))
            error(width.mark, "the width of " + what + " is not above 0");
        return {name.text, description(section, name.mark, what), width, parameters(section)};
    }

    std::vector<TableParameter> parameters(Node const& owner) {
        std::vector<TableParameter> list;
        for (auto const& [name, given] : mapOf(member(owner, "parameters"))) list.push_back(parameterOf(name, given));
        return list;
    }

    TableParameter parameterOf(Node const& name, Node const& given) {
        checkName(name, "a parameter", ',');
        std::string const what = "the parameter " + inQuotes(printable(name.text));
        TableParameter parameter{name.text,
                                 needed(given, name.mark, "type", what).text,
                                 needed(given, name.mark, "default", what),
                                 member(given, "min"),
                                 member(given, "max"),
                                 member(given, "unit").text,
                                 description(given, name.mark, what),
                                 std::nullopt};
        Node const& tunable = member(given, "tunable");
        if (tunable.isDefined()) parameter.tunable = tunable.text == "true";
        Node const& type = member(given, "type");
        auto const& types = valueTypes();
        if (type.isDefined() && std::find(types.begin(), types.end(), type.text) == types.end())
            error(type.mark, inQuotes(printable(type.text)) + " is no type of " + what,
                  namesHint(type.text, types, "types"));
        else if (type.isDefined())
            checkValues(parameter, name, tunable, what);
        return parameter;
    }

    void checkValues(TableParameter const& parameter, Node const& name, Node const& tunable, std::string const& what) {
        bool const number = isNumberType(parameter.type);
        bool good = checkValue(parameter.value, parameter.type, "the default of " + what, false);
        if (number && parameter.unit.empty())
            error(name.mark, what + " is a number without a unit", "that of a bare number is \"1\"");
        if (tunable.isDefined() && !parameter.min.isDefined())
            error(tunable.mark, what + " is tunable without a range", "give it 'min' and 'max'");
        if (parameter.min.isDefined() != parameter.max.isDefined())
            return error(name.mark, what + " has one bound only", "an open end is .inf or -.inf");
        if (!parameter.min.isDefined()) return;
        if (!number) return error(parameter.min.mark, what + " has bounds and is no number");
        good = checkValue(parameter.min, parameter.type, "the minimum of " + what, true) && good;
        good = checkValue(parameter.max, parameter.type, "the maximum of " + what, true) && good;
        if (!good) return;
        double const value = numberOf(parameter.value), low = numberOf(parameter.min), high = numberOf(parameter.max);
        if (low > high)
            error(parameter.min.mark, "the minimum of " + what + " is above its maximum");
        else if (value < low || value > high)
            error(parameter.value.mark, "the default of " + what + " is outside of its range");
    }

    /// Whether a value is one of its type; reported if not.
    bool checkValue(Node const& value, std::string const& type, std::string const& what, bool bound) {
        if (!value.isDefined()) return false;
        std::string const why = whyNoValue(value, type, bound);
        if (!why.empty()) error(value.mark, what + " " + why);
        return why.empty();
    }

    TablePort portOf(Node const& name, Node const& given) {
        checkName(name, "a port", ',');
        Node const& domain =
            isMap(given) ? needed(given, name.mark, "domain", "the port " + inQuotes(name.text)) : given;
        auto const& domains = domainNames();
        if (domain.isDefined() && std::find(domains.begin(), domains.end(), domain.text) == domains.end())
            error(domain.mark, inQuotes(printable(domain.text)) + " is no domain",
                  namesHint(domain.text, domains, "domains"));
        if (domain.text == "Optics" && directionOf(name.text) == Direction::kNone)
            findings.add(Severity::kNote, path, name.mark,
                         "the optical port " + inQuotes(printable(name.text)) + " has no direction",
                         "begin inputs with \"in\" and outputs with \"out\", unless light goes both ways");
        return {name.text, domain.text, choiceOf(given)};
    }

    TableBlock blockOf(Node const& kind, Node const& given) {
        checkName(kind, "a block");
        TableBlock block;
        block.kind = kind.text;
        block.description = member(given, "description").text;
        block.choice = choiceOf(given);
        for (auto const& [name, port] : mapOf(member(given, "ports"))) block.ports.push_back(portOf(name, port));
        block.parameters = parameters(given);
        for (auto const& [name, element] : mapOf(member(given, "elements"))) {
            checkName(name, "an element", ',');
            TableElement one{
                name.text, isMap(element) ? needed(element, name.mark, "kind", "an element").text : element.text, {}};
            for (auto const& [parameter, value] : mapOf(member(element, "parameters")))
                one.settings.emplace_back(parameter.text, value);
            block.elements.push_back(one);
        }
        for (auto const& net : listOf(member(given, "connections"))) {
            block.connections.emplace_back();
            for (auto const& port : net.second) block.connections.back().push_back(placeOf(port.second.text));
        }
        for (auto const& [port, inside] : mapOf(member(given, "outer")))
            block.outer.emplace_back(port.text, placeOf(inside.text));
        return block;
    }

    /// The names of cross sections and flows have to be those of the table.
    void checkChoices(BlockTable const& table, Node const& root) {
        std::vector<std::string> sections, flows;
        for (TableSection const& section : table.sections) sections.push_back(section.name);
        for (TableFlow const& flow : table.flows) flows.push_back(flow.name);
        auto const check = [&](Node const& owner) {
            checkKnown(member(owner, "crossSection"), sections, "cross section");
            checkKnown(member(owner, "flow"), flows, "flow");
        };
        check(root);
        for (auto const& flow : mapOf(member(root, "flows"))) check(flow.second);
        for (auto const& block : mapOf(member(root, "blocks"))) {
            check(block.second);
            for (auto const& port : mapOf(member(block.second, "ports"))) check(port.second);
        }
    }

    void checkKnown(Node const& name, std::vector<std::string> const& known, std::string const& what) {
        if (!name.isDefined() || std::find(known.begin(), known.end(), name.text) != known.end()) return;
        error(name.mark, "the table has no " + what + " " + inQuotes(printable(name.text)),
              didYouMean(name.text, known));
    }

    std::string const& path;
    Findings& findings;
};

}  // namespace

std::vector<std::string> const& domainNames() {
    static std::vector<std::string> const names{"Unknown", "Signal",   "Optics",   "DC",
                                                "RF",      "Acoustic", "Mechanic", "Fluidics"};
    return names;
}

BlockTable readTable(std::string const& path, Findings& findings) {
    Node const root = readFile(path);
    if (!isMap(root)) fail(path, root.mark, wrongKind("the table", root, "a map"));
    auto const wrong = misfits(root, "the table", kTable);
    for (Misfit const& misfit : wrong) findings.add(Severity::kError, path, misfit.mark, misfit.text, misfit.hint);
    if (!wrong.empty()) return {};
    BlockTable const table = Reader(path, findings).table(root);
    if (findings.errors() == 0) checkComposites(table, root, path, findings);
    return table;
}

}  // namespace vrltool::starter
