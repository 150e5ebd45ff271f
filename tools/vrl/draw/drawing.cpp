#include "draw/drawing.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <set>
#include <utility>

#include "draw/block_shape.h"
#include "draw/domain_style.h"
#include "draw/legend.h"
#include "draw/pieces.h"
#include "draw/schematic.h"
#include "draw/symbols.h"

namespace vrltool::draw {

namespace {

constexpr int kFramePadding = 8;
constexpr int kMostHeight = 1600;  // of a part of a picture whose height has no limit

/// Draws one circuit, the whole or the inside of a composite, into a box that begins at (0,0).
class LevelDrawing {
public:
    LevelDrawing(Schematic const& s, Picture const& p, Selection const& sel, Occurring& o)
        : schematic(s), picture(p), selection(sel), occurring(o), columns(layout::columnsOf(s.flow)) {}

    /// The sheets of the whole.
    std::vector<Inside> sheets(Room const& room) {
        severalSheets = room.height > 0;
        auto pieces = prepare({room.width, room.height == 0 ? kMostHeight : room.height});
        std::vector<Inside> all;
        auto const sizes = pack(pieces, room);
        nameSheets(pieces);
        for (Box const& size : sizes) {
            for (PlacedPiece& piece : pieces)
                if (piece.sheet == all.size()) emit(piece);
            result.width = size.width;
            result.height = size.height;
            all.push_back(std::exchange(result, {}));
        }
        return all;
    }

    Inside inFrame(int leastWidth) { return inFrame(prepare({}), leastWidth); }

private:
    std::vector<PlacedPiece> prepare(Room const& room) {
        findExits();
        for (std::size_t node = 0; node < schematic.flow.nodes.size(); ++node) shapes.push_back(shapeOf(node));
        if (schematic.frame) widenEdges();
        return piecesOf(schematic.flow, columns, shapes, room,
                        [this](std::size_t net, bool right) { return turnOf(net, right); });
    }

    /// The side to which a wire leaves a port below is that of its other end.
    void findExits() {
        exits.resize(schematic.flow.nodes.size());
        for (layout::Net const& net : schematic.flow.nets)
            for (std::size_t i = 0; i < net.size(); ++i) {
                if (schematic.flow.nodes[net[i].node].pins[net[i].pin] != Side::kBelow) continue;
                layout::PinPlace const& other = net[i == 0 ? 1 : 0];
                exits[net[i].node][net[i].pin] = leadsRight(net[i], other);
            }
    }

    bool leadsRight(layout::PinPlace const& end, layout::PinPlace const& other) const {
        std::size_t const here = columns.column[end.node], there = columns.column[other.node];
        if (here != there) return here < there;
        return sideOf(schematic.flow.nodes[other.node].pins[other.pin], columns.turned[other.node]) != Side::kLeft;
    }

    NodeShape shapeOf(std::size_t node) {
        if (node < schematic.elements.size()) return elementShape(node);
        return labelShape(labelOf(node), pinSide(node) == Side::kLeft);
    }

    Side pinSide(std::size_t label) const { return sideOf(schematic.flow.nodes[label].pins[0], columns.turned[label]); }

    Label const& labelOf(std::size_t node) const { return schematic.labels[node - schematic.elements.size()]; }

    NodeShape elementShape(std::size_t node, bool flipped = false) {
        std::size_t const place = schematic.elements[node];
        Element const& element = schematic.circuit.elements[place];
        ElementLook look;
        for (std::size_t i = 0; i < element.ports.size(); ++i) {
            look.sides.push_back(sideOf(schematic.flow.nodes[node].pins[i], columns.turned[node]));
            look.connected.push_back(schematic.isConnected(element.ports[i]));
        }
        look.tags = schematic.tagsOf(place);
        look.exits = exits[node];
        look.mirrored = columns.turned[node];
        look.flipped = flipped;
        auto const symbol = picture.symbols.find(element.kind);
        if (symbol != picture.symbols.end()) chooseSymbol(element, symbol->second, look);
        note(element, look, schematic.isOpen(place));
        std::string const id = schematic.elementId(place);
        if (!schematic.isOpen(place)) return blockShape(id, element, look, picture.parameters);
        Schematic const inside(schematic, place, look.sides);
        Inside drawn =
            LevelDrawing(inside, picture, selection, occurring).inFrame(leastInside(element, look, picture.parameters));
        return frameShape(id, element, look, picture.parameters, schematic.frame != nullptr, std::move(drawn));
    }

