#include "exchange/node.h"

#include <algorithm>
#include <set>

#include "text/failure.h"
#include "text/near_names.h"
#include "text/phrases.h"
#include "text/table.h"

namespace vrltool::exchange {

namespace {

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

/// Readers of YAML 1.1 take "1e-09" for a string: they want a point and a sign. JSON has no number for ".inf".
std::string numberWritten(std::string const& text, Format format) {
    auto const odd = text.find_first_of("in"), exponent = text.find_first_of("eE");  // "-.inf", ".nan"
    if (odd != std::string::npos && format == Format::kJson) return '"' + text + '"';
    if (format != Format::kYaml || odd != std::string::npos || exponent == std::string::npos) return text;
    std::string const point = text.find('.') == std::string::npos ? ".0" : "";
    std::string const sign = text[exponent + 1] == '-' || text[exponent + 1] == '+' ? "" : "+";
    return text.substr(0, exponent) + point + "e" + sign + text.substr(exponent + 1);
}

void writeString(YAML::Emitter& out, std::string const& text, Format format) {
    out << (format == Format::kYaml && isPlain(text) ? YAML::Auto : YAML::DoubleQuoted) << text;
}

void write(YAML::Emitter& out, Node const& node, Format format) {
    Kind const kind = kindOf(node);
    if (kind == Kind::kNull) out << YAML::LowerNull << YAML::Null;
    if (kind == Kind::kBool) out << node.Scalar();
    if (kind == Kind::kNumber) out << numberWritten(node.Scalar(), format);
    if (kind == Kind::kString) writeString(out, node.Scalar(), format);
    if (kind < Kind::kList) return;
    if (format != Format::kYaml || node.size() == 0) out << YAML::Flow;
    node.IsMap() ? out << YAML::BeginMap : out << YAML::BeginSeq;
    for (auto const& part : node) {
        if (node.IsMap()) writeString(out << YAML::Key, part.first.Scalar(), format);
        if (node.IsMap()) out << YAML::Value;
        write(out, node.IsMap() ? part.second : part, format);
    }
    node.IsMap() ? out << YAML::EndMap : out << YAML::EndSeq;
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

Shape const* find(Shapes const& shapes, std::string const& name) {
    auto const fits = [&](Shape const& shape) { return shape.name == name || shape.name == "*"; };
    auto const found = std::find_if(shapes.begin(), shapes.end(), fits);
    return found == shapes.end() ? nullptr : &*found;
}

std::vector<Misfit> misfits(Node const& whole, std::string const& what, Shapes const& shapes) {
    static std::string const letters = "nb#tlm";
    std::vector<Misfit> list;
    for (auto const& part : whole) {
        std::string const name = whole.IsMap() ? part.first.Scalar() : "";
        std::string const shown = whole.IsMap() ? inQuotes(printable(name)) : "a part";
        Node const value = whole.IsMap() ? part.second : part;
        Shape const* const shape = find(shapes, name);
        if (!shape) {
            std::vector<std::string> names;
            for (Shape const& known : shapes) names.push_back(known.name);
            list.push_back({part.first.Mark(), what + " has no member " + shown, didYouMean(name, names), true});
        } else if (shape->kinds.find(letters[static_cast<std::size_t>(kindOf(value))]) != std::string::npos) {
            auto const inner = shape->parts.empty() ? std::vector<Misfit>() : misfits(value, shown, shape->parts);
            list.insert(list.end(), inner.begin(), inner.end());
        } else if (!shape->kinds.empty()) {
            auto const wanted = static_cast<Kind>(letters.find(shape->kinds.back()));
            std::string const word = wanted == Kind::kBool ? "true or false" : kindWord(wanted);
            list.push_back({value.Mark(), wrongKind(shown + " of " + what, value, word), "", false});
        }
    }
    return list;
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
    for (auto const& part : mapOf(source)) target.force_insert(part.first, part.second);
}

std::string placeText(std::string const& path, Mark const& mark) {
    if (mark.is_null()) return path;
    return path + ":" + std::to_string(mark.line + 1) + ":" + std::to_string(mark.column + 1);
}

void fail(std::string const& path, Mark const& mark, std::string const& what, std::string const& hint) {
    throw Failure(placeText(path, mark), what, hint);
}

std::string written(Node const& node, Format format) {
    YAML::Emitter out;
    out.SetOutputCharset(YAML::EscapeAsJson);
    write(out, node, format);
    std::string text = out.c_str();
    for (auto at = text.find('\x7F'); at != std::string::npos; at = text.find('\x7F', at))
        text.replace(at, 1, "\\u007f");  // which is no printable character in YAML
    return format == Format::kLine ? text : text + '\n';
}

}  // namespace vrltool::exchange
