#include <nlohmann/json.hpp>
#include <set>

#include "exchange/node.h"
#include "text/failure.h"

namespace vrltool::exchange {

namespace {

char const* const kNumber = "vrl::number";

bool isLeaf(Node const& node) { return node.size() == 0; }

/// A text in double quotes that both languages read: JSON, in which a delete character is no control character.
std::string quoted(std::string const& text) {
    std::string result = nlohmann::json(text).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
    for (auto at = result.find('\x7F'); at != std::string::npos; at = result.find('\x7F', at))
        result.replace(at, 1, "\\u007f");
    return result;
}

/// Whether every reader of YAML takes the text, written plainly, for this very text. It begins with a letter, since all
/// else may be a number of some version of YAML; and some words are truth values in version 1.1.
bool isPlain(std::string const& text) {
    static std::set<std::string> const words{"y", "n", "yes", "no", "on", "off", "true", "false", "null"};
    static std::string const letters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ_";
    if (text.empty() || letters.find(text[0]) == std::string::npos) return false;
    if (text.find_first_not_of(letters + "0123456789/.,<>()+-") != std::string::npos) return false;
    std::string small = text.substr(0, 6);
    for (char& c : small) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
    return words.count(small) == 0;
}

std::string textWritten(std::string const& text, Format format) {
    return format == Format::kYaml && isPlain(text) ? text : quoted(text);
}

/// Readers of YAML 1.1 take "1e-09" for a text: they want a point and a sign.
std::string numberWritten(std::string const& text, Format format) {
    auto const odd = text.find_first_of("in"), exponent = text.find_first_of("eE");  // "-.inf", ".nan"
    if (odd != std::string::npos && format == Format::kLine)
        return std::string("{\"") + kNumber + "\":\"" + text + "\"}";
    if (odd != std::string::npos && format == Format::kJson)
        return quoted((text[0] == '-' ? "-" : "") + text.substr(odd));
    if (format != Format::kYaml || odd != std::string::npos || exponent == std::string::npos) return text;
    std::string const point = text.find('.') == std::string::npos ? ".0" : "";
    std::string const sign = text[exponent + 1] == '-' || text[exponent + 1] == '+' ? "" : "+";
    return text.substr(0, exponent) + point + "e" + sign + text.substr(exponent + 1);
}

std::string leafWritten(Node const& node, Format format) {
    if (node.IsMap()) return "{}";
    if (node.IsSequence()) return "[]";
    if (isText(node)) return textWritten(node.Scalar(), format);
    if (isNull(node)) return "null";
    return kindOf(node) == Kind::kNumber ? numberWritten(node.Scalar(), format) : node.Scalar();
}

/// Writes a value behind what has been written; `indent` is that of the line.
void writeJson(std::string& out, Node const& node, Format format, std::size_t indent) {
    if (isLeaf(node)) {
        out += leafWritten(node, format);
        return;
    }
    bool const map = node.IsMap(), line = format == Format::kLine;
    auto const start = [&](std::size_t column) { return line ? "" : '\n' + std::string(column, ' '); };
    char separator = map ? '{' : '[';
    for (auto const& part : node) {
        out += separator + start(indent + 2);
        if (map) out += quoted(part.first.Scalar()) + (line ? ":" : ": ");
        writeJson(out, map ? part.second : part, format, indent + 2);
        separator = ',';
    }
    out += start(indent) + (map ? '}' : ']');
}

/// Writes a value in lines; the cursor is at the start of a line, or behind "- ".
void writeYaml(std::string& out, Node const& node, std::size_t indent) {
    if (isLeaf(node)) out += leafWritten(node, Format::kYaml) + '\n';
    std::string start;
    for (auto const& part : node) {
        bool const map = node.IsMap();
        Node const& value = map ? part.second : part;
        std::size_t const column = map && value.IsSequence() ? indent : indent + 2;
        out += start + (map ? textWritten(part.first.Scalar(), Format::kYaml) + ":" : "-");
        out += !map || isLeaf(value) ? " " : '\n' + std::string(column, ' ');
        writeYaml(out, value, column);
        start = std::string(indent, ' ');
    }
}

Node withNumbers(Node const& node) {
    Node const number = member(node, kNumber);
    if (number.IsDefined() && node.size() == 1) return plainNode(number.Scalar());
    Node result(node.Type());
    for (auto const& part : node)
        node.IsMap() ? result.force_insert(part.first, withNumbers(part.second)) : result.push_back(withNumbers(part));
    return isLeaf(node) ? node : result;
}

}  // namespace

std::string written(Node const& node, Format format) {
    std::string out;
    if (format == Format::kYaml)
        writeYaml(out, node, 0);
    else
        writeJson(out, node, format, 0);
    return format == Format::kJson ? out + '\n' : out;
}

Node valueOfLine(std::string const& line) {
    try {
        Node const value = readJson("", line);
        return line.find(kNumber) == std::string::npos ? value : withNumbers(value);
    } catch (Failure const&) {
        return {};
    }
}

}  // namespace vrltool::exchange
