#pragma once

#include <array>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "validate/check.h"
#include "vrllib/vrllib.h"

namespace vrltool::validate {

/// What plug-ins bring, in the order in which the library loads it.
enum class Brings { kAttribute, kFoundry, kBlock, kNetlist, kView, kBlockView, kNetlistView };
constexpr std::size_t kTargetCount = 7;

/// The creators by key.
using Creators = std::map<std::string, void const*>;

/// One of the seven targets of a load.
struct Target {
    char const* entry;    ///< "initLibraryBB"
    char const* one;      ///< "block"
    char const* several;  ///< "blocks"
    bool (*load)(char const* file);
    Creators (*creators)();
};

/// The seven, in the order of Brings.
std::array<Target, kTargetCount> const& targets();
Target const& targetOf(Brings what);

/// The keys of each target, sorted.
struct Keys {
    std::array<std::vector<std::string>, kTargetCount> of;

    std::vector<std::string> const& operator[](Brings what) const { return of[static_cast<std::size_t>(what)]; }
    bool empty() const;
    bool operator==(Keys const& other) const { return of == other.of; }
};

/// "1 foundry, 12 blocks"; "nothing" without any.
std::string keysText(Keys const& keys);

/// All keys that the factories have now.
Keys presentKeys();

/// Loads a plug-in as the library does: one load for each target. Yields the keys that it registered, those that others
/// had before included. What an entry point throws passes through.
Keys loadPlugin(std::string const& path, Report& report);

/// Loads the plug-in of a job. Nothing, and the check counts as not run, if an entry point throws.
std::optional<Keys> loadForCheck(Job const& job, Report& report);

/// The exception that is being handled, as text.
std::string describeException();

/// What a call threw, as "throws 'text'"; empty if it came back.
template <class Call>
std::string thrownBy(Call const& call) {
    try {
        call();
    } catch (...) {
        return describeException();
    }
    return {};
}

/// Maps the file at once. Null with the loader's words in `error`.
void* mapPlugin(std::string const& path, std::string& error);

}  // namespace vrltool::validate
