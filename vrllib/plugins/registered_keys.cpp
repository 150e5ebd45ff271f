#include "vrllib/plugins/registered_keys.h"

#include "vrllib/core/type_factory.h"
#include "vrllib/platform/platform.h"

namespace Vorlane_v1_0::detail {

namespace {

std::string fileOf(std::type_info const* type) { return platform::fileWith(type); }

}  // namespace

void RegisteredKeys::update() { compareAll(nullptr); }

std::vector<LoadedKey> RegisteredKeys::takeChanges() {
    std::vector<LoadedKey> changes;
    compareAll(&changes);
    return changes;
}

// Both maps are in key order, so one walk finds every difference.
template <class T>
void RegisteredKeys::compare(LoadTarget target, std::vector<LoadedKey>* changes) {
    Known& before = known[static_cast<std::size_t>(target)];
    auto old = before.begin();
    for (auto const& entry : typeFactory<T>()) {
        std::type_info const* const type = &typeid(*entry.second);
        while (old != before.end() && old->first < entry.first) old = before.erase(old);
        if (old == before.end() || entry.first < old->first) {
            before.emplace_hint(old, entry.first, type);
            if (changes) changes->push_back({target, entry.first, fileOf(type), {}});
            continue;
        }
        if (old->second != type) {
            std::string const from = fileOf(old->second);
            std::string const file = fileOf(type);
            if (changes && from != file) changes->push_back({target, entry.first, file, from});
            old->second = type;
        }
        ++old;
    }
    before.erase(old, before.end());
}

template <class... T>
void RegisteredKeys::compareEach(TypeList<T...>, std::vector<LoadedKey>* changes) {
    std::size_t target = 0;
    (compare<T>(static_cast<LoadTarget>(target++), changes), ...);
}

void RegisteredKeys::compareAll(std::vector<LoadedKey>* changes) { compareEach(FactoryTypes(), changes); }

}  // namespace Vorlane_v1_0::detail