    void chooseSymbol(Element const& element, std::string const& name, ElementLook& look) const {
        look.symbol = name;
        Symbol const* const symbol = findSymbol(name);
        if (!symbol || !symbol->facesOut) return;
        bool const left = leadsOut(element, look, Side::kLeft), right = leadsOut(element, look, Side::kRight);
        if (left != right) look.mirrored = right;
    }

    /// Whether a port on a side is connected to no other block.
    bool leadsOut(Element const& element, ElementLook const& look, Side side) const {
        for (std::size_t i = 0; i < look.sides.size(); ++i) {
            unsigned const node = element.ports[i].node;
            if (look.sides[i] == side && (node == 0 || schematic.circuit.nodes.at(node).size() < 2)) return true;
        }
        return false;
    }

    void note(Element const& element, ElementLook const& look, bool open) {
        for (std::size_t i = 0; i < element.ports.size(); ++i) {
            occurring.domains.insert(styleOf(element.ports[i].domain).domain);
            occurring.openPort |= !look.connected[i];
            occurring.foreignPort |= !element.ports[i].declared;
        }
        occurring.unknownKind |= isUnknown(element);
        occurring.closedComposite |= !open && !isUnknown(element) && isComposite(element);
    }

    NodeShape turnOf(std::size_t net, bool right) {
        std::size_t const number = turns.emplace(net, turns.size() + 1).first->second;
        occurring.turn = true;
        return turnShape(schematic.prefix + "turn" + std::to_string(number), number, right,
                         schematic.wires[net].tooltip, severalSheets);
    }

    bool isTurn(std::size_t node) const { return node >= schematic.flow.nodes.size(); }

    /// A turn names the other sheets on which its wire is.
    void nameSheets(std::vector<PlacedPiece> const& pieces) {
        std::map<std::size_t, std::set<std::size_t>> sheetsOf;  // by net
        auto const forTurns = [&](auto const& use) {
            for (PlacedPiece const& piece : pieces)
                for (std::size_t i = 0; i < piece.piece.nets.size(); ++i)
                    for (layout::PinPlace const& end : piece.piece.diagram.nets[i])
                        if (std::size_t const node = piece.piece.nodes[end.node]; isTurn(node))
                            use(piece.sheet + 1, piece.piece.nets[i], node);
        };
        forTurns([&](std::size_t sheet, std::size_t net, std::size_t) { sheetsOf[net].insert(sheet); });
        forTurns([&](std::size_t sheet, std::size_t net, std::size_t node) {
            std::vector<std::size_t> others;
            for (std::size_t const other : sheetsOf[net])
                if (other != sheet) others.push_back(other);
            if (others.empty()) return;
            draw::nameSheets(shapes[node], others);
            occurring.sheetTurn = true;
        });
    }

    /// The turns of a net have the same id until they are drawn.
    void nameTurns(Piece const& piece) {
        for (std::size_t const node : piece.nodes) {
            if (!isTurn(node)) continue;
            std::string& id = shapes[node].items[0].id;
            std::size_t const before = drawnTurns[id]++;
            if (before > 0) id += "_" + std::to_string(before);
        }
    }

    /// All ports on a side of a frame have the same width, so that they are on its edge.
    void widenEdges() {
        for (Side const side : {Side::kLeft, Side::kRight}) {
            int width = 0;
            auto const isThere = [&](std::size_t node) {
                return labelOf(node).kind == Label::Kind::kEdge && pinSide(node) == side;
            };
            for (std::size_t node = schematic.elements.size(); node < shapes.size(); ++node)
                if (isThere(node)) width = std::max(width, shapes[node].node.width);
            for (std::size_t node = schematic.elements.size(); node < shapes.size(); ++node)
                if (isThere(node)) shapes[node] = labelShape(labelOf(node), side == Side::kLeft, width);
        }
    }

