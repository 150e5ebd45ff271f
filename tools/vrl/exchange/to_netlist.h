#pragma once

#include <cstddef>
#include <memory>

#include "exchange/document.h"
#include "exchange/findings.h"
#include "exchange/name_map.h"
#include "exchange/workshop.h"
#include "vrllib/vrllib.h"

namespace vrltool::exchange {

/// Frees a netlist as the library does.
struct NetlistDeleter {
    void operator()(vrl::Netlist* netlist) const { vrl::Netlist::destroy(netlist); }
};
using NetlistOwner = std::unique_ptr<vrl::Netlist, NetlistDeleter>;

/// What an import made.
struct Imported {
    NetlistOwner netlist;
    std::size_t elements = 0;
    std::size_t settings = 0;    ///< of all instances
    std::size_t parameters = 0;  ///< set by settings
    std::size_t nets = 0;        ///< carried over
    std::size_t ports = 0;       ///< likewise
    std::size_t leftOut = 0;     ///< instances, nets and ports that were not
};

/// The circuit of a document, with everything that it cannot hold as notes. What cannot be carried over is an error in
/// `findings`, and stands in the note of what was left out. The workshop outlives the netlist.
Imported netlistFrom(Document const& document, NameMap const& map, Workshop& workshop, Findings& findings);

}  // namespace vrltool::exchange
