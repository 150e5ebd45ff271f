#include "draw/placed_drawing.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <utility>

#include "draw/domain_style.h"
#include "draw/label_space.h"
#include "draw/legend.h"
#include "draw/shown_text.h"
#include "draw/text_width.h"
#include "text/number.h"
#include "text/table.h"

namespace vrltool::draw {

namespace {

constexpr int kUsualHeight = 1600;  // points
constexpr int kLeastHeight = 360;   // for the places, whatever is asked for
constexpr int kEdge = 72;           // points around the origins, for boxes and names
constexpr double kMostScale = 20;   // points for 1 um
constexpr double kScaleAlone = 8;   // where all origins are the same
constexpr int kLongest = 36;        // points, of a box
constexpr int kShortest = 8;
constexpr int kRow = 24;  // of what has no place
constexpr int kScaleHeight = 28;
constexpr std::size_t kNameCharacters = 20;
constexpr std::size_t kMostNamed = 40;  // elements or ports for the pointer
constexpr std::size_t kMostAside = 60;  // elements without a place
constexpr double kRadians = 3.14159265358979323846 / 180;

struct Bounds {
    double left, right, bottom, top;
};

Bounds boundsOf(std::vector<PlacedInstance> const& instances) {
    Place const& first = instances[0].place;
    Bounds all{first.x, first.x, first.y, first.y};
    for (PlacedInstance const& instance : instances) {
        all.left = std::min(all.left, instance.place.x);
        all.right = std::max(all.right, instance.place.x);
        all.bottom = std::min(all.bottom, instance.place.y);
        all.top = std::max(all.top, instance.place.y);
    }
    return all;
}

Box around(std::vector<Point> const& points) {
    auto const byX = std::minmax_element(points.begin(), points.end(), [](auto& a, auto& b) { return a.x < b.x; });
    auto const byY = std::minmax_element(points.begin(), points.end(), [](auto& a, auto& b) { return a.y < b.y; });
    return {byX.first->x, byY.first->y, byX.second->x - byX.first->x, byY.second->y - byY.first->y};
}

/// 1, 2 or 5 times a power of ten, at most that much.
double roundBelow(double most) {
    double const power = std::pow(10, std::floor(std::log10(most)));
    for (double const step : {5.0, 2.0})
        if (step * power <= most) return step * power;
    return power;
}

class PlacedLevel {
public:
    PlacedLevel(Circuit const& c, Placements const& p, Box const& room)
        : circuit(c), placements(p), bounds(boundsOf(p.instances)), groupOf(c.elements.size(), kNone) {
        double const across = bounds.right - bounds.left, up = bounds.top - bounds.bottom;
        scale = kMostScale;
        if (across > 0) scale = std::min(scale, std::max(room.width - 2 * kEdge, 1) / across);
        if (up > 0) scale = std::min(scale, std::max(room.height - 2 * kEdge, 1) / up);
        if (across == 0 && up == 0) scale = kScaleAlone;
        width = static_cast<int>(across * scale) + 2 * kEdge;
        height = static_cast<int>(up * scale) + 2 * kEdge;
        double const spacing =
            std::sqrt(static_cast<double>(width - kEdge) * (height - kEdge) / static_cast<double>(p.instances.size()));
        length = std::clamp(static_cast<int>(spacing / 2), kShortest, kLongest);
    }

    void draw() {
        for (std::size_t i = 0; i < placements.instances.size(); ++i) {
            for (std::size_t const element : placements.instances[i].elements) groupOf[element] = i;
            boxes.push_back(boxOf(placements.instances[i].place));
        }
        for (auto const& [node, ports] : circuit.nodes) drawNet(node, ports);
        drawInstances();
        drawScale();
        drawAside();
    }

    std::vector<Item> items;
    int width, height;
    std::size_t unnamed = 0;  ///< instances whose names have no room
    std::set<vrl::EnumList::Domain> domains;

private:
    /// A point of an instance: so much along its direction, and to its left if it is not mirrored.
    Point at(Place const& place, double along, double left) const {
        double const angle = place.rotation * kRadians, across = place.mirrored ? -left : left;
        double const x = (place.x - bounds.left) * scale + along * std::cos(angle) - across * std::sin(angle);
        double const y = (bounds.top - place.y) * scale - along * std::sin(angle) - across * std::cos(angle);
        return {kEdge + static_cast<int>(std::lround(x)), kEdge + static_cast<int>(std::lround(y))};
    }

