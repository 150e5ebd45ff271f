#pragma once

#include <array>
#include <string>
#include <vector>

#include "vrllib/vrllib.h"

namespace vrltool::exchange {

/// The boundary lists of a netlist.
enum class Side { kInput, kOutput, kDc };

inline constexpr std::array<Side, 3> kSides{Side::kInput, Side::kOutput, Side::kDc};

/// What each is called in the member "boundary" of "vrl".
char const* sideWord(Side side);

/// The list for an outer port: an optical one by the direction of its port, an input where the port tells none; all
/// others are DC.
Side sideOf(std::string const& port, vrl::EnumList::Domain domain);

/**@{*/
/// The nodes of a list, and the adding of one.
std::vector<unsigned> sideNodes(vrl::Netlist& netlist, Side side);
void addToSide(vrl::Netlist& netlist, Side side, unsigned node);
/**@}*/

}  // namespace vrltool::exchange