    /// What is connected to the edge goes from the left to the right of the frame, the rest below it.
    Inside inFrame(std::vector<PlacedPiece> pieces, int leastWidth) {
        if (schematic.circuit.elements.empty()) return emptyFrame(std::move(pieces), leastWidth);
        std::vector<PlacedPiece> atEdge, others;
        for (PlacedPiece& piece : pieces) (hasEdge(piece.piece) ? atEdge : others).push_back(std::move(piece));
        Box const rest = pack(others, {})[0];
        int const padding = others.empty() ? 0 : 2 * kFramePadding;
        leastWidth = std::max(leastWidth, rest.width + padding);
        int y = 0;
        for (PlacedPiece& piece : atEdge) {
            widen(piece, leastWidth);
            result.width = std::max(result.width, piece.placed.width);
            y = piece.placed.height + kFramePadding;
            emit(piece);
        }
        y = layout::onGrid(y);
        for (PlacedPiece& piece : others) {
            piece.at.x += kFramePadding;
            piece.at.y += y;
            emit(piece);
        }
        result.width = std::max(result.width, leastWidth);
        result.height = layout::onGrid(y + rest.height);
        return std::move(result);
    }

    static void widen(PlacedPiece& piece, int width) {
        if (piece.placed.width >= width) return;
        piece.piece.diagram.leastWidth = width;
        piece = placedOf(std::move(piece.piece));
    }

    Inside emptyFrame(std::vector<PlacedPiece> pieces, int leastWidth) {
        for (PlacedPiece& piece : pieces) {
            widen(piece, leastWidth);
            leastWidth = std::max(leastWidth, piece.placed.width);
            result.height = piece.placed.height;
            emit(piece);
        }
        int const y = layout::onGrid(result.height + 12);
        Item item;
        item.id = schematic.prefix + "empty";
        item.classes = "empty";
        item.shapes = {textShape("kind", {leastWidth / 2, y}, "nothing inside")};
        result.items.push_back(std::move(item));
        result.width = std::max(leastWidth, 96);
        result.height = y + layout::kGrid;
        return std::move(result);
    }

    bool hasEdge(Piece const& piece) const {
        return std::any_of(piece.nodes.begin(), piece.nodes.end(), [&](std::size_t node) {
            return node >= schematic.elements.size() && node < schematic.flow.nodes.size() &&
                   labelOf(node).kind == Label::Kind::kEdge;
        });
    }

    void emit(PlacedPiece& piece) {
        nameTurns(piece.piece);
        for (std::size_t i = 0; i < piece.piece.nets.size(); ++i) emitWire(piece, i);
        for (std::size_t i = 0; i < piece.piece.nodes.size(); ++i) {
            std::size_t const node = piece.piece.nodes[i];
            Point const at{piece.at.x + piece.placed.nodes[i].x, piece.at.y + piece.placed.nodes[i].y};
            noteEdge(node, at.y);
            if (piece.placed.flipped[i]) shapes[node] = elementShape(node, true);
            for (Item& item : shapes[node].items) {
                move(item, at.x, at.y);
                result.items.push_back(std::move(item));
            }
        }
    }

    void noteEdge(std::size_t node, int y) {
        bool const label = node >= schematic.elements.size() && node < schematic.flow.nodes.size();
        if (label && labelOf(node).kind == Label::Kind::kEdge) result.lines[labelOf(node).port] = y;
    }

    void emitWire(PlacedPiece const& piece, std::size_t place) {
        std::size_t const net = piece.piece.nets[place];
        WireNet const& facts = schematic.wires[net];
        layout::Wire const& wire = piece.placed.wires[place];
        Item item;
        std::size_t const number = drawnParts[net]++;
        item.id = schematic.prefix + "n" + std::to_string(facts.node) + "_" + std::to_string(netParts[facts.node]++);
        if (number == 0 && netParts[facts.node] == 1) item.id = schematic.prefix + "n" + std::to_string(facts.node);
        std::string const domain = facts.mixed ? "unknown" : className(facts.domain);
        item.classes = "wire " + domain + " " + schematic.prefix + "net" + std::to_string(facts.node);
        item.tooltip = facts.tooltip;
        for (layout::PinPlace const& end : piece.piece.diagram.nets[place])
            item.ends.push_back(endId(piece.piece.nodes[end.node]));
        for (auto const& path : wire.paths) item.shapes.push_back(lineShape("line " + domain, path));
        if (styleOf(facts.domain).twofold && !facts.mixed)
            for (auto const& path : wire.paths) item.shapes.push_back(lineShape("core", path));
        for (Point const& junction : wire.junctions) addDot(item, junction, facts.mixed ? "mixed" : domain);
        if (facts.mixed && wire.junctions.empty() && !wire.paths.empty())
            addDot(item, middleOf(wire.paths[0]), "mixed");
        move(item, piece.at.x, piece.at.y);
        result.items.push_back(std::move(item));
    }

