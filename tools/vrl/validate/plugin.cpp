#include "validate/plugin.h"

#include <dlfcn.h>

#include <algorithm>

#include "text/table.h"

namespace vrltool::validate {

namespace {

std::array<Creators, kTargetCount> allCreators() {
    std::array<Creators, kTargetCount> all;
    for (std::size_t i = 0; i < kTargetCount; ++i) all[i] = kTargets[i].creators();
    return all;
}

Keys newKeys(std::array<Creators, kTargetCount> const& before) {
    Keys keys;
    auto const after = allCreators();
    for (std::size_t i = 0; i < kTargetCount; ++i)
        for (auto const& [key, creator] : after[i]) {
            auto const old = before[i].find(key);
            if (old == before[i].end() || old->second != creator) keys.of[i].push_back(key);
        }
    return keys;
}

}  // namespace

bool Keys::empty() const {
    return std::all_of(of.begin(), of.end(), [](auto const& keys) { return keys.empty(); });
}

std::string keysText(Keys const& keys) {
    std::string text;
    for (std::size_t i = 0; i < kTargetCount; ++i) {
        if (keys.of[i].empty()) continue;
        text += (text.empty() ? "" : ", ") + counted(keys.of[i].size(), kTargets[i].one, kTargets[i].plural);
    }
    return text.empty() ? "nothing" : text;
}

Keys presentKeys() { return newKeys({}); }

Keys loadPlugin(std::string const& path, Report& report) {
    auto const before = allCreators();
    for (TargetInfo const& target : kTargets) {
        report.step(std::string("loading it for its ") + target.plural);
        target.load(path.c_str());
    }
    return newKeys(before);
}

std::optional<Keys> loadForCheck(Job const& job, Report& report) {
    std::optional<Keys> keys;
    std::string const thrown = throwsText([&] { keys = loadPlugin(job.plugin, report); });
    if (!thrown.empty()) report.notRun("an entry point " + thrown);
    if (keys && keys->empty()) {
        report.notRun("it brings no keys");
        keys.reset();
    }
    return keys;
}

void* mapPlugin(std::string const& path, std::string& error) {
    void* const module = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (module) return module;
    char const* const words = dlerror();
    error = words ? words : "the loader reports no reason";
    return nullptr;
}

}  // namespace vrltool::validate
