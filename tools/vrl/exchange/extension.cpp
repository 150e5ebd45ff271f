#include "exchange/extension.h"

#include <algorithm>
#include <vector>

#include "text/near_names.h"

namespace vrltool::exchange {

namespace {

using Kind = Tree::Kind;

/// A member of an extension. Its parts are the members or items of it; kNull stands for any kind.
struct Known {
    char const* name;
    Kind kind;
    Kind parts;
};

std::vector<Known> const& knownMembers(Extended what) {
    static std::vector<Known> const ofInstance{{"foundry", Kind::kText, Kind::kNull},
                                               {"nameless", Kind::kBool, Kind::kNull},
                                               {"undeclaredPorts", Kind::kList, Kind::kText},
                                               {"origin", Kind::kMap, Kind::kNull},
                                               {"array", Kind::kMap, Kind::kNull},
                                               {"crossSection", Kind::kText, Kind::kNull},
                                               {"flow", Kind::kText, Kind::kNull},
                                               {"ports", Kind::kMap, Kind::kMap},
                                               {"parameters", Kind::kMap, Kind::kMap},
                                               {"values", Kind::kMap, Kind::kNull},
                                               {"expressions", Kind::kMap, Kind::kText},
                                               {"calculated", Kind::kMap, Kind::kBool},
                                               {"autoChangeable", Kind::kMap, Kind::kBool},
                                               {"parameterNotes", Kind::kMap, Kind::kMap},
                                               {"notes", Kind::kMap, Kind::kText}};
    static std::vector<Known> const ofNetlist{{"kind", Kind::kText, Kind::kNull},
                                              {"nodes", Kind::kList, Kind::kList},
                                              {"boundary", Kind::kMap, Kind::kList},
                                              {"parameters", Kind::kMap, Kind::kMap},
                                              {"notes", Kind::kMap, Kind::kText}};
    return what == Extended::kInstance ? ofInstance : ofNetlist;
}

bool fits(Tree const& tree, Kind kind) { return kind == Kind::kNull || tree.kind == kind; }

std::string wanted(Kind kind) {
    Tree tree;
    tree.kind = kind;
    return kindWord(tree);
}

/// The first part that is of another kind, or null.
Tree const* wrongPart(Tree const& tree, Kind kind) {
    for (Tree const& item : tree.items)
        if (!fits(item, kind)) return &item;
    for (Tree::Member const& member : tree.members)
        if (!fits(member.value, kind)) return &member.value;
    return nullptr;
}

}  // namespace

Tree checkedExtension(Tree const& extension, Extended what, std::string const& path, Findings& findings) {
    std::vector<Known> const& table = knownMembers(what);
    Tree good = Tree::map();
    good.mark = extension.mark;
    for (Tree::Member const& member : extension.members) {
        auto const known =
            std::find_if(table.begin(), table.end(), [&](Known const& entry) { return member.name == entry.name; });
        if (known == table.end()) {
            std::vector<std::string> names;
            for (Known const& entry : table) names.push_back(entry.name);
            findings.warning(path, member.mark, "'vrl' has no member '" + member.name + "'; it is left out",
                             didYouMean(member.name, names));
            continue;
        }
        bool const right = fits(member.value, known->kind);
        Tree const* const wrong = right ? wrongPart(member.value, known->parts) : &member.value;
        if (!wrong)
            good.members.push_back(member);
        else
            findings.error(path, wrong->mark,
                           (right ? "a part of '" : "'") + member.name + "' of 'vrl' is " + kindWord(*wrong) +
                               ", where " + wanted(right ? known->parts : known->kind) + " belongs");
    }
    return good;
}

}  // namespace vrltool::exchange
