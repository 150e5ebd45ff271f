#include "exchange/arrays.h"

#include <algorithm>
#include <charconv>
#include <map>
#include <set>
#include <string>
#include <utility>

namespace vrltool::exchange {

namespace {

std::size_t numberOf(Tree const& map, char const* name) {
    std::size_t number = 0;
    Tree const* const found = map.find(name);
    if (found && found->isNumber())
        std::from_chars(found->text.data(), found->text.data() + found->text.size(), number);
    return number;
}

/// Whether two instances are alike but for their names.
bool alike(Instance const& a, Instance const& b) { return treeFrom(a) == treeFrom(b) && a.placement == b.placement; }

std::set<std::string> elementNames(Instance const& whole) {
    std::set<std::string> names;
    for (std::size_t column = 0; column < whole.size.columns; ++column)
        for (std::size_t row = 0; row < whole.size.rows; ++row) names.insert(arrayName(whole, column, row));
    return names;
}

/// Collapses the arrays of one list.
class Collapse {
public:
    Collapse(std::vector<Instance> all, std::vector<Tree> const& ofAll) : instances(std::move(all)), notes(ofAll) {}

    std::vector<Instance> run() {
        for (std::size_t i = 0; i < instances.size(); ++i) {
            Tree const* const of = notes[i].find("of");
            if (of && of->isText())
                groups[of->text].push_back(i);
            else
                taken.insert(instances[i].name);
        }
        for (auto const& group : groups) collapse(group.first, group.second);
        std::vector<Instance> result;
        for (std::size_t i = 0; i < instances.size(); ++i)
            if (gone.count(i) == 0) result.push_back(std::move(instances[i]));
        return result;
    }

private:
    void collapse(std::string const& name, std::vector<std::size_t> const& members) {
        Tree const& note = notes[members.front()];
        Instance whole = instances[members.front()];
        whole.name = name;
        whole.size = {numberOf(note, "columns"), numberOf(note, "rows")};
        if (!isWhole(whole, members)) {
            for (std::size_t const i : members) instances[i].extension.add("array", notes[i]);
            return;
        }
        if (Tree const* const array = note.find("array")) whole.array = *array;
        instances[members.front()] = std::move(whole);
        gone.insert(members.begin() + 1, members.end());
    }

    bool isWhole(Instance const& whole, std::vector<std::size_t> const& members) const {
        if (members.size() != whole.size.count() || taken.count(whole.name)) return false;
        std::set<std::string> const names = elementNames(whole);
        return std::all_of(members.begin(), members.end(), [&](std::size_t i) {
            return names.count(instances[i].name) && notes[i] == notes[members.front()] && alike(instances[i], whole);
        });
    }

    std::vector<Instance> instances;
    std::vector<Tree> const& notes;
    std::map<std::string, std::vector<std::size_t>> groups;  ///< places of the elements, by the names of the arrays
    std::set<std::string> taken;                             ///< names of what is in no array
    std::set<std::size_t> gone;                              ///< what became part of another
};

}  // namespace

Tree arrayNote(Instance const& instance) {
    Tree note = Tree::map();
    note.add("of", Tree::ofText(instance.name));
    note.add("columns", Tree::ofNumber(std::to_string(instance.size.columns)));
    note.add("rows", Tree::ofNumber(std::to_string(instance.size.rows)));
    note.add("array", instance.array);
    return note;
}

std::vector<Instance> collapsed(std::vector<Instance> instances, std::vector<Tree> const& notes) {
    return Collapse(std::move(instances), notes).run();
}

}  // namespace vrltool::exchange
