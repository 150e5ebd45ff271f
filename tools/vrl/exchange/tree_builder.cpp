#include "exchange/tree_builder.h"

#include <algorithm>
#include <utility>

#include "exchange/reader.h"
#include "text/failure.h"
#include "text/table.h"

namespace vrltool::exchange {

namespace {

constexpr std::size_t kDeepest = 100;         // far beyond what netlists need, far below what stacks hold
constexpr std::size_t kMostCopied = 1000000;  // values that aliases may make

std::size_t depth(Tree const& tree) {
    std::size_t deepest = 0;
    for (Tree const& item : tree.items) deepest = std::max(deepest, depth(item));
    for (Tree::Member const& member : tree.members) deepest = std::max(deepest, depth(member.value));
    return deepest + 1;
}

}  // namespace

TreeBuilder::TreeBuilder(std::string file) : path(std::move(file)) {}

void TreeBuilder::fail(Mark const& mark, std::string const& what, std::string const& cure) const {
    throw Failure(placeText(path, mark), what, cure);
}

void TreeBuilder::failDeep(Mark const& mark) const {
    fail(mark, "is nested deeper than " + std::to_string(kDeepest) + " levels");
}

Tree const& TreeBuilder::place(Tree tree) {
    if (frames.empty()) return root = std::move(tree);
    Frame& frame = frames.back();
    if (frame.tree.isList()) return frame.tree.items.emplace_back(std::move(tree));
    frame.named = false;
    frame.tree.members.push_back({std::move(frame.name), frame.nameMark, std::move(tree)});
    return frame.tree.members.back().value;
}

void TreeBuilder::value(Tree tree) {
    if (wantsName()) fail(tree.mark, std::string("the name of a member is ") + kindWord(tree), "names are texts");
    place(std::move(tree));
}

void TreeBuilder::open(Tree tree) {
    if (wantsName()) fail(tree.mark, std::string("the name of a member is ") + kindWord(tree), "names are texts");
    if (frames.size() == kDeepest) failDeep(tree.mark);
    Frame frame;
    frame.tree = std::move(tree);
    frames.push_back(std::move(frame));
}

Tree const& TreeBuilder::close() {
    Tree tree = std::move(frames.back().tree);
    frames.pop_back();
    if (tree.isMap()) refuseTwins(tree);
    return place(std::move(tree));
}

bool TreeBuilder::wantsName() const { return !frames.empty() && frames.back().tree.isMap() && !frames.back().named; }

void TreeBuilder::name(std::string const& text, Mark const& mark) {
    Frame& frame = frames.back();
    frame.name = text;
    frame.nameMark = mark;
    frame.named = true;
}

void TreeBuilder::copy(Tree const& tree, Mark const& mark) {
    copied += tree.size();
    if (copied > kMostCopied)
        fail(mark, "its aliases make more than " + std::to_string(kMostCopied) + " values", "write them out");
    if (frames.size() + depth(tree) > kDeepest) failDeep(mark);
    Tree placed = tree;
    placed.mark = mark;
    value(std::move(placed));
}

/// A name that stands twice would lose a value in silence.
void TreeBuilder::refuseTwins(Tree const& map) const {
    std::vector<Tree::Member const*> sorted;
    sorted.reserve(map.members.size());
    for (Tree::Member const& member : map.members) sorted.push_back(&member);
    std::stable_sort(sorted.begin(), sorted.end(), [](auto const* a, auto const* b) { return a->name < b->name; });
    auto const twin = std::adjacent_find(sorted.begin(), sorted.end(),
                                         [](auto const* a, auto const* b) { return a->name == b->name; });
    if (twin == sorted.end()) return;
    fail(twin[1]->mark,
         "'" + printable(twin[1]->name) + "' stands twice; the first is in line " + std::to_string(twin[0]->mark.line),
         "rename or remove one of them");
}

Tree TreeBuilder::take() { return std::move(root); }

}  // namespace vrltool::exchange