    std::vector<Point> boxOf(Place const& place) const {
        double const side = length / 4.0, cut = length / 4.0;
        return {at(place, 0, -side),           at(place, length, -side), at(place, length, side - cut),
                at(place, length - cut, side), at(place, 0, side),       at(place, 0, -side)};
    }

    void drawNet(unsigned node, std::vector<PortPlace> const& ports) {
        auto const met = instancesAt(ports);
        if (met.size() < 2) return;
        auto const domain = domainOf(ports);
        domains.insert(domain);
        Item item;
        item.id = "n" + std::to_string(node);
        item.classes = "wire " + className(domain) + " net" + std::to_string(node);
        for (std::size_t i = 0; i < std::min(ports.size(), kMostNamed); ++i)
            item.tooltip += (i > 0 ? " - " : "") + circuit.portText(ports[i]);
        for (std::size_t i = 1; i < met.size(); ++i)
            item.shapes.push_back(lineShape("line " + className(domain), {middleOf(met[0]), middleOf(met[i])}));
        for (std::size_t const group : met) item.ends.push_back(idOf(placements.instances[group].elements[0]));
        items.push_back(std::move(item));
    }

    /// The instances with a place that ports belong to, each once.
    std::vector<std::size_t> instancesAt(std::vector<PortPlace> const& ports) const {
        std::vector<std::size_t> met;
        std::set<std::size_t> known{kNone};
        for (PortPlace const& port : ports)
            if (known.insert(groupOf[port.element]).second) met.push_back(groupOf[port.element]);
        return met;
    }

    /// The domain that ports have, or an unknown one if they differ.
    vrl::EnumList::Domain domainOf(std::vector<PortPlace> const& ports) const {
        auto domain = vrl::EnumList::Unknown;
        for (PortPlace const& port : ports) {
            auto const own = circuit.elements[port.element].ports[port.port].domain;
            if (own != vrl::EnumList::Unknown && domain != vrl::EnumList::Unknown && own != domain)
                return styleOf(vrl::EnumList::Unknown).domain;
            if (own != vrl::EnumList::Unknown) domain = own;
        }
        return styleOf(domain).domain;
    }

    Point middleOf(std::size_t group) const { return at(placements.instances[group].place, length / 2.0, 0); }

    static std::string idOf(std::size_t element) { return "e" + std::to_string(element + 1); }

    /// All boxes are known before the first name looks for room.
    void drawInstances() {
        LabelSpace space({0, 0, width, height});
        for (auto const& box : boxes) space.take(around(box));
        for (Item const& wire : items)
            for (Shape const& line : wire.shapes) space.takeLine(line.points[0], line.points[1]);
        for (std::size_t i = 0; i < boxes.size(); ++i) {
            Item item = itemOf(placements.instances[i]);
            item.shapes.push_back(lineShape("body", boxes[i]));
            Shape origin;
            origin.kind = Shape::Kind::kDot;
            origin.classes = "dot origin";
            origin.points = {at(placements.instances[i].place, 0, 0)};
            item.shapes.push_back(std::move(origin));
            std::string const text = shortened(placements.instances[i].name, kNameCharacters);
            if (auto const free = space.beside(around(boxes[i]), textWidth(text, 9), 9))
                item.shapes.push_back(textShape("pin", {free->x, free->y + 8}, text, "start"));
            else
                ++unnamed;
            items.push_back(std::move(item));
        }
    }

    Item itemOf(PlacedInstance const& instance) const {
        Item item;
        item.id = idOf(instance.elements[0]);
        item.classes = "element placed";
        item.tooltip =
            instance.name + " at " + numberText(instance.place.x) + ", " + numberText(instance.place.y) + " um";
        if (instance.place.rotation != 0) item.tooltip += ", turned by " + numberText(instance.place.rotation);
        if (instance.place.mirrored) item.tooltip += ", mirrored";
        item.tooltip += ": ";
        for (std::size_t i = 0; i < std::min(instance.elements.size(), kMostNamed); ++i)
            item.tooltip += (i > 0 ? ", " : "") + circuit.elements[instance.elements[i]].kind;
        return item;
    }

