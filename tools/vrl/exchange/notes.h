#pragma once

#include <string>

#include "exchange/tree.h"
#include "vrllib/vrllib.h"

// What an import keeps beside the circuit: notes, of a block or of the netlist, each a line of JSON. An export gives
// them back.

namespace vrltool::exchange::notes {

inline constexpr char const kPrefix[] = "vrl::import/";

/**@{*/
/// Of a block: the component and the settings as they were told, and what belonged to the instance.
inline constexpr char const kComponent[] = "vrl::import/component";
inline constexpr char const kSettings[] = "vrl::import/settings";
inline constexpr char const kInfo[] = "vrl::import/info";
inline constexpr char const kArray[] = "vrl::import/array";
inline constexpr char const kPlacement[] = "vrl::import/placement";
/**@}*/

/// Of both: further members, of the instance or of the whole.
inline constexpr char const kMembers[] = "vrl::import/members";

/**@{*/
/// Of the netlist: its name; the outer ports [[name, element, port]], those that were left out as
/// [name, end]; further members of nets; whether nets came as
/// connections; placements of no instance; and what a partial import left out, in the shape of a netlist.
inline constexpr char const kName[] = "vrl::import/name";
inline constexpr char const kPorts[] = "vrl::import/ports";
inline constexpr char const kNets[] = "vrl::import/nets";
inline constexpr char const kConnections[] = "vrl::import/connections";
inline constexpr char const kPlacements[] = "vrl::import/placements";
inline constexpr char const kLeftOut[] = "vrl::import/leftOut";
/**@}*/

/// Sets a note unless the value is null.
void set(vrl::Annotations& target, char const* key, Tree const& value);

/// The value of a note; null without it.
Tree get(vrl::Annotations const& source, char const* key);

}  // namespace vrltool::exchange::notes
