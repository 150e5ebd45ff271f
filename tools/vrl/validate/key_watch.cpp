#include "validate/key_watch.h"

#include <cxxabi.h>

#include <cstdlib>
#include <memory>

#include "validate/heap.h"

namespace vrltool::validate {

namespace {

KeyWatch* current = nullptr;

/// The class that a creator makes: its own type is "...::cfT<CLASS>".
std::string madeClass(std::type_info const& creator) {
    std::unique_ptr<char, decltype(&std::free)> const plain(
        abi::__cxa_demangle(creator.name(), nullptr, nullptr, nullptr), &std::free);
    std::string const name = plain ? plain.get() : creator.name();
    std::string const before = "::cfT<";
    auto const start = name.find(before);
    return start == std::string::npos ? name
                                      : name.substr(start + before.size(), name.size() - start - before.size() - 1);
}

}  // namespace

KeyWatch::KeyWatch() {
    for (std::size_t i = 0; i < kTargetCount; ++i) before[i] = kTargets[i].creators();
    current = this;
    setHeapListener(&look);
}

KeyWatch::~KeyWatch() {
    setHeapListener(nullptr);
    current = nullptr;
}

std::vector<ReplacedClass> KeyWatch::end() {
    look();
    setHeapListener(nullptr);
    return replaced;
}

void KeyWatch::look() {
    for (std::size_t i = 0; i < kTargetCount; ++i)
        for (auto const& [key, creator] : kTargets[i].creators()) {
            auto const [known, isNew] = current->seen[i].emplace(key, creator);
            bool const same = isNew || *known->second == *creator || current->before[i].count(key) > 0;
            if (same) continue;
            current->replaced.push_back({keyText(kTargets[i], key), madeClass(*known->second), madeClass(*creator)});
            known->second = creator;
        }
}

}  // namespace vrltool::validate
