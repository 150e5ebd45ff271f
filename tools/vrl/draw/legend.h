#pragma once

#include <set>
#include <string>
#include <vector>

#include "draw/picture.h"
#include "vrllib/vrllib.h"

namespace vrltool::draw {

/// What occurs in a picture and needs an entry in its legend.
struct Occurring {
    std::set<vrl::EnumList::Domain> domains;
    bool openPort = false;
    bool foreignPort = false;  ///< a connected port that its block does not have
    bool closedComposite = false;
    bool unknownKind = false;
};

/// What is below a picture, as an HTML-like table: its title, its legend and the notes. Empty without any.
std::string caption(Picture const& picture, Occurring const& occurring, std::vector<std::string> const& notes);

}  // namespace vrltool::draw
