#include "values/node.h"

#include <algorithm>
#include <cstdio>
#include <set>

#include "text/failure.h"
#include "text/near_names.h"
#include "text/phrases.h"
#include "text/table.h"
#include "text/utf8.h"

namespace vrltool::values {

namespace {

/// Whether every reader of YAML takes the string, written plainly, for this very string. It begins with a letter, since
/// all else may be a number of some version of YAML; and some words are truth values in version 1.1.
bool isPlain(std::string const& text) {
    static std::set<std::string> const words{"y", "n", "yes", "no", "on", "off", "true", "false", "null"};
    auto const lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
    auto const isLetter = [&](char c) { return (lower(c) >= 'a' && lower(c) <= 'z') || c == '_'; };
    auto const fits = [&](char c) {
        return isLetter(c) || (c >= '+' && c <= '9') || c == '<' || c == '>' || c == '(' || c == ')';
    };
    if (text.empty() || !isLetter(text[0]) || !std::all_of(text.begin(), text.end(), fits)) return false;
    if (text.size() > 5) return true;
    std::string small = text;
    std::transform(small.begin(), small.end(), small.begin(), lower);
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

/// Whether a character is itself between double quotes, in JSON and in all versions of YAML.
bool isPrinted(char32_t c) {
    bool const control = c < 0x20 || (c >= 0x7F && c <= 0xA0), separator = c == 0x2028 || c == 0x2029;
    return !control && !separator && c != U'"' && c != U'\\' && c != 0xFEFF && c != 0xFFFE && c != 0xFFFF;
}

/// One character in double quotes.
std::string quoted(Character const& character) {
    static std::string const special = "\"\\\b\f\n\r\t", letters = "\"\\bfnrt";
    if (!character.valid || isPrinted(character.number)) return character.bytes;
    auto const letter = special.find(character.bytes);
    if (letter != std::string::npos) return {'\\', letters[letter]};
    char code[8] = {};
    std::snprintf(code, sizeof code, "\\u%04x", static_cast<unsigned>(character.number) & 0xFFFF);
    return code;
}

void writeString(std::string& out, std::string const& text, Format format) {
    auto const usual = [](unsigned char c) { return c < 0x7F && isPrinted(c); };
    bool const plain = format == Format::kYaml && isPlain(text);
    if (!plain) out += '"';
    for (auto at = text.begin(); at != text.end();) {
        auto const odd = std::find_if_not(at, text.end(), usual);
        out.append(at, odd);
        at = std::find_if(odd, text.end(), usual);
        for (Character const& character : charactersOf({odd, at})) out += quoted(character);
    }
    if (!plain) out += '"';
}

/// Writes a value. A block, with the lines of its parts at an indent, begins in the line only at the top and in lists.
void write(std::string& out, Node const& node, Format format, std::size_t indent = 0, bool inLine = true) {
    Kind const kind = node.kind;
    if (kind == Kind::kNull) out += "null";
    if (kind == Kind::kBool) out += node.text;
    if (kind == Kind::kNumber) out += numberWritten(node.text, format);
    if (kind == Kind::kString) writeString(out, node.text, format);
    if (kind < Kind::kList) return;
    bool const map = isMap(node), block = format == Format::kYaml && node.size() > 0;
    if (!block) out += map ? '{' : '[';
    for (auto part = node.begin(); part != node.end(); ++part) {
        bool const first = part == node.begin(), compact = !map && isMap(part->second);
        if (!block && !first) out += ", ";
        if (block && !(first && inLine)) out.append(1, '\n').append(indent, ' ');
        std::size_t const begin = out.size();
        if (map) writeString(out, part->first.text, format);
        if (block && out.size() - begin > kFarthestColon) out.insert(begin, "? ").append(1, '\n').append(indent, ' ');
        if (map || block) out += map ? ':' : '-';
        if (map || block) out.append(!block || compact || part->second.size() == 0, ' ');
        write(out, part->second, format, indent + 2, compact);
    }
    if (!block) out += map ? '}' : ']';
}

}  // namespace

void Node::add(Node name, Node value) {
    if (!parts) parts = std::make_shared<std::vector<Part>>();
    parts->emplace_back(std::move(name), std::move(value));
}

char const* kindWord(Kind kind) {
    static char const* const words[] = {"null", "a truth value", "a number", "a string", "a list", "a map"};
    return words[static_cast<int>(kind)];
}

std::string wrongKind(std::string const& what, Node const& node, std::string const& wanted) {
    return what + " is " + kindWord(node.kind) + ", where " + wanted + " belongs";
}

Shape const* find(Shapes const& shapes, std::string const& name) {
    auto const fits = [&](Shape const& shape) { return shape.name == name || shape.name == "*"; };
    auto const found = std::find_if(shapes.begin(), shapes.end(), fits);
    return found == shapes.end() ? nullptr : &*found;
}

std::vector<Misfit> misfits(Node const& whole, std::string const& what, Shapes const& shapes) {
    static std::string const letters = "nb#tlm";
    std::vector<Misfit> list;
    for (auto const& [key, value] : whole) {
        Shape const* const shape = find(shapes, key.text);
        char const letter = letters[static_cast<std::size_t>(value.kind)];
        bool const fits = shape && (shape->kinds.empty() || shape->kinds.find(letter) != std::string::npos);
        if (fits && shape->parts.empty()) continue;
        std::string const shown = isMap(whole) ? inQuotes(printable(key.text)) : "a part";
        if (fits) {
            auto const inner = misfits(value, shown, shape->parts);
            list.insert(list.end(), inner.begin(), inner.end());
        } else if (shape) {
            auto const wanted = static_cast<Kind>(letters.find(shape->kinds.back()));
            std::string const word = wanted == Kind::kBool ? "true or false" : kindWord(wanted);
            list.push_back({value.mark, wrongKind(shown + " of " + what, value, word), "", false});
        } else {
            std::vector<std::string> names;
            for (Shape const& known : shapes) names.push_back(known.name);
            list.push_back({key.mark, what + " has no member " + shown, didYouMean(key.text, names), true});
        }
    }
    return list;
}

Node newMap(std::initializer_list<std::pair<char const*, Node>> members) {
    Node map{Kind::kMap};
    for (auto const& entry : members)
        if (!isNull(entry.second)) map.add(stringNode(entry.first), entry.second);
    return map;
}

Node with(Node const& map, Node const& name, Node const& value) {
    Node result{Kind::kMap, "", map.mark};
    bool found = false;
    for (auto const& entry : map) {
        bool const same = entry.first.text == name.text;
        result.add(entry.first, same ? value : entry.second);
        found = found || same;
    }
    if (!found) result.add(name, value);
    return result;
}

Node const& member(Node const& map, std::string_view name) {
    static Node const none;
    if (isMap(map))
        for (auto const& entry : map)
            if (entry.first.text == name) return entry.second;
    return none;
}

std::string placeText(std::string const& path, Mark const& mark) {
    if (mark.isNull()) return path;
    return path + ":" + std::to_string(mark.line) + ":" + std::to_string(mark.column);
}

void fail(std::string const& path, Mark const& mark, std::string const& what, std::string const& hint) {
    throw Failure(placeText(path, mark), what, hint);
}

std::string written(Node const& node, Format format) {
    std::string text;
    write(text, node, format);
    return text;
}

}  // namespace vrltool::values
