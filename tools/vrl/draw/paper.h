#pragma once

#include <optional>
#include <string>
#include <vector>

#include "draw/scene.h"

namespace vrltool::draw {

/// A sheet of paper, in mm.
struct Paper {
    double width = 0;
    double height = 0;
};

/// The names of sizes of paper: "a4", ...
std::vector<std::string> paperNames();

/// A size of paper by its name, the wider side level.
std::optional<Paper> paperOf(std::string const& name);

Paper upright(Paper const& paper);

/// The largest scene that fits onto a paper at the least scale.
Box largestOn(Paper const& paper);

/// The scale at which the smallest text is of five points.
double leastScale();

/// How a scene is scaled to fit onto a paper; 1 at most, where a unit is a point.
double scaleOn(Paper const& paper, Scene const& scene);

/// Puts a scene on a paper, with its margins.
void putOn(Paper const& paper, double scale, Scene& scene);

}  // namespace vrltool::draw
