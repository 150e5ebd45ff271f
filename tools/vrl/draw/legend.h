#pragma once

#include <set>
#include <string>
#include <vector>

#include "draw/picture.h"
#include "draw/scene.h"
#include "vrllib/vrllib.h"

namespace vrltool::draw {

/// What occurs in a picture and needs an entry in its legend.
struct Occurring {
    std::set<vrl::EnumList::Domain> domains;
    bool openPort = false;
    bool foreignPort = false;  ///< a connected port that its block does not have
    bool closedComposite = false;
    bool unknownKind = false;
    bool turn = false;       ///< a wire that goes on in another row
    bool sheetTurn = false;  ///< or on another sheet
};

/// What is above and below a picture, each from (0,0) on: its title, and its legend with the notes.
struct Caption {
    std::vector<Item> title, below;
    int titleHeight = 0;
    int belowHeight = 0;
    int width = 0;
};

/// The free edge of a sheet, and what is free between its parts.
constexpr int kMargin = 16;

Caption captionOf(Picture const& picture, Occurring const& occurring, std::vector<std::string> const& notes);

/// A sheet of items that fill a box from (0,0) on, with its title above, and its legend with the notes below.
Scene sceneOf(std::vector<Item> items, int width, int height, Caption caption);

}  // namespace vrltool::draw
