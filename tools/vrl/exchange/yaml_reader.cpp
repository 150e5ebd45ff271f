#include <yaml-cpp/eventhandler.h>
#include <yaml-cpp/exceptions.h>
#include <yaml-cpp/parser.h>

#include <map>
#include <sstream>

#include "exchange/reader.h"
#include "exchange/scalar.h"
#include "exchange/tree_builder.h"
#include "text/table.h"

namespace vrltool::exchange {

namespace {

Mark markOf(YAML::Mark const& mark) {
    if (mark.line < 0) return {};
    return {static_cast<std::size_t>(mark.line) + 1, static_cast<std::size_t>(mark.column) + 1};
}

/// Makes a tree of the events of the parser, so that each scalar is resolved by the core schema and aliases are
/// counted.
class YamlEvents final : public YAML::EventHandler {
public:
    explicit YamlEvents(TreeBuilder& target) : builder(target) {}

    void OnDocumentStart(YAML::Mark const&) override {}
    void OnDocumentEnd() override {}

    void OnNull(YAML::Mark const& mark, YAML::anchor_t anchor) override { scalar(Tree(), mark, anchor); }

    void OnAlias(YAML::Mark const& mark, YAML::anchor_t anchor) override {
        auto const found = anchors.find(anchor);
        if (found == anchors.end()) builder.fail(markOf(mark), "an alias stands inside what it means", "write it out");
        builder.copy(found->second, markOf(mark));
    }

    void OnScalar(YAML::Mark const& mark, std::string const& tag, YAML::anchor_t anchor,
                  std::string const& text) override {
        if (builder.wantsName()) {
            if (anchor != YAML::NullAnchor) anchors[anchor] = Tree::ofText(text);
            builder.name(text, markOf(mark));
            return;
        }
        scalar(meaning(tag, text, markOf(mark)), mark, anchor);
    }

    void OnSequenceStart(YAML::Mark const& mark, std::string const& tag, YAML::anchor_t anchor,
                         YAML::EmitterStyle::value) override {
        open(Tree::list(), "tag:yaml.org,2002:seq", mark, tag, anchor);
    }
    void OnSequenceEnd() override { close(); }

    void OnMapStart(YAML::Mark const& mark, std::string const& tag, YAML::anchor_t anchor,
                    YAML::EmitterStyle::value) override {
        open(Tree::map(), "tag:yaml.org,2002:map", mark, tag, anchor);
    }
    void OnMapEnd() override { close(); }

private:
    [[noreturn]] void failTag(Mark const& mark, std::string const& tag) const {
        builder.fail(mark, "the tag '" + printable(tag) + "' is not known here", "write a plain value");
    }

    Tree meaning(std::string const& tag, std::string const& text, Mark const& mark) const {
        static std::string const standard = "tag:yaml.org,2002:";
        if (tag == "!" || tag == standard + "str") return Tree::ofText(text);
        bool const named = tag == standard + "int" || tag == standard + "float" || tag == standard + "bool" ||
                           tag == standard + "null";
        if (!named && tag != "?" && !tag.empty()) failTag(mark, tag);
        auto const tree = plainScalar(text);
        if (!tree)
            builder.fail(mark, "the number " + printable(text) + " is too large", "no number of a program holds it");
        return *tree;
    }

    void scalar(Tree tree, YAML::Mark const& mark, YAML::anchor_t anchor) {
        tree.mark = markOf(mark);
        if (anchor != YAML::NullAnchor) anchors[anchor] = tree;
        builder.value(std::move(tree));
    }

    void open(Tree tree, char const* usual, YAML::Mark const& mark, std::string const& tag, YAML::anchor_t anchor) {
        tree.mark = markOf(mark);
        if (tag != "?" && tag != "!" && !tag.empty() && tag != usual) failTag(tree.mark, tag);
        builder.open(std::move(tree));
        opened.push_back(anchor);
    }

    void close() {
        Tree const& tree = builder.close();
        if (opened.back() != YAML::NullAnchor) anchors[opened.back()] = tree;
        opened.pop_back();
    }

    TreeBuilder& builder;
    std::map<YAML::anchor_t, Tree> anchors;
    std::vector<YAML::anchor_t> opened;
};

/// Takes the second document of a file for what it is: more than was asked for.
class NoEvents final : public YAML::EventHandler {
public:
    void OnDocumentStart(YAML::Mark const& mark) override { where = markOf(mark); }
    void OnDocumentEnd() override {}
    void OnNull(YAML::Mark const&, YAML::anchor_t) override {}
    void OnAlias(YAML::Mark const&, YAML::anchor_t) override {}
    void OnScalar(YAML::Mark const&, std::string const&, YAML::anchor_t, std::string const&) override {}
    void OnSequenceStart(YAML::Mark const&, std::string const&, YAML::anchor_t, YAML::EmitterStyle::value) override {}
    void OnSequenceEnd() override {}
    void OnMapStart(YAML::Mark const&, std::string const&, YAML::anchor_t, YAML::EmitterStyle::value) override {}
    void OnMapEnd() override {}

    Mark where;
};

}  // namespace

Tree readYaml(std::string const& path, std::string const& text) {
    TreeBuilder builder(path);
    try {
        std::istringstream stream(text);
        YAML::Parser parser(stream);
        YamlEvents events(builder);
        parser.HandleNextDocument(events);
        NoEvents second;
        if (parser.HandleNextDocument(second))
            builder.fail(second.where, "a second document begins here", "keep one document in a file");
    } catch (YAML::Exception const& error) {
        builder.fail(markOf(error.mark), error.msg);
    }
    return builder.take();
}

}  // namespace vrltool::exchange
