#pragma once

#include <array>
#include <cstddef>
#include <map>
#include <string>
#include <typeinfo>

namespace vrltool {

/// The types for which the library loads a plug-in, in the order of the loads.
enum Target : std::size_t { kAttribute, kFoundry, kBlock, kNetlist, kComponentView, kBlockView, kNetlistView };

constexpr std::size_t kTargetCount = 7;

/// The types of the creators of a factory, by key: the address of one is in the file that contains the code.
using Creators = std::map<std::string, std::type_info const*>;

/// What there is to know of a target.
struct TargetInfo {
    char const* entry;  ///< the entry point of a plug-in: "initLibraryBB"
    char const* id;     ///< in JSON
    char const* one;    ///< for people: "block"
    char const* plural;
    Creators (*creators)();
    bool (*load)(char const* file);  ///< loads that very file for this target, as the library does
};

/// The seven, by Target.
extern std::array<TargetInfo, kTargetCount> const kTargets;

/// "block 'sfBend'".
std::string keyText(TargetInfo const& target, std::string const& key);

}  // namespace vrltool
