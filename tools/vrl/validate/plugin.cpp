#include "validate/plugin.h"

#include <cxxabi.h>
#include <dlfcn.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <typeinfo>

#include "text/table.h"

namespace vrltool::validate {

namespace {

template <class T>
Creators creatorsOf() {
    Creators creators;
    for (auto entry = FactoryLoader<T>::begin(); entry != FactoryLoader<T>::end(); ++entry)
        creators.emplace(entry->first, entry->second);
    return creators;
}

// Each target is loaded by the file's own name: a list would take ";" and "*" in it for its own.
template <class T>
bool loadAs(char const* file, char const* entry, char const* label) {
    return loadDllSo(file, entry, &FactoryLoader<T>::factory(), label, true);
}

#define VRL_TARGET_(T, entry, one, several)                                                                            \
    Target {                                                                                                           \
        entry, one, several, [](char const* file) { return loadAs<T>(file, entry, one); }, &creatorsOf<T>              \
    }

std::array<Creators, kTargetCount> allCreators() {
    std::array<Creators, kTargetCount> all;
    for (std::size_t i = 0; i < kTargetCount; ++i) all[i] = targets()[i].creators();
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

std::array<Target, kTargetCount> const& targets() {
    using vrl::TypeView;
    static std::array<Target, kTargetCount> const all{
        VRL_TARGET_(vrl::Attribute, "initLibraryAttribute", "parameter type", "parameter types"),
        VRL_TARGET_(vrl::Foundry, "initLibraryFoundry", "foundry", "foundries"),
        VRL_TARGET_(vrl::BB, "initLibraryBB", "block", "blocks"),
        VRL_TARGET_(vrl::Netlist, "initLibraryNetlist", "netlist", "netlists"),
        VRL_TARGET_(vrl::View, "initLibraryComponentView", "view", "views"),
        VRL_TARGET_(TypeView<vrl::BB>, "initLibraryBBView", "block view", "block views"),
        VRL_TARGET_(TypeView<vrl::Netlist>, "initLibraryNetlistView", "netlist view", "netlist views")};
    return all;
}

#undef VRL_TARGET_

Target const& targetOf(Brings what) { return targets()[static_cast<std::size_t>(what)]; }

bool Keys::empty() const {
    return std::all_of(of.begin(), of.end(), [](auto const& keys) { return keys.empty(); });
}

std::string keysText(Keys const& keys) {
    std::string text;
    for (std::size_t i = 0; i < kTargetCount; ++i) {
        if (keys.of[i].empty()) continue;
        text += (text.empty() ? "" : ", ") + counted(keys.of[i].size(), targets()[i].one, targets()[i].several);
    }
    return text.empty() ? "nothing" : text;
}

Keys presentKeys() { return newKeys({}); }

Keys loadPlugin(std::string const& path, Report& report) {
    auto const before = allCreators();
    for (Target const& target : targets()) {
        report.step(std::string("loading it for its ") + target.several);
        target.load(path.c_str());
    }
    return newKeys(before);
}

std::optional<Keys> loadForCheck(Job const& job, Report& report) {
    std::optional<Keys> keys;
    std::string const thrown = thrownBy([&] { keys = loadPlugin(job.plugin, report); });
    if (!thrown.empty()) report.notRun("an entry point " + thrown);
    if (keys && keys->empty()) {
        report.notRun("it brings no keys");
        keys.reset();
    }
    return keys;
}

std::string describeException() {
    try {
        throw;
    } catch (char const* text) {
        return std::string("throws '") + (text ? text : "") + "'";
    } catch (std::string const& text) {
        return "throws '" + text.substr(0, text.find('\n')) + "'";
    } catch (std::exception const& error) {
        return std::string("throws '") + error.what() + "'";
    } catch (...) {
        std::type_info const* const type = abi::__cxa_current_exception_type();
        std::unique_ptr<char, decltype(&std::free)> const name(
            type ? abi::__cxa_demangle(type->name(), nullptr, nullptr, nullptr) : nullptr, &std::free);
        return name ? std::string("throws a value of type ") + name.get() : "throws something";
    }
}

void* mapPlugin(std::string const& path, std::string& error) {
    void* const module = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (module) return module;
    char const* const words = dlerror();
    error = words ? words : "the loader gives no reason";
    return nullptr;
}

}  // namespace vrltool::validate