    static void addDot(Item& item, Point const& at, std::string const& look) {
        Shape dot;
        dot.kind = Shape::Kind::kDot;
        dot.classes = "dot " + look;
        dot.points = {at};
        item.shapes.push_back(std::move(dot));
    }

    static Point middleOf(std::vector<Point> const& path) {
        std::size_t const i = path.size() / 2;
        return {(path[i - 1].x + path[i].x) / 2, (path[i - 1].y + path[i].y) / 2};
    }

    std::string endId(std::size_t node) const {
        return node < schematic.flow.nodes.size() ? schematic.nodeId(node) : shapes[node].items[0].id;
    }

    Schematic const& schematic;
    Picture const& picture;
    Selection const& selection;
    Occurring& occurring;
    layout::Columns columns;
    std::vector<std::map<std::size_t, bool>> exits;  ///< of each node
    std::vector<NodeShape> shapes;
    bool severalSheets = false;                            ///< whether there may be
    std::map<std::size_t, std::size_t> turns, drawnParts;  ///< by net
    std::map<std::string, std::size_t> drawnTurns;
    std::map<unsigned, std::size_t> netParts;
    Inside result;
};

/// What captions leave of the height of a sheet: one of several has a title, and turns in its legend.
int heightWithin(int height, Picture picture, Selection const& selection) {
    if (height == 0) return 0;
    picture.title = "sheet";
    Occurring turns;
    turns.turn = turns.sheetTurn = true;
    Caption const caption = captionOf(picture, turns, selection.notes);
    return std::max(height - kMargin - caption.titleHeight - caption.belowHeight, 1);
}

/// The margins of the sheets are outside the room.
Drawing drawnIn(Room room, Circuit const& circuit, Picture const& picture, Selection const& selection) {
    Drawing drawing;
    Occurring occurring;
    Schematic const whole(circuit, selection, picture.names);
    room.height = heightWithin(room.height, picture, selection);
    auto levels = LevelDrawing(whole, picture, selection, occurring).sheets(room);
    Picture titled = picture;
    for (std::size_t i = 0; i < levels.size(); ++i) {
        std::string const sheet = "sheet " + std::to_string(i + 1) + " of " + std::to_string(levels.size());
        if (levels.size() > 1) titled.title = picture.title.empty() ? sheet : picture.title + ", " + sheet;
        Inside& level = levels[i];
        drawing.sheets.push_back(
            sceneOf(std::move(level.items), level.width, level.height, captionOf(titled, occurring, selection.notes)));
    }
    drawing.domains = occurring.domains;
    return drawing;
}

/// How a drawing is scaled on a paper: by as much for all sheets, except those whose blocks are too large.
double scaleOn(Paper const& paper, Drawing const& drawing) {
    double scale = 1;
    for (Scene const& sheet : drawing.sheets) scale = std::min(scale, scaleOn(paper, sheet));
    return std::max(scale, leastScale());
}

Drawing drawnOn(Paper const& paper, Circuit const& circuit, Picture const& picture, Selection const& selection) {
    Box const most = largestOn(paper);
    return drawnIn({most.width - 2 * kMargin, most.height - 2 * kMargin}, circuit, picture, selection);
}

void putOn(Paper const& paper, Drawing& drawing) {
    double const scale = scaleOn(paper, drawing);
    for (std::size_t i = 0; i < drawing.sheets.size(); ++i) {
        double const own = std::min(scale, scaleOn(paper, drawing.sheets[i]));
        if (own < leastScale()) drawing.illegible.push_back(i);
        putOn(paper, own, drawing.sheets[i]);
    }
}

}  // namespace

Drawing drawingOf(Circuit const& circuit, Picture const& picture, Selection const& selection) {
    if (!picture.paper) return drawnIn({picture.width, picture.height}, circuit, picture, selection);
    Paper paper = *picture.paper;
    Drawing best = drawnOn(paper, circuit, picture, selection);
    Drawing other = drawnOn(upright(paper), circuit, picture, selection);
    auto const rank = [](Paper const& sheet, Drawing const& drawing) {
        return std::make_pair(drawing.sheets.size(), -scaleOn(sheet, drawing));
    };
    if (rank(upright(paper), other) < rank(paper, best)) {
        paper = upright(paper);
        best = std::move(other);
    }
    putOn(paper, best);
    return best;
}

}  // namespace vrltool::draw
