#pragma once

#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "draw/scene.h"

namespace vrltool::draw {

/// The room for names beside things that have their places already.
class LabelSpace {
public:
    explicit LabelSpace(Box const& w) : whole(w) {}

    /// Nothing else is put there.
    void take(Box const& box) { take(box, false); }
    /// Names are on a line only where there is no other room.
    void takeLine(Point const& from, Point const& to);
    /// Takes a box of that size at the right of a thing, at its left, above or below it: the first place that is
    /// free, and without lines if possible. Nothing if none is.
    std::optional<Box> beside(Box const& thing, int width, int height);

private:
    struct Taken {
        Box box;
        bool line;
    };

    void take(Box const& box, bool line);
    bool isFree(Box const& box, bool ofLines) const;
    template <class Use>
    void forCells(Box const& box, Use const& use) const;

    Box whole;
    std::map<std::pair<int, int>, std::vector<Taken>> cells;  ///< what is taken, by where it is
};

}  // namespace vrltool::draw
