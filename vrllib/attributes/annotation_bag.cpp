#include "vrllib/attributes/annotation_bag.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <unordered_map>
#include <utility>

namespace Vorlane_v1_0::detail {

struct AnnotationBag::Content {
    Map map;
    bool isShared = false;  // found by its content, and never changed; otherwise it has one user
    std::size_t users = 1;
    std::size_t hash = 0;
    bool keepsBytes = true;
    std::map<unsigned int, std::string> savedBytes = {};  // by depth

    using Pool = std::unordered_multimap<std::size_t, Content*>;

    /// The shared contents by their hashes. Never destroyed: objects with static storage may be used to the very end.
    static Pool& pool() {
        static auto& all = *new Pool;
        return all;
    }

    /// Keys count only when contents are compared: they are the same nearly always.
    template <class Entries, class TextOf>
    static std::size_t hashOf(Entries const& entries, TextOf textOf) {
        std::size_t hash = 0;
        for (auto const& entry : entries) hash = hash * 31 + std::hash<std::string>()(textOf(entry));
        return hash;
    }

    /// The shared content that is equal, with one more user; a new one from `make` if there is none.
    template <class Equal, class Make>
    static Content* shared(std::size_t hash, Equal isEqual, Make make) {
        auto const [first, last] = pool().equal_range(hash);
        auto const found = std::find_if(first, last, [&](auto const& entry) { return isEqual(entry.second->map); });
        if (found != last) {
            ++found->second->users;
            return found->second;
        }
        auto* const content = new Content{make(), true, 1, hash};
        std::size_t size = 0;
        for (auto const& [key, text] : content->map) {
            size += key.size() + text.size();
            content->keepsBytes &= size < 4096 && key.find('\0') == key.npos && text.find('\0') == text.npos;
        }
        pool().emplace(hash, content);
        return content;
    }
};

AnnotationBag::AnnotationBag(std::initializer_list<Entry> entries) {
    auto const isEqual = [&](Map const& map) {
        return std::equal(entries.begin(), entries.end(), map.begin(), map.end(),
                          [](Entry const& a, auto const& b) { return a.text == b.second && a.key == b.first; });
    };
    auto const make = [&] {
        Map map;
        for (Entry const& entry : entries) map.emplace_hint(map.end(), entry.key, entry.text);
        return map;
    };
    auto const textOf = [](Entry const& entry) -> std::string const& { return entry.text; };
    content = Content::shared(Content::hashOf(entries, textOf), isEqual, make);
}

AnnotationBag::AnnotationBag(AnnotationBag const& other) {
    if (other.content) *this = other;
}

AnnotationBag& AnnotationBag::operator=(AnnotationBag const& other) {
    if (this == &other) return *this;
    bool const isOwn = content && !content->isShared;
    if (isOwn) {
        content->map = other.view();
    } else if (other.content && !other.content->isShared) {
        assign(Map(other.view()));
    } else {
        if (other.content) ++other.content->users;
        release(std::exchange(content, other.content));
    }
    return *this;
}

AnnotationBag::~AnnotationBag() { release(content); }

void AnnotationBag::release(Content* content) {
    if (!content || --content->users > 0) return;
    if (content->isShared) {
        auto const [first, last] = Content::pool().equal_range(content->hash);
        Content::pool().erase(std::find_if(first, last, [&](auto const& entry) { return entry.second == content; }));
    }
    delete content;
}

AnnotationBag::Map const& AnnotationBag::view() const {
    static auto const& none = *new Map;
    return content ? content->map : none;
}

AnnotationBag::Map& AnnotationBag::own() {
    if (!content || content->isShared) release(std::exchange(content, new Content{view()}));
    return content->map;
}

void AnnotationBag::assign(Map&& annotations) {
    if (content && !content->isShared) {
        content->map = std::move(annotations);
        return;
    }
    Content* replaced = nullptr;
    if (!annotations.empty()) {
        auto const textOf = [](auto const& entry) -> std::string const& { return entry.second; };
        auto const isEqual = [&](Map const& map) { return map == annotations; };
        replaced =
            Content::shared(Content::hashOf(annotations, textOf), isEqual, [&] { return std::move(annotations); });
    }
    release(std::exchange(content, replaced));
}

std::string* AnnotationBag::keptBytes(unsigned int depth) const {
    constexpr unsigned int kDeepest = 256;  // nothing is saved below
    bool const keeps = content && content->isShared && content->keepsBytes && depth < kDeepest;
    return keeps ? &content->savedBytes[depth] : nullptr;
}

}  // namespace Vorlane_v1_0::detail
