#pragma once

#include <cstddef>
#include <memory>

#include "exchange/document.h"
#include "exchange/findings.h"
#include "exchange/library.h"
#include "exchange/name_map.h"
#include "vrllib/vrllib.h"

namespace vrltool::exchange {

/// Frees a netlist as the library does.
struct NetlistDeleter {
    void operator()(vrl::Netlist* netlist) const { vrl::Netlist::destroy(netlist); }
};

/// What an import made, and how many of each.
struct Imported {
    std::unique_ptr<vrl::Netlist, NetlistDeleter> netlist;
    std::size_t elements = 0;
    std::size_t settings = 0;    ///< of all instances
    std::size_t parameters = 0;  ///< set by settings
    std::size_t nets = 0;        ///< carried over
    std::size_t ports = 0;       ///< likewise
    std::size_t leftOut = 0;     ///< instances, nets and ports that were not
};

/// The circuit of a document, with everything that it cannot hold as notes. What cannot be carried over is an error in
/// `findings`, and is kept in the note of what was left out. The kinds outlive the netlist.
Imported importDocument(Document const& document, NameMap const& map, Kinds& kinds, Findings& findings);

}  // namespace vrltool::exchange
