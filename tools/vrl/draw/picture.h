#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>

#include "circuit/outer_names.h"
#include "draw/paper.h"

namespace vrltool::draw {

/// What a picture of a circuit is to show.
struct Picture {
    std::string title;        ///< empty: none
    OuterNames names;         ///< of the boundary; what has none is numbered
    std::string around;       ///< the element whose neighbourhood is drawn; empty: everything
    std::size_t hops = 1;     ///< how far that neighbourhood reaches, in connections
    std::size_t max = 200;    ///< the most elements, those inside composites included; 0: no limit
    bool parameters = false;  ///< whether blocks show the values of their parameters
    bool legend = true;
    std::map<std::string, std::string> symbols;  ///< the names of those of kinds, see symbol_views.h
    int width = 1600;            ///< points, past which a picture is folded, as far as its blocks are not wider
    int height = 0;              ///< points, past which it goes on on another sheet; 0: it is one sheet, however high
    std::optional<Paper> paper;  ///< that each sheet fits on, instead of width and height
};

}  // namespace vrltool::draw
