#include "design/saved_changes.h"

#include <algorithm>
#include <stdexcept>

#include "design/saved_places.h"
#include "text/failure.h"
#include "text/table.h"

namespace vrltool {

namespace {

constexpr std::size_t kMarker = 6;

/// Bytes that take the place of others; of none where something is added.
struct Replacement {
    std::size_t begin, end;
    std::string bytes;
};

/// A place of the file in which something is to be changed.
struct Wanted {
    std::map<std::string, Wanted> inner;
    std::string before, after;  ///< the item; `before` is empty for an object, whose members are changed one by one
};

/// The members of an object, each with its item.
std::map<std::string, std::string> membersOf(std::string const& object, std::size_t depth) {
    SavedPlace root;
    root.wantsAll = true;
    findPlaces(object, root, static_cast<unsigned>(depth));
    std::map<std::string, std::string> members;
    for (auto const& [id, place] : root.inner) members[id] = object.substr(place.begin, place.end - place.begin);
    return members;
}

void lookFor(Wanted const& wanted, SavedPlace& place) {
    for (auto const& [key, inner] : wanted.inner) lookFor(inner, place.inner[key]);
}

class Differences {
public:
    explicit Differences(std::string const& all) : bytes(all) {}

    void add(Wanted const& wanted, SavedPlace const& place, std::size_t depth) {
        std::size_t added = 0;
        for (auto const& [key, inner] : wanted.inner) {
            SavedPlace const& item = place.inner.at(key);
            if (!item.found)
                added += append(inner, place, key, depth + 1);
            else if (inner.before.empty())
                add(inner, item, depth + 1);
            else
                replace(inner, item);
        }
        if (added > 0) count(place, added);
    }

    std::string made() {
        std::sort(replacements.begin(), replacements.end(),
                  [](Replacement const& a, Replacement const& b) { return a.begin < b.begin; });
        std::string result;
        std::size_t at = 0;
        for (Replacement const& replacement : replacements) {
            result.append(bytes, at, replacement.begin - at).append(replacement.bytes);
            at = replacement.end;
        }
        return result.append(bytes, at);
    }

private:
    void replace(Wanted const& wanted, SavedPlace const& item) {
        if (bytes.compare(item.begin, item.end - item.begin, wanted.before) != 0)
            throw std::runtime_error("holds another value than was read near byte " + std::to_string(item.begin));
        replacements.push_back({item.begin, item.end, wanted.after});
    }

    /// An object that a plug-in declares and an older file lacks is added at the end of its list, and so is a member.
    std::size_t append(Wanted const& wanted, SavedPlace const& list, std::string const& key, std::size_t depth) {
        if (wanted.after.empty())
            throw std::runtime_error("lacks '" + printable(key) + "', to which the change belongs");
        std::string const marker = list.isContainer ? savedMarker(static_cast<unsigned>(depth)) : "";
        std::size_t const end = list.end - kMarker;
        if (!replacements.empty() && replacements.back().begin == end && replacements.back().end == end)
            replacements.back().bytes += marker + savedString(key) + marker + wanted.after;
        else
            replacements.push_back({end, end, marker + savedString(key) + marker + wanted.after});
        return 1;
    }

    void count(SavedPlace const& list, std::size_t added) {
        std::size_t number = 0;
        for (int i = 3; i >= 0; --i)
            number = number << 8 | static_cast<unsigned char>(bytes[list.count + std::size_t(i)]);
        replacements.push_back({list.count, list.count + 4, savedNumber(number + added)});
    }

    std::string const& bytes;
    std::vector<Replacement> replacements;
};

}  // namespace

bool SavedChanges::keep(Path const& path, std::string const& before, std::string const& after) {
    if (before == after) return false;
    Object& object = objects[path];
    if (object.before.empty()) object.before = before;
    object.after = after;
    if (object.before == after) objects.erase(path);
    return true;
}

std::string SavedChanges::madeIn(std::string const& bytes, std::string const& file) const {
    try {
        Wanted all;
        for (auto const& [path, object] : objects) {
            Wanted* wanted = &all;
            for (std::string const& part : path) wanted = &wanted->inner[part];
            wanted->after = object.after;
            auto const before = membersOf(object.before, path.size());
            for (auto const& [id, item] : membersOf(object.after, path.size()))
                if (before.at(id) != item) wanted->inner[id] = {{}, before.at(id), item};
        }
        SavedPlace root;
        lookFor(all, root);
        findPlaces(bytes, root);
        Differences differences(bytes);
        differences.add(all, root, 0);
        return differences.made();
    } catch (std::exception const& error) {
        throw Failure(file, std::string("cannot be changed, since it ") + error.what(),
                      "have the program that wrote it save it again");
    }
}

}  // namespace vrltool
