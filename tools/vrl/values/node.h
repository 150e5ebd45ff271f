#pragma once

#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// The values of netlists and maps, in JSON and YAML alike, resolved by the core schema of YAML 1.2.

namespace vrltool::values {

/// A place in a file: line and column, from 1; 0 for no place.
struct Mark {
    int line = 0, column = 0;

    bool isNull() const { return line == 0; }
};

enum class Kind { kNull, kBool, kNumber, kString, kList, kMap };

/// A value with the place where it was read. A number has the spelling of JSON (or ".inf", "-.inf", ".nan", which only
/// YAML has), so that no digit of it is lost. Members keep their order, and their names are unique.
struct Node {
    using Part = std::pair<Node, Node>;  ///< of a map: name and value; of a list: nothing and value

    Kind kind = Kind::kNull;
    std::string text = {};  ///< of a scalar
    Mark mark = {};
    std::shared_ptr<std::vector<Part>> parts = {};  ///< copies share them

    /// False for a null that was not read, as that of a missing member.
    bool isDefined() const { return kind != Kind::kNull || !mark.isNull(); }
    std::size_t size() const { return parts ? parts->size() : 0; }
    Part const* begin() const { return parts ? parts->data() : nullptr; }
    Part const* end() const { return begin() + size(); }
    void add(Node name, Node value);
    void add(std::string const& name, Node value) { add(Node{Kind::kString, name}, std::move(value)); }
    void add(Node value) { add(Node(), std::move(value)); }
};

inline bool isNull(Node const& node) { return node.kind == Kind::kNull; }
inline bool isString(Node const& node) { return node.kind == Kind::kString; }
inline bool isList(Node const& node) { return node.kind == Kind::kList; }
inline bool isMap(Node const& node) { return node.kind == Kind::kMap; }
/// "a number", "a string", "a list", ... for people.
char const* kindWord(Kind kind);
/// "WHAT is a number, where WANTED belongs".
std::string wrongKind(std::string const& what, Node const& node, std::string const& wanted);

struct Shape;
using Shapes = std::vector<Shape>;

/// What a part of a value may be, and its own parts; without shapes for them, these may be anything.
struct Shape {
    std::string name;        ///< of the member; "*": of all others, and of the parts of a list
    std::string_view kinds;  ///< letters of "nb#tlm", in the order of the kinds, the usual one last; empty: any
    Shapes parts = {};
};

/// The shape of a part of that name, or null.
Shape const* find(Shapes const& shapes, std::string const& name);

/// A part of a value that is not of its shape: of another kind, or a member that it does not know.
struct Misfit {
    Mark mark;
    std::string text, hint;
    bool unknown;
};

/// All misfits in a map or list: "'PART' of WHAT is a number, where a map belongs", or "WHAT has no member 'PART'".
std::vector<Misfit> misfits(Node const& whole, std::string const& what, Shapes const& shapes);

/// New nodes without a place. A plain one is a truth value or a number; a map leaves out the members that are null.
inline Node stringNode(std::string const& text, Mark const& mark = {}) { return {Kind::kString, text, mark}; }
inline Node plainNode(std::string const& text, Mark const& mark = {}) {
    return {text == "true" || text == "false" ? Kind::kBool : Kind::kNumber, text, mark};
}
Node newMap(std::initializer_list<std::pair<char const*, Node>> members);

/// A map with a member in the place of the one of that name, or at its end.
Node with(Node const& map, Node const& name, Node const& value);
/// The value of a member; an undefined node if it is missing, or for what is no map.
Node const& member(Node const& map, std::string_view name);
/// The node, or null for an empty list or map.
inline Node unlessEmpty(Node const& node) { return node.size() == 0 && node.kind >= Kind::kList ? Node() : node; }
/// The node, or an empty one of that kind for anything else.
inline Node mapOf(Node const& node) { return isMap(node) ? node : Node{Kind::kMap}; }
inline Node listOf(Node const& node) { return isList(node) ? node : Node{Kind::kList}; }

/// "PATH:LINE:COLUMN", or the path alone without a place.
std::string placeText(std::string const& path, Mark const& mark);
/// Throws a Failure about that place.
[[noreturn]] void fail(std::string const& path, Mark const& mark, std::string const& what,
                       std::string const& hint = "");

/// What a file may make of its bytes, in values; a long string counts for several. Each takes 128 bytes or more.
struct Limits {
    std::size_t values = 10000000;
    std::size_t aliased = 1000000;  ///< what aliases repeat
    std::string hint = {};          ///< how to raise them
};

/// Reads a file of JSON or YAML. JSON is read as YAML, of which it is a part.
/// Size, nesting, values and aliases are bounded. A Failure names the file with line and column: what cannot be read,
/// is no UTF-8, breaks the language, names a member twice, or is nested too deeply. What an alias leads to has the
/// place where it is written.
Node readFile(std::string const& path, Limits const& limits = {});

/// The languages of netlists and maps; JSON is in one line. That of notes has the numbers of YAML.
enum class Format { kJson, kYaml, kLine };

constexpr std::size_t kDeepest = 100;      // far beyond what netlists need, far below what stacks hold
constexpr std::size_t kLongestName = 400;  // bytes; libyaml bounds keys, and a net is kept under two names together

/// Readers of YAML look no farther for the colon after a name, unless it is marked.
constexpr std::size_t kFarthestColon = 1000;

/// A value without a line feed at its end. Strings have to be UTF-8.
/// YAML is quoted so that readers of its older versions understand the same. JSON has no number for .inf: it becomes
/// the string ".inf".
std::string written(Node const& node, Format format);

/// A plain scalar by the core schema of YAML; empty for a string. Hexadecimal and octal numbers are taken for such.
std::string resolved(std::string const& text);

/// The value of one line; null for what someone else wrote.
Node valueOfLine(std::string const& line);

}  // namespace vrltool::values
