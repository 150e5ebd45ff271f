#include "draw/paper.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace vrltool::draw {

namespace {

constexpr double kPoint = 25.4 / 72;  // mm
constexpr double kEdge = 8;           // mm, where printers do not print
constexpr double kSmallestText = 9;   // in a scene
constexpr double kLeastText = 5;      // on paper, in points

struct PaperName {
    char const* name;
    Paper paper;
};

constexpr PaperName kPapers[] = {{"a4", {297, 210}}, {"a3", {420, 297}}, {"letter", {279.4, 215.9}}};

int pointsWithin(double side, double scale) { return static_cast<int>((side - 2 * kEdge) / kPoint / scale); }

}  // namespace

std::vector<std::string> paperNames() {
    std::vector<std::string> names;
    for (PaperName const& known : kPapers) names.emplace_back(known.name);
    return names;
}

std::optional<Paper> paperOf(std::string const& name) {
    for (PaperName const& known : kPapers)
        if (name == known.name) return known.paper;
    return std::nullopt;
}

Paper upright(Paper const& paper) { return {paper.height, paper.width}; }

double leastScale() { return kLeastText / kSmallestText; }

Box largestOn(Paper const& paper) {
    return {0, 0, pointsWithin(paper.width, leastScale()), pointsWithin(paper.height, leastScale())};
}

double scaleOn(Paper const& paper, Scene const& scene) {
    double const across = static_cast<double>(pointsWithin(paper.width, 1)) / std::max(scene.width, 1);
    double const down = static_cast<double>(pointsWithin(paper.height, 1)) / std::max(scene.height, 1);
    return std::min({1.0, across, down});
}

void putOn(Paper const& paper, double scale, Scene& scene) {
    int const edge = static_cast<int>(kEdge / kPoint / scale);
    for (Item& item : scene.items) move(item, edge, edge);
    scene.width = static_cast<int>(std::ceil(paper.width / kPoint / scale));
    scene.height = static_cast<int>(std::ceil(paper.height / kPoint / scale));
    scene.paperWidth = paper.width;
    scene.paperHeight = paper.height;
}

}  // namespace vrltool::draw
