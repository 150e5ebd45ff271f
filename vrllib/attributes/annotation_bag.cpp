#include "vrllib/attributes/annotation_bag.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <memory>
#include <unordered_map>
#include <utility>

#include "vrllib/serialisation/kept_bytes.h"

namespace Vorlane_v1_0::detail {

/// A shared content, as long as none of them has been destroyed since.
class AnnotationBag::Guess {
public:
    Content* get(std::size_t destroyed) const { return destroyed == destroyedBefore ? content : nullptr; }
    void set(Content* c, std::size_t destroyed) {
        content = c;
        destroyedBefore = destroyed;
    }

private:
    Content* content = nullptr;
    std::size_t destroyedBefore = 0;
};

struct AnnotationBag::Content {
    Map map;
    std::size_t users = 1;
    bool isShared = false;  // found by its content, and never changed; otherwise it has one user
    bool keepsBytes = true;
    std::size_t hash = 0;
    std::unique_ptr<KeptBytes> keptBytes = nullptr;
    Guess next = {};  // that was found after this one
};

/// The shared contents.
class AnnotationBag::Pool {
public:
    /// Never destroyed: objects with static storage may be used to the very end.
    static Pool& instance() {
        static auto& pool = *new Pool;
        return pool;
    }

    /// The content of those entries, with one more user; a new one from `make` if there is none. The blocks of a kind
    /// make the same annotations in the same order, so the first look is at what came next the last time.
    template <class Entries, class TextOf, class Equal, class Make>
    Content* shared(Entries const& entries, TextOf textOf, Equal isEqual, Make make) {
        Content* const before = last.get(destroyed);
        Content* found = before ? before->next.get(destroyed) : nullptr;
        if (!found || !isEqual(found->map)) {
            found = foundOrNew(hashOf(entries, textOf), isEqual, make);
            if (before) before->next.set(found, destroyed);
        }
        last.set(found, destroyed);
        ++found->users;
        return found;
    }

    void remove(Content* content) {
        auto const [first, end] = contents.equal_range(content->hash);
        contents.erase(std::find_if(first, end, [&](auto const& entry) { return entry.second == content; }));
        ++destroyed;
    }

private:
    /// Keys count only when contents are compared: they are the same nearly always.
    template <class Entries, class TextOf>
    static std::size_t hashOf(Entries const& entries, TextOf textOf) {
        std::size_t hash = 0;
        for (auto const& entry : entries) hash = hash * 31 + std::hash<std::string>()(textOf(entry));
        return hash;
    }

    template <class Equal, class Make>
    Content* foundOrNew(std::size_t hash, Equal isEqual, Make make) {
        auto const [first, end] = contents.equal_range(hash);
        auto const found = std::find_if(first, end, [&](auto const& entry) { return isEqual(entry.second->map); });
        if (found != end) return found->second;
        auto* const content = new Content{make()};
        content->users = 0;
        content->isShared = true;
        content->hash = hash;
        std::size_t size = 0;
        for (auto const& [key, text] : content->map) {
            size += key.size() + text.size();
            content->keepsBytes &= size < 4096 && key.find('\0') == key.npos && text.find('\0') == text.npos;
        }
        contents.emplace(hash, content);
        return content;
    }

    std::unordered_multimap<std::size_t, Content*> contents;  // by hash
    Guess last;                                               // that was found
    std::size_t destroyed = 0;                                // so far
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
    content = Pool::instance().shared(entries, textOf, isEqual, make);
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
    if (content->isShared) Pool::instance().remove(content);
    delete content;
}

AnnotationBag::Map const& AnnotationBag::view() const {
    static auto const& none = *new Map;
    return content ? content->map : none;
}

std::string const* AnnotationBag::find(std::string const& key) const {
    constexpr std::size_t kFew = 4;
    Map const& map = view();
    auto found = map.begin();
    if (map.size() > kFew)
        found = map.find(key);
    else
        while (found != map.end() && found->first != key)
            ++found;  // lengths are compared first: those of a parameter's keys differ
    return found == map.end() ? nullptr : &found->second;
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
        replaced = Pool::instance().shared(annotations, textOf, isEqual, [&] { return std::move(annotations); });
    }
    release(std::exchange(content, replaced));
}

KeptBytes* AnnotationBag::keptBytes() const {
    constexpr std::size_t kManyUsers = 8;  // so that what is kept is little beside what they need
    if (!content || !content->isShared || !content->keepsBytes) return nullptr;
    if (!content->keptBytes && content->users >= kManyUsers) content->keptBytes = std::make_unique<KeptBytes>();
    return content->keptBytes.get();
}

}  // namespace Vorlane_v1_0::detail