    void drawScale() {
        double const um = roundBelow((width - kEdge) / 4.0 / scale);
        int const reach = std::max(static_cast<int>(std::lround(um * scale)), 1), y = height + kScaleHeight / 2;
        Item item;
        item.id = "scale";
        item.classes = "caption";
        item.shapes = {lineShape("scale", {{0, y - 4}, {0, y + 4}}), lineShape("scale", {{0, y}, {reach, y}}),
                       lineShape("scale", {{reach, y - 4}, {reach, y + 4}}),
                       textShape("end", {reach + 8, y + 4}, numberText(um) + " um", "start")};
        items.push_back(std::move(item));
        height += kScaleHeight;
    }

    void drawAside() {
        int x = 0, y = height;
        for (std::size_t i = 0; i < std::min(placements.unplaced.size(), kMostAside); ++i) {
            Element const& element = circuit.elements[placements.unplaced[i]];
            std::string const text = shortened(element.label(), kNameCharacters);
            int const wide = textWidth(text, 9) + 12;
            if (x > 0 && x + wide > width) {
                x = 0;
                y += kRow;
            }
            Item item;
            item.id = idOf(placements.unplaced[i]);
            item.classes = "element unplaced";
            item.tooltip = element.label() + ": " + element.kind;
            item.shapes = {boxShape("body", {x, y, wide, kRow - 8}), textShape("pin", {x + wide / 2, y + 11}, text)};
            items.push_back(std::move(item));
            x += wide + 8;
            width = std::max(width, x);
        }
        if (!placements.unplaced.empty()) height = y + kRow;
    }

    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    Circuit const& circuit;
    Placements const& placements;
    Bounds bounds;
    std::vector<std::size_t> groupOf;  ///< of each element: the instance it belongs to
    std::vector<std::vector<Point>> boxes;
    double scale;
    int length;  ///< of a box
};

Drawing drawnIn(Box const& room, Circuit const& circuit, Placements const& placements, Picture const& picture,
                Selection const& selection) {
    auto notes = selection.notes;
    Caption const least = captionOf(picture, {}, notes);
    int const captions = least.titleHeight + least.belowHeight + 6 * kRow + kScaleHeight + 3 * kMargin;
    PlacedLevel level(circuit, placements, {0, 0, room.width, std::max(room.height - captions, kLeastHeight)});
    level.draw();
    if (level.unnamed > 0) notes.push_back(counted(level.unnamed, "name") + " without room; the pointer shows them");
    Occurring occurring;
    occurring.domains = level.domains;
    Drawing drawing;
    drawing.domains = level.domains;
    drawing.sheets.push_back(
        sceneOf(std::move(level.items), level.width, level.height, captionOf(picture, occurring, notes)));
    return drawing;
}

bool isHigh(Placements const& placements) {
    Bounds const all = boundsOf(placements.instances);
    return all.top - all.bottom > all.right - all.left;
}

}  // namespace

Drawing placedDrawing(Circuit const& circuit, Placements const& placements, Picture const& picture,
                      Selection const& selection) {
    if (!picture.paper)
        return drawnIn({0, 0, picture.width, picture.height == 0 ? kUsualHeight : picture.height}, circuit, placements,
                       picture, selection);
    Paper const paper = isHigh(placements) ? upright(*picture.paper) : *picture.paper;
    Box const most = largestOn(paper);
    int const width = most.width - 2 * kMargin - 2;  // sizes on paper are rounded down
    Drawing drawing = drawnIn({0, 0, width, most.height}, circuit, placements, picture, selection);
    double const own = scaleOn(paper, drawing.sheets[0]);
    if (own < leastScale()) drawing.illegible.push_back(0);
    putOn(paper, own, drawing.sheets[0]);
    return drawing;
}

}  // namespace vrltool::draw
