#include "exchange/node.h"

#include <algorithm>
#include <locale>

#include "text/near_names.h"

namespace {

struct Origin {
    YAML::Node const& other;
    YAML::NodeType::value type;
    YAML::Mark const& mark;
};

}  // namespace

// yaml-cpp has no call that sets the place of a node or chooses its memory; its constructor is a template, which has
// room for one of ours.
template <>
YAML::Node::Node(Origin const& origin)
    : m_isValid(true), m_invalidKey(), m_pMemory(origin.other.m_pMemory), m_pNode(&m_pMemory->create_node()) {
    m_pNode->set_type(origin.type);
    m_pNode->set_mark(origin.mark);
}

namespace vrltool::exchange {

Kind kindOf(Node const& node) {
    if (node.IsMap()) return Kind::kMap;
    if (node.IsSequence()) return Kind::kList;
    if (!node.IsScalar()) return Kind::kNull;
    if (node.Tag() == "!") return Kind::kText;
    return node.Scalar() == "true" || node.Scalar() == "false" ? Kind::kBool : Kind::kNumber;
}

char const* kindWord(Kind kind) {
    static char const* const words[] = {"null", "a truth value", "a number", "a text", "a list", "a map"};
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

Node textNode(std::string const& text) {
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

Node newBeside(Node const& other, YAML::NodeType::value type, Mark const& mark) {
    return Node(Origin{other, type, mark});
}

Node member(Node const& map, std::string_view name) {
    if (map.IsMap())
        for (auto const& entry : map)
            if (entry.first.Scalar() == name) return entry.second;
    return Node(YAML::NodeType::Undefined);
}

void append(Node& map, Node const& members) {
    if (members.IsMap())
        for (auto const& entry : members) map.force_insert(entry.first, entry.second);
}

std::string placeText(std::string const& path, Mark const& mark) {
    if (mark.is_null()) return path;
    return path + ":" + std::to_string(mark.line + 1) + ":" + std::to_string(mark.column + 1);
}

std::size_t utf8Length(std::string const& text) {
    auto const& utf8 = std::use_facet<std::codecvt<char32_t, char, std::mbstate_t>>(std::locale::classic());
    std::mbstate_t state{};
    auto const end = static_cast<std::size_t>(utf8.length(state, text.data(), text.data() + text.size(), text.size()));
    for (auto at = text.find('\xED'); at < end; at = text.find('\xED', at + 1))
        if (static_cast<unsigned char>(text[at + 1]) >= 0xA0) return at;  // a surrogate, which the facet takes
    return end;
}

}  // namespace vrltool::exchange
