#pragma once

#include <string>
#include <vector>

#include "exchange/tree.h"

namespace vrltool::exchange {

/// Builds a tree from the events of a parser, and refuses what is nested too deeply, too large or ambiguous.
class TreeBuilder {
public:
    /// `path` is for messages.
    explicit TreeBuilder(std::string path);

    /// The next value: of the name that was told before, the next item of a list, or the whole.
    void value(Tree tree);
    /// Opens a list or a map, which has its mark.
    void open(Tree tree);
    /// Closes it. Yields what it became, good until the next event.
    Tree const& close();
    /// The name of the next value of a map.
    void name(std::string const& text, Mark const& mark);
    /// Whether a name is to come next.
    bool wantsName() const;
    /// A copy of something that was built, which counts.
    void copy(Tree const& tree, Mark const& mark);

    /// Throws a Failure with a place.
    [[noreturn]] void fail(Mark const& mark, std::string const& what, std::string const& cure = "") const;

    /// What was built; null if nothing was.
    Tree take();

private:
    struct Frame {
        Tree tree;
        std::string name;
        Mark nameMark;
        bool named = false;
    };

    [[noreturn]] void failDeep(Mark const& mark) const;
    Tree const& place(Tree tree);
    void refuseTwins(Tree const& map) const;

    std::string path;
    std::vector<Frame> frames;
    Tree root;
    std::size_t copied = 0;
};

}  // namespace vrltool::exchange
