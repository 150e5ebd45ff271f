#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "circuit/parameters.h"
#include "exchange/name_map.h"
#include "vrllib/vrllib.h"

namespace vrltool::exchange {

/// A block of a kind as it leaves its plug-in, with its parameters by name.
struct FreshBlock {
    vrl::BB* block = nullptr;  ///< owned by the workshop
    std::map<std::string, Parameter> parameters;
};

/// Makes blocks, and foundries once each. It outlives the blocks.
class Workshop {
public:
    Workshop() = default;
    Workshop(Workshop const&) = delete;
    Workshop& operator=(Workshop const&) = delete;
    ~Workshop();

    /// Whether a plug-in brings that foundry. The empty name is that of no foundry, which there always is.
    bool hasFoundry(std::string const& name) { return name.empty() || foundry(name) != nullptr; }
    /// A new block for the caller, or null for an unknown kind.
    vrl::BB* make(std::string const& foundryName, std::string const& kind);
    /// The block of a kind that nobody has touched, or null for an unknown kind.
    FreshBlock const* fresh(std::string const& foundryName, std::string const& kind);

private:
    vrl::Foundry* foundry(std::string const& name);

    std::map<std::string, vrl::Foundry*> foundries;
    std::map<std::pair<std::string, std::string>, FreshBlock> freshBlocks;
};

/// The keys of all blocks, and those of all foundries.
std::vector<std::string> blockKeys();
std::vector<std::string> foundryKeys();

/// A rule that maps a kind of ours to itself, name by name.
ComponentRule sameNamesRule(std::string const& kind);

/**@{*/
/// By a rule: the port of ours for a name of theirs, empty if there is none; and the other way round.
std::string ourPort(ComponentRule const& rule, vrl::BB& block, std::string const& theirs);
std::string theirPort(ComponentRule const& rule, std::string const& ours);
/**@}*/

/// A parameter on the other side, with the factor from theirs to ours. The name is empty if there is none.
struct MappedName {
    std::string name;
    double factor = 1;
};

/**@{*/
/// By a rule: the parameter of ours for a setting of theirs, and the other way round.
MappedName ourParameter(ComponentRule const& rule, vrl::BB& block, std::string const& theirs);
MappedName theirSetting(ComponentRule const& rule, std::string const& ours);
/**@}*/

}  // namespace vrltool::exchange
