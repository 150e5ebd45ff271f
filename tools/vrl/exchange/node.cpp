#include "exchange/node.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <set>

#include "text/near_names.h"

namespace vrltool::exchange {

namespace {

/// A string in double quotes that both languages read: JSON, in which a delete character is no control character.
std::string quoted(std::string const& text) {
    std::string result = nlohmann::json(text).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
    for (auto at = result.find('\x7F'); at != std::string::npos; at = result.find('\x7F', at))
        result.replace(at, 1, "\\u007f");
    return result;
}

/// Whether every reader of YAML takes the string, written plainly, for this very string. It begins with a letter, since
/// all else may be a number of some version of YAML; and some words are truth values in version 1.1.
bool isPlain(std::string const& text) {
    static std::set<std::string> const words{"y", "n", "yes", "no", "on", "off", "true", "false", "null"};
    static std::string const letters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ_";
    if (text.empty() || letters.find(text[0]) == std::string::npos) return false;
    if (text.find_first_not_of(letters + "0123456789/.,<>()+-") != std::string::npos) return false;
    std::string small = text.substr(0, 6);
    for (char& c : small) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
    return words.count(small) == 0;
}

std::string stringWritten(std::string const& text, Format format) {
    return format == Format::kYaml && isPlain(text) ? text : quoted(text);
}

/// Readers of YAML 1.1 take "1e-09" for a string: they want a point and a sign.
std::string numberWritten(std::string const& text, Format format) {
    auto const odd = text.find_first_of("in"), exponent = text.find_first_of("eE");  // "-.inf", ".nan"
    if (odd != std::string::npos && format == Format::kJson)
        return quoted((text[0] == '-' ? "-" : "") + text.substr(odd));
    if (format != Format::kYaml || odd != std::string::npos || exponent == std::string::npos) return text;
    std::string const point = text.find('.') == std::string::npos ? ".0" : "";
    std::string const sign = text[exponent + 1] == '-' || text[exponent + 1] == '+' ? "" : "+";
    return text.substr(0, exponent) + point + "e" + sign + text.substr(exponent + 1);
}

std::string leafWritten(Node const& node, Format format) {
    if (isNull(node)) return "null";
    if (isString(node)) return stringWritten(node.Scalar(), format);
    if (!node.IsScalar()) return node.IsMap() ? "{}" : "[]";
    return kindOf(node) == Kind::kNumber ? numberWritten(node.Scalar(), format) : node.Scalar();
}

/// Writes a value after what has been written; `indent` is that of the line.
void writeJson(std::string& out, Node const& node, Format format, std::size_t indent) {
    if (node.size() == 0) {
        out += leafWritten(node, format);
        return;
    }
    bool const map = node.IsMap(), line = format == Format::kLine;
    auto const start = [&](std::size_t column) { return line ? "" : '\n' + std::string(column, ' '); };
    char separator = map ? '{' : '[';
    for (auto const& part : node) {
        out += separator + start(indent + 2);
        if (map) out += quoted(part.first.Scalar()) + ": ";
        writeJson(out, map ? part.second : part, format, indent + 2);
        separator = ',';
    }
    out += start(indent) + (map ? '}' : ']');
}

/// Writes a value in lines; the cursor is at the start of a line, or after "- ".
void writeYaml(std::string& out, Node const& node, std::size_t indent) {
    if (node.size() == 0) out += leafWritten(node, Format::kYaml) + '\n';
    std::string start;
    for (auto const& part : node) {
        bool const map = node.IsMap();
        Node const& value = map ? part.second : part;
        std::size_t const column = map && value.IsSequence() ? indent : indent + 2;
        out += start + (map ? stringWritten(part.first.Scalar(), Format::kYaml) + ":" : "-");
        out += !map || value.size() == 0 ? " " : '\n' + std::string(column, ' ');
        writeYaml(out, value, column);
        start = std::string(indent, ' ');
    }
}

}  // namespace

Kind kindOf(Node const& node) {
    if (node.IsMap()) return Kind::kMap;
    if (node.IsSequence()) return Kind::kList;
    if (!node.IsScalar()) return Kind::kNull;
    if (node.Tag() == "!") return Kind::kString;
    return node.Scalar() == "true" || node.Scalar() == "false" ? Kind::kBool : Kind::kNumber;
}

char const* kindWord(Kind kind) {
    static char const* const words[] = {"null", "a truth value", "a number", "a string", "a list", "a map"};
    return words[static_cast<int>(kind)];
}

std::string wrongKind(std::string const& what, Node const& node, std::string const& wanted) {
    return what + " is " + kindWord(kindOf(node)) + ", where " + wanted + " belongs";
}

Shape const* find(std::vector<Shape> const& shapes, std::string const& name) {
    auto const found = std::find_if(shapes.begin(), shapes.end(), [&](Shape const& s) { return s.name == name; });
    return found == shapes.end() ? nullptr : &*found;
}

std::string misfit(std::string const& what, Node const& node, std::string_view kinds) {
    static std::string const letters = "nb#tlm";
    if (kinds.empty() || kinds.find(letters[static_cast<std::size_t>(kindOf(node))]) != kinds.npos) return {};
    auto const wanted = static_cast<Kind>(letters.find(kinds.back()));
    return wrongKind(what, node, wanted == Kind::kBool ? "true or false" : kindWord(wanted));
}

std::string nearName(std::vector<Shape> const& shapes, std::string const& wrong) {
    std::vector<std::string> names;
    for (Shape const& shape : shapes) names.push_back(shape.name);
    return didYouMean(wrong, names);
}

Node stringNode(std::string const& text) {
    Node node(text);
    node.SetTag("!");
    return node;
}

Node newList(std::vector<Node> const& items) {
    Node list(YAML::NodeType::Sequence);
    for (Node const& item : items) list.push_back(item);
    return list;
}

Node newMap(std::initializer_list<std::pair<char const*, Node>> members) {
    Node map(YAML::NodeType::Map);
    for (auto const& entry : members)
        if (!isNull(entry.second)) map.force_insert(std::string(entry.first), entry.second);
    return map;
}

Node member(Node const& map, std::string_view name) {
    static Node const none(YAML::NodeType::Undefined);
    if (map.IsMap())
        for (auto const& entry : map)
            if (entry.first.Scalar() == name) return entry.second;
    return none;
}

void append(Node& target, Node const& source) {
    if (!isMap(source)) return;
    for (auto const& part : source) target.force_insert(part.first, part.second);
}

std::string placeText(std::string const& path, Mark const& mark) {
    if (mark.is_null()) return path;
    return path + ":" + std::to_string(mark.line + 1) + ":" + std::to_string(mark.column + 1);
}

std::string written(Node const& node, Format format) {
    std::string out;
    if (format == Format::kYaml)
        writeYaml(out, node, 0);
    else
        writeJson(out, node, format, 0);
    return format == Format::kJson ? out + '\n' : out;
}

}  // namespace vrltool::exchange
