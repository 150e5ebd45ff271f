#include "exchange/tree_writer.h"

#include <utility>

#include "exchange/scalar.h"
#include "text/failure.h"

namespace vrltool::exchange {

namespace {

char const* const kNumberNote = "vrl::number";

bool isScalar(Tree const& tree) { return !tree.isList() && !tree.isMap(); }
bool isEmpty(Tree const& tree) { return tree.items.empty() && tree.members.empty(); }

/// A text in double quotes that both languages read.
std::string quoted(std::string const& text) {
    static char const digits[] = "0123456789ABCDEF";
    std::string result = "\"";
    for (char const c : text) {
        auto const byte = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            result += '\\';
            result += c;
        } else if (c == '\n') {
            result += "\\n";
        } else if (byte < 0x20 || byte == 0x7F) {
            result += std::string("\\u00") + digits[byte >> 4] + digits[byte & 15];
        } else {
            result += c;
        }
    }
    return result + '"';
}

std::string jsonScalar(Tree const& tree) {
    if (tree.isNull()) return "null";
    if (tree.isText()) return quoted(tree.text);
    if (!tree.isNumber()) return tree.text;
    auto const point = tree.text.find_first_of("in");
    if (point == std::string::npos) return tree.text;
    return std::string(tree.text[0] == '-' ? "\"-" : "\"") + tree.text.substr(point) + '"';
}

/// Writes JSON; `indent` is negative for one line.
class JsonText {
public:
    JsonText(std::string& target, bool oneLine) : out(target), compact(oneLine) {}

    void write(Tree const& tree, std::size_t indent) {
        if (isScalar(tree))
            writeScalar(tree);
        else if (isEmpty(tree))
            out += tree.isMap() ? "{}" : "[]";
        else
            writeParts(tree, indent + 2);
    }

private:
    void writeScalar(Tree const& tree) {
        bool const odd = compact && tree.isNumber() && tree.text.find_first_of("in") != std::string::npos;
        out += odd ? std::string("{\"") + kNumberNote + "\":\"" + tree.text + "\"}" : jsonScalar(tree);
    }

    void begin(bool first, std::size_t indent) {
        if (!first) out += ',';
        if (!compact) out += '\n' + std::string(indent, ' ');
    }

    void writeParts(Tree const& tree, std::size_t indent) {
        bool first = true;
        out += tree.isMap() ? '{' : '[';
        for (Tree::Member const& member : tree.members) {
            begin(std::exchange(first, false), indent);
            out += quoted(member.name) + (compact ? ":" : ": ");
            write(member.value, indent);
        }
        for (Tree const& item : tree.items) {
            begin(std::exchange(first, false), indent);
            write(item, indent);
        }
        if (!compact) out += '\n' + std::string(indent - 2, ' ');
        out += tree.isMap() ? '}' : ']';
    }

    std::string& out;
    bool compact;
};

/// Readers of YAML 1.1 take "1e-09" for a text: they want a point.
std::string yamlNumber(std::string const& text) {
    auto const exponent = text.find_first_of("eE");
    if (text[0] == '.' || text.find_first_of("in") != std::string::npos || exponent == std::string::npos) return text;
    std::string const point = text.find('.') == std::string::npos ? ".0" : "";
    std::string const sign = text[exponent + 1] == '-' || text[exponent + 1] == '+' ? "" : "+";
    return text.substr(0, exponent) + point + "e" + sign + text.substr(exponent + 1);
}

std::string yamlScalar(Tree const& tree) {
    if (tree.isNull()) return "null";
    if (tree.isNumber()) return yamlNumber(tree.text);
    if (!tree.isText() || isPlainText(tree.text)) return tree.text;
    return quoted(tree.text);
}

std::string yamlName(std::string const& name) { return isPlainText(name) ? name : quoted(name); }

class YamlText {
public:
    explicit YamlText(std::string& target) : out(target) {}

    /// Writes a whole; the cursor is at the start of a line, or behind "- ".
    void write(Tree const& tree, std::size_t indent) {
        if (isScalar(tree) || isEmpty(tree)) {
            out += leaf(tree) + '\n';
            return;
        }
        bool first = true;
        for (Tree::Member const& member : tree.members) {
            if (!std::exchange(first, false)) out += std::string(indent, ' ');
            out += yamlName(member.name) + ':';
            writeBehind(member.value, indent + 2);
        }
        for (Tree const& item : tree.items) {
            if (!std::exchange(first, false)) out += std::string(indent, ' ');
            out += "- ";
            write(item, indent + 2);
        }
    }

private:
    static std::string leaf(Tree const& tree) {
        if (isScalar(tree)) return yamlScalar(tree);
        return tree.isMap() ? "{}" : "[]";
    }

    /// Behind "name:": on the same line what is short, otherwise below it.
    void writeBehind(Tree const& value, std::size_t indent) {
        if (isScalar(value) || isEmpty(value)) {
            out += ' ' + leaf(value) + '\n';
            return;
        }
        std::size_t const below = value.isList() ? indent - 2 : indent;
        out += '\n' + std::string(below, ' ');
        write(value, below);
    }

    std::string& out;
};

void restoreNumbers(Tree& tree) {
    if (tree.isMap() && tree.members.size() == 1 && tree.members[0].name == kNumberNote) {
        std::string const text = tree.members[0].value.text;
        tree = Tree::ofNumber(text);
        return;
    }
    for (Tree& item : tree.items) restoreNumbers(item);
    for (Tree::Member& member : tree.members) restoreNumbers(member.value);
}

}  // namespace

std::string treeText(Tree const& tree, TextFormat format) {
    std::string text;
    if (format == TextFormat::kYaml) {
        YamlText(text).write(tree, 0);
        return text;
    }
    JsonText(text, false).write(tree, 0);
    return text + '\n';
}

std::string noteText(Tree const& tree) {
    std::string text;
    JsonText(text, true).write(tree, 0);
    return text;
}

Tree treeOfNote(std::string const& text) {
    try {
        Tree tree = readJson("", text);
        restoreNumbers(tree);
        return tree;
    } catch (Failure const&) {
        return {};  // a note that someone else wrote
    }
}

}  // namespace vrltool::exchange
