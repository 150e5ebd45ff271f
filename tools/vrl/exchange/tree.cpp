#include "exchange/tree.h"

#include <algorithm>
#include <utility>

namespace vrltool::exchange {

namespace {

Tree make(Tree::Kind kind, std::string text = "") {
    Tree tree;
    tree.kind = kind;
    tree.text = std::move(text);
    return tree;
}

}  // namespace

Tree Tree::ofBool(bool value) { return make(Kind::kBool, value ? "true" : "false"); }
Tree Tree::ofNumber(std::string const& text) { return make(Kind::kNumber, text); }
Tree Tree::ofText(std::string const& text) { return make(Kind::kText, text); }
Tree Tree::list() { return make(Kind::kList); }
Tree Tree::map() { return make(Kind::kMap); }

Tree const* Tree::find(std::string const& name) const {
    auto const found = std::find_if(members.begin(), members.end(), [&](Member const& m) { return m.name == name; });
    return found == members.end() ? nullptr : &found->value;
}

Tree& Tree::add(std::string const& name, Tree value) {
    members.push_back({name, value.mark, std::move(value)});
    return members.back().value;
}

std::size_t Tree::size() const {
    std::size_t count = 1;
    for (Tree const& item : items) count += item.size();
    for (Member const& member : members) count += member.value.size();
    return count;
}

bool operator==(Tree const& a, Tree const& b) {
    auto const sameMember = [](Tree::Member const& x, Tree::Member const& y) {
        return x.name == y.name && x.value == y.value;
    };
    return a.kind == b.kind && a.text == b.text && a.items == b.items &&
           std::equal(a.members.begin(), a.members.end(), b.members.begin(), b.members.end(), sameMember);
}

char const* kindWord(Tree const& tree) {
    static char const* const words[] = {"null", "a truth value", "a number", "a text", "a list", "a map"};
    return words[static_cast<int>(tree.kind)];
}

}  // namespace vrltool::exchange
