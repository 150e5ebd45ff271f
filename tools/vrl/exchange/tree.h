#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace vrltool::exchange {

/// A place in a text file, from 1; line 0 stands for no place.
struct Mark {
    std::size_t line = 0;
    std::size_t column = 0;
};

/// A value of JSON or YAML with the place where it stands: what both readers make and both writers take.
///
/// A number is kept as its text, which is that of JSON (or ".inf", "-.inf", ".nan", which only YAML has), so that
/// nothing of it is lost. Members keep their order; a name stands once.
struct Tree {
    enum class Kind { kNull, kBool, kNumber, kText, kList, kMap };
    struct Member;

    Kind kind = Kind::kNull;
    Mark mark;
    std::string text;             ///< of a text or a number; "true" or "false"
    std::vector<Tree> items;      ///< of a list
    std::vector<Member> members;  ///< of a map

    /**@{*/
    /// A value of that kind, at no place.
    static Tree ofBool(bool value);
    static Tree ofNumber(std::string const& text);
    static Tree ofText(std::string const& text);
    static Tree list();
    static Tree map();
    /**@}*/

    bool isNull() const { return kind == Kind::kNull; }
    bool isText() const { return kind == Kind::kText; }
    bool isNumber() const { return kind == Kind::kNumber; }
    bool isList() const { return kind == Kind::kList; }
    bool isMap() const { return kind == Kind::kMap; }

    /// The value of a member of a map, or null.
    Tree const* find(std::string const& name) const;
    /// Adds a member to a map, at its end. Yields its value.
    Tree& add(std::string const& name, Tree value);
    /// The number of values, itself included.
    std::size_t size() const;
};

/// A member of a map: a name with its value.
struct Tree::Member {
    std::string name;
    Mark mark;
    Tree value;
};

/// Equal kinds, texts, items and members, in the same order; the places do not count.
bool operator==(Tree const& a, Tree const& b);
inline bool operator!=(Tree const& a, Tree const& b) { return !(a == b); }

/// "a number", "a text", "a list", ... for people.
char const* kindWord(Tree const& tree);

}  // namespace vrltool::exchange
