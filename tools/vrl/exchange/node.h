#pragma once

#include <yaml-cpp/yaml.h>

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// The values of netlists and maps, in JSON and YAML alike: nodes of yaml-cpp, resolved by the core schema of YAML 1.2.
//
// A scalar with the tag "!" is a text. Any other scalar is a truth value or a number in the spelling of JSON (or
// ".inf",
// "-.inf", ".nan", which only YAML has), so that no digit of it is lost. Members keep their order, and their names are
// unique. Nodes are references: what was read is shared, and never changed. A node that is not defined counts as null.

namespace vrltool::exchange {

using YAML::Mark;
using YAML::Node;

enum class Kind { kNull, kBool, kNumber, kText, kList, kMap };

Kind kindOf(Node const& node);
inline bool isNull(Node const& node) { return kindOf(node) == Kind::kNull; }
inline bool isText(Node const& node) { return kindOf(node) == Kind::kText; }
inline bool isMap(Node const& node) { return kindOf(node) == Kind::kMap; }
/// "a number", "a text", "a list", ... for people.
char const* kindWord(Kind kind);
/// "WHAT is a number, where WANTED belongs".
std::string wrongKind(std::string const& what, Node const& node, std::string const& wanted);

/// A member of a map, and what it and its parts may be: letters of "nb#tlm", in the order of the kinds; empty:
/// anything.
struct Shape {
    char const* name;
    std::string_view kinds;
    std::string_view parts = "";
};

/// The shape of that name, or null.
Shape const* find(std::vector<Shape> const& shapes, std::string const& name);
/// "WHAT is a number, where a map belongs", or empty for a node that is one of the kinds. The last of them is named.
std::string misfit(std::string const& what, Node const& node, std::string_view kinds);
/// "did you mean 'a'?" for a name that none of the shapes has.
std::string nearName(std::vector<Shape> const& shapes, std::string const& wrong);

/**@{*/
/// New nodes without a place. A plain one is a truth value or a number; a map leaves out the members that are null.
Node textNode(std::string const& text);
inline Node plainNode(std::string const& text) { return Node(text); }
Node newList(std::vector<Node> const& items = {});
Node newMap(std::initializer_list<std::pair<char const*, Node>> members = {});
/**@}*/

/// A new node at a place, in the memory of another. What takes parts of a large document goes beside it: otherwise
/// yaml-cpp merges the memory of both, in time that grows with the document.
Node newBeside(Node const& other, YAML::NodeType::value type, Mark const& mark = Mark::null_mark());

/// The value of a member; a node that is not defined if there is none, or no map.
Node member(Node const& map, std::string_view name);
/// The node, or null for an empty list or map.
inline Node unlessEmpty(Node const& node) { return node.size() == 0 && !node.IsScalar() ? Node() : node; }
/// Adds the parts of a list or map to another of the same type; nothing to one of another type.
void append(Node& target, Node const& source);

/// "PATH:LINE:COLUMN", or the path alone without a place.
std::string placeText(std::string const& path, Mark const& mark);

/// The bytes from the start that are UTF-8; all of them in a good text.
std::size_t utf8Length(std::string const& text);

/// Reads a file of JSON or YAML; its ending says which, and without one of theirs its first character.
///
/// Size, nesting and aliases are bounded. A Failure names the file with line and column: what cannot be read, is no
/// UTF-8, breaks the language, names a member twice, or is nested too deeply.
Node readFile(std::string const& path);
/// Reads a text of JSON in the same way; `path` is for messages.
Node readJson(std::string const& path, std::string const& text);

/// The languages of netlists and maps, and JSON in one line, for notes.
enum class Format { kJson, kYaml, kLine };

/// A value as text, in lines that end in line feeds or in the format of one line without. Texts have to be UTF-8.
///
/// YAML is quoted so that readers of its older versions understand the same, and has lists in the column of the name
/// before them, as other tools write it; the emitter of yaml-cpp does neither, and has JSON in one line only. JSON has
/// no number for ".inf": it becomes the text "inf", and {"vrl::number": ".inf"} in one line.
std::string written(Node const& node, Format format);

/// The value of a text in the format of one line; null for a text that someone else wrote.
Node valueOfLine(std::string const& line);

}  // namespace vrltool::exchange
