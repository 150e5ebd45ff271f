#include "tests/tools/draw/measure.h"

#include <algorithm>
#include <map>
#include <pugixml.hpp>
#include <set>
#include <sstream>
#include <stdexcept>
#include <utility>

#include "draw/text_width.h"

namespace vrl_test {

namespace {

struct Rect {
    double left, top, right, bottom;
};

bool overlap(Rect const& a, Rect const& b) {
    return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

bool within(Rect const& inner, Rect const& outer) {
    return inner.left >= outer.left && inner.right <= outer.right && inner.top >= outer.top &&
           inner.bottom <= outer.bottom;
}

struct At {
    double x, y;
};

bool onEdge(At const& at, Rect const& box) {
    bool const inside = at.x >= box.left && at.x <= box.right && at.y >= box.top && at.y <= box.bottom;
    return inside && !(at.x > box.left + 6 && at.x < box.right - 6 && at.y > box.top && at.y < box.bottom);
}

struct Segment {
    At a, b;  ///< from the left or the top to the right or the bottom

    Segment(At const& from, At const& to)
        : a{std::min(from.x, to.x), std::min(from.y, to.y)}, b{std::max(from.x, to.x), std::max(from.y, to.y)} {}
    bool level() const { return a.y == b.y; }
    bool holds(At const& at) const { return at.x >= a.x && at.x <= b.x && at.y >= a.y && at.y <= b.y; }
    bool enters(Rect const& box) const {
        return a.x < box.right && b.x > box.left && a.y < box.bottom && b.y > box.top;
    }
};

struct Wire {
    std::string id;
    std::string level;  ///< the id of its frame; empty: none
    std::vector<std::string> ends;
    std::vector<std::vector<At>> paths;
    std::vector<Segment> segments;
};

struct Thing {
    std::string id;
    Rect box;                 ///< its body
    std::vector<Rect> boxes;  ///< and its tags
    std::vector<Rect> symbols;
    bool frame = false;
};

struct Text {
    std::string owner;
    std::string text;
    Rect box;
};

bool hasClass(pugi::xml_node const& node, std::string const& name) {
    std::istringstream words(node.attribute("class").value());
    for (std::string word; words >> word;)
        if (word == name) return true;
    return false;
}

/// Reads "M1,2H3V4" with whole numbers.
std::vector<At> pointsOf(std::string const& path) {
    std::vector<At> points;
    std::istringstream is(path);
    char command = 0, comma = 0;
    while (is >> command) {
        At at = points.empty() ? At{0, 0} : points.back();
        if (command == 'H')
            is >> at.x;
        else if (command == 'V')
            is >> at.y;
        else
            is >> at.x >> comma >> at.y;
        if (!is) throw std::runtime_error("not a path: " + path);
        points.push_back(at);
    }
    return points;
}

Rect rectOf(pugi::xml_node const& node) {
    double const x = node.attribute("x").as_double(), y = node.attribute("y").as_double();
    return {x, y, x + node.attribute("width").as_double(), y + node.attribute("height").as_double()};
}

Rect textBox(pugi::xml_node const& node) {
    double const x = node.attribute("x").as_double(), y = node.attribute("y").as_double();
    bool const title = hasClass(node, "title"), small = hasClass(node, "pin") || hasClass(node, "kind");
    int const size = title ? 14 : small ? 9 : 10;
    double const width = vrltool::draw::textWidth(node.text().get(), size, title || hasClass(node, "name"));
    std::string const anchor = node.attribute("text-anchor").value();
    double const before = anchor == "start" ? 0 : anchor == "end" ? width : width / 2;
    if (node.attribute("transform")) return {x - 0.75 * size, y + before - width, x + 0.2 * size, y + before};
    return {x - before, y - 0.75 * size, x - before + width, y + 0.2 * size};
}

Rect symbolBox(pugi::xml_node const& node) {
    std::istringstream place(std::string(node.attribute("transform").value()).substr(sizeof "translate(" - 1));
    double x = 0, y = 0;
    char comma = 0;
    place >> x >> comma >> y;
    return {x - 20, y - 10, x + 20, y + 10};
}

class Picture {
public:
    explicit Picture(std::string const& svg) {
        auto const parsed = document.load_buffer(svg.data(), svg.size());
        if (!parsed) throw std::runtime_error(std::string("no SVG: ") + parsed.description());
        auto const root = document.child("svg");
        std::istringstream view(root.attribute("viewBox").value());
        int left = 0, top = 0;
        view >> left >> top >> result.width >> result.height;
        for (auto const& item : root.children("g")) read(item);
        if (things.empty() && texts.empty()) throw std::runtime_error("no picture of a circuit");
    }

    Measured measure() {
        for (Wire const& wire : wires) {
            checkWire(wire);
            checkEnds(wire);
        }
        checkPairs();
        checkBoxes();
        double filled = 0;
        for (Thing const& thing : things)
            for (Rect const& box : thing.boxes)
                if (!thing.frame) filled += (box.right - box.left) * (box.bottom - box.top);
        result.empty = 1 - filled / (static_cast<double>(result.width) * result.height);
        return std::move(result);
    }

private:
    void read(pugi::xml_node const& item) {
        std::string const id = item.attribute("id").value();
        if (!ids.insert(id).second) fault("two things have the id " + id);
        for (auto const& text : item.children("text")) texts.push_back({id, text.text().get(), textBox(text)});
        if (hasClass(item, "wire")) readWire(item, id);
        if (hasClass(item, "edge") || hasClass(item, "caption") || hasClass(item, "legend")) return;
        if (hasClass(item, "element") || hasClass(item, "frame")) ++result.blocks;
        Thing thing;
        thing.id = id;
        thing.frame = hasClass(item, "frame");
        for (auto const& box : item.children("rect"))
            if (!hasClass(box, "port")) thing.boxes.push_back(rectOf(box));
        for (auto const& path : item.children("path"))
            if (hasClass(path, "outline")) thing.boxes.push_back(boundsOf(pointsOf(path.attribute("d").value())));
        for (auto const& path : item.children("path"))
            if (hasClass(path, "symbol")) thing.symbols.push_back(symbolBox(path));
        if (hasClass(item, "cut")) thing.boxes.push_back(texts.back().box);
        if (thing.boxes.empty()) return;
        thing.box = thing.boxes[0];
        byId[id] = things.size();
        things.push_back(std::move(thing));
    }

    static Rect boundsOf(std::vector<At> const& points) {
        Rect box{points[0].x, points[0].y, points[0].x, points[0].y};
        for (At const& at : points)
            box = {std::min(box.left, at.x), std::min(box.top, at.y), std::max(box.right, at.x),
                   std::max(box.bottom, at.y)};
        return box;
    }

    void readWire(pugi::xml_node const& item, std::string const& id) {
        Wire wire;
        wire.id = id;
        auto const end = id.rfind("_n");
        wire.level = end == std::string::npos ? "" : id.substr(0, end);
        std::istringstream names(item.attribute("data-ends").value());
        for (std::string name; names >> name;) wire.ends.push_back(name);
        for (auto const& path : item.children("path")) {
            if (!hasClass(path, "line")) continue;
            wire.paths.push_back(pointsOf(path.attribute("d").value()));
            auto const& points = wire.paths.back();
            for (std::size_t i = 1; i < points.size(); ++i) {
                wire.segments.push_back({points[i - 1], points[i]});
                if (points[i - 1].x != points[i].x && points[i - 1].y != points[i].y) fault(id + " is askew");
            }
            result.bends += points.size() - 2;
        }
        ++result.wires;
        wires.push_back(std::move(wire));
    }

    /// Whether a thing with an id is inside a frame, or is the frame.
    static bool isIn(std::string const& id, std::string const& frame) {
        return id == frame || id.compare(0, frame.size() + 1, frame + "_") == 0;
    }

    bool isOwnFrame(Wire const& wire, Thing const& thing) const { return thing.frame && isIn(wire.level, thing.id); }

    void checkWire(Wire const& wire) {
        for (Thing const& thing : things)
            for (std::size_t i = 0; i < thing.boxes.size(); ++i) {
                bool const own = i == 0 && isOwnFrame(wire, thing);
                for (Segment const& segment : wire.segments) {
                    if (own && !within({segment.a.x, segment.a.y, segment.b.x, segment.b.y}, thing.box))
                        fault(wire.id + " leaves " + thing.id);
                    if (!own && segment.enters(thing.boxes[i])) fault(wire.id + " touches " + thing.id);
                }
            }
        for (Text const& text : texts)
            for (Segment const& segment : wire.segments)
                if (segment.enters(text.box)) fault(wire.id + " touches the text '" + text.text + "'");
    }

    /// Each end of a wire is at one thing that it names, and at each of these is an end.
    void checkEnds(Wire const& wire) {
        std::vector<At> ends;
        for (auto const& path : wire.paths)
            for (At const& at : {path.front(), path.back()}) {
                auto const here = std::count_if(wire.segments.begin(), wire.segments.end(),
                                                [&](Segment const& segment) { return segment.holds(at); });
                if (here == 1) ends.push_back(at);
            }
        if (ends.size() != wire.ends.size())
            fault(wire.id + " has " + std::to_string(ends.size()) + " ends for " + std::to_string(wire.ends.size()));
        for (std::string const& name : wire.ends) {
            auto const thing = byId.find(name);
            bool const met = thing != byId.end() && std::any_of(ends.begin(), ends.end(), [&](At const& at) {
                                 return onEdge(at, things[thing->second].box);
                             });
            if (!met) fault(wire.id + " does not reach " + name);
        }
    }

    void checkPairs() {
        for (std::size_t i = 0; i < wires.size(); ++i)
            for (std::size_t j = 0; j < i; ++j) checkPair(wires[i], wires[j]);
    }

    void checkPair(Wire const& one, Wire const& other) {
        for (Segment const& a : one.segments)
            for (Segment const& b : other.segments) {
                bool const meet = a.a.x <= b.b.x && b.a.x <= a.b.x && a.a.y <= b.b.y && b.a.y <= a.b.y;
                if (!meet) continue;
                Segment const& level = a.level() ? a : b;
                Segment const& upright = a.level() ? b : a;
                bool const cross = a.level() != b.level() && level.a.x < upright.a.x && upright.a.x < level.b.x &&
                                   upright.a.y < level.a.y && level.a.y < upright.b.y;
                if (cross)
                    ++result.crossings;
                else
                    fault(one.id + " runs into " + other.id);
            }
    }

    void checkBoxes() {
        Rect const page{0, 0, static_cast<double>(result.width), static_cast<double>(result.height)};
        for (Thing const& thing : things)
            for (Rect const& symbol : thing.symbols)
                if (!within(symbol, thing.box)) fault("the symbol of " + thing.id + " leaves it");
        for (std::size_t i = 0; i < things.size(); ++i)
            for (Rect const& a : things[i].boxes) {
                if (!within(a, page)) fault(things[i].id + " is outside the picture");
                for (std::size_t j = 0; j < i; ++j)
                    for (Rect const& b : things[j].boxes)
                        if (overlap(a, b) && !areNested(things[i], a, things[j], b))
                            fault(things[i].id + " overlaps " + things[j].id);
            }
        for (std::size_t i = 0; i < texts.size(); ++i) {
            if (!within(texts[i].box, page)) fault("'" + texts[i].text + "' is outside the picture");
            checkTextInThing(texts[i]);
            for (std::size_t j = 0; j < i; ++j)
                if (overlap(texts[i].box, texts[j].box))
                    fault("'" + texts[i].text + "' overlaps '" + texts[j].text + "'");
        }
        for (Wire const& wire : wires)
            for (Segment const& segment : wire.segments)
                if (!within({segment.a.x, segment.a.y, segment.b.x, segment.b.y}, page))
                    fault(wire.id + " is outside the picture");
    }

    static bool areNested(Thing const& one, Rect const& a, Thing const& other, Rect const& b) {
        if (other.frame && isIn(one.id, other.id)) return within(a, other.box);
        return one.frame && isIn(other.id, one.id) && within(b, one.box);
    }

    void checkTextInThing(Text const& text) {
        auto const thing = byId.find(text.owner);
        if (thing == byId.end()) return;
        auto const& boxes = things[thing->second].boxes;
        for (Rect const& symbol : things[thing->second].symbols)
            if (overlap(symbol, text.box)) fault("'" + text.text + "' is on the symbol of " + text.owner);
        bool const inside =
            std::any_of(boxes.begin(), boxes.end(), [&](Rect const& box) { return within(text.box, box); });
        if (!inside) fault("'" + text.text + "' does not fit into " + text.owner);
    }

    void fault(std::string const& text) { result.faults.push_back(text); }

    pugi::xml_document document;
    std::set<std::string> ids;
    std::vector<Wire> wires;
    std::vector<Thing> things;
    std::vector<Text> texts;
    std::map<std::string, std::size_t> byId;
    Measured result;
};

}  // namespace

Measured measured(std::string const& svg) { return Picture(svg).measure(); }

}  // namespace vrl_test
