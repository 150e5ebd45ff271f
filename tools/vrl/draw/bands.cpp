#include "draw/bands.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <map>
#include <utility>

namespace vrltool::draw {

namespace {

constexpr double kLeastFill = 0.5;  // of the height of a band
constexpr double kMostFill = 0.9;   // the rest is for turns

/// Cuts one piece. The turns that it has already are made anew where they are needed.
class Bands {
public:
    Bands(PlacedPiece const& p, std::size_t ownNodes, std::vector<NodeShape>& s, MakeTurn const& t)
        : piece(p.piece), placed(p.placed), shapes(s), turn(t), bandOf(piece.nodes.size()), placeOf(bandOf) {
        for (std::size_t i = 0; i < piece.nodes.size(); ++i)
            if (piece.nodes[i] < ownNodes) own.push_back(i);
    }

    /// No bands if the piece cannot be cut.
    std::vector<Piece> cut(Room const& room) {
        if (own.size() < 2 || !(choose(room.height) || halve())) return {};
        std::size_t last = 0;
        for (std::size_t const node : own) last = std::max(last, bandOf[node]);
        std::vector<Piece> bands(last + 1);
        for (std::size_t const node : own) {
            placeOf[node] = bands[bandOf[node]].nodes.size();
            bands[bandOf[node]].add(piece.nodes[node], piece.diagram.nodes[node], columnOf(node) + 1);
        }
        for (std::size_t net = 0; net < piece.nets.size(); ++net) addNet(net, bands);
        bands.erase(std::remove_if(bands.begin(), bands.end(), [](Piece const& band) { return band.nodes.empty(); }),
                    bands.end());
        for (Piece& band : bands) band.closeUp();
        bands[0].beginsLine = piece.beginsLine;
        return bands;
    }

private:
    std::size_t columnOf(std::size_t node) const { return piece.diagram.nodes[node].column; }
    int yOf(std::size_t node) const { return placed.nodes[node].y; }
    bool isOwn(std::size_t node) const { return std::binary_search(own.begin(), own.end(), node); }

    /// Bands of about the same height, cut where few wires are. False if there is nothing to cut.
    bool choose(int height) {
        auto const wires = wiresAt();
        std::vector<int> cuts{0};
        while (height > 0 && placed.height - cuts.back() > height) {
            int const next = nextCut(wires, cuts.back(), height);
            if (next <= cuts.back()) break;
            cuts.push_back(next);
        }
        for (std::size_t const node : own)
            bandOf[node] = static_cast<std::size_t>(
                std::distance(cuts.begin(), std::upper_bound(cuts.begin(), cuts.end(), yOf(node))) - 1);
        return isCut();
    }

    /// The next line to cut at, or 0 for none.
    static int nextCut(std::map<int, int> const& wires, int from, int height) {
        int best = 0, least = std::numeric_limits<int>::max();
        for (auto at = wires.upper_bound(from + static_cast<int>(kLeastFill * height)); at != wires.end(); ++at) {
            if (best != 0 && at->first > from + static_cast<int>(kMostFill * height)) break;
            if (at->second > least) continue;
            best = at->first;
            least = at->second;
        }
        return best;
    }

    /// How many wires are cut above each line with a node.
    std::map<int, int> wiresAt() const {
        std::map<int, int> wires;
        for (std::size_t const node : own) wires[yOf(node)];
        for (layout::Net const& net : piece.diagram.nets) {
            int top = std::numeric_limits<int>::max(), bottom = std::numeric_limits<int>::min();
            for (layout::PinPlace const& end : net) {
                if (!isOwn(end.node)) continue;
                top = std::min(top, yOf(end.node));
                bottom = std::max(bottom, yOf(end.node));
            }
            if (top >= bottom) continue;
            ++wires.upper_bound(top)->second;
            if (auto const after = wires.upper_bound(bottom); after != wires.end()) --after->second;
        }
        int sum = 0;
        for (auto& [line, count] : wires) count = sum += count;
        return wires;
    }

    /// In two: the left and the right columns, or the upper and the lower nodes of one.
    bool halve() {
        auto const key = [this](std::size_t node) { return std::make_pair(columnOf(node), yOf(node)); };
        auto nodes = own;
        std::sort(nodes.begin(), nodes.end(), [&](std::size_t a, std::size_t b) { return key(a) < key(b); });
        for (std::size_t i = 0; i < nodes.size(); ++i) bandOf[nodes[i]] = i < nodes.size() / 2 ? 0 : 1;
        return isCut();
    }

    bool isCut() const {
        return std::any_of(own.begin(), own.end(), [this](std::size_t node) { return bandOf[node] != bandOf[own[0]]; });
    }

    /// A net of several bands, or of other pieces, has a turn in each, on the side of the first port there.
    void addNet(std::size_t net, std::vector<Piece>& bands) {
        std::map<std::size_t, layout::Net> parts;
        bool goesOn = false;
        for (layout::PinPlace const& end : piece.diagram.nets[net]) {
            if (isOwn(end.node))
                parts[bandOf[end.node]].push_back(end);
            else
                goesOn = true;
        }
        for (auto& [place, ends] : parts) {
            Piece& band = bands[place];
            layout::PinPlace const first = ends[0];
            for (layout::PinPlace& end : ends) end.node = placeOf[end.node];
            if (goesOn || parts.size() > 1) {
                bool const right = piece.diagram.nodes[first.node].pins[first.pin].right;
                shapes.push_back(turn(piece.nets[net], right));
                ends.push_back({band.nodes.size(), 0});
                band.add(shapes.size() - 1, shapes.back().node, columnOf(first.node) + (right ? 2 : 0));
            }
            double const weight = piece.diagram.weights.empty() ? 1 : piece.diagram.weights[net];
            band.addNet(piece.nets[net], std::move(ends), weight);
        }
    }

    Piece const& piece;
    layout::Placed const& placed;
    std::vector<NodeShape>& shapes;
    MakeTurn const& turn;
    std::vector<std::size_t> own;      ///< the places of its nodes that are no turns
    std::vector<std::size_t> bandOf;   ///< of each node
    std::vector<std::size_t> placeOf;  ///< in its band
};

}  // namespace

std::vector<PlacedPiece> bandsOf(PlacedPiece piece, Room const& room, std::size_t ownNodes,
                                 std::vector<NodeShape>& shapes, MakeTurn const& turn) {
    std::vector<PlacedPiece> done, open;
    open.push_back(std::move(piece));
    for (bool first = true; !open.empty(); first = false) {
        PlacedPiece next = std::move(open.back());
        open.pop_back();
        bool const high = room.height > 0 && next.placed.height > room.height;
        bool const wide = !first && room.width > 0 && next.placed.width > room.width;
        auto bands = high || wide ? Bands(next, ownNodes, shapes, turn).cut(room) : std::vector<Piece>();
        if (bands.empty()) done.push_back(std::move(next));
        for (auto band = bands.rbegin(); band != bands.rend(); ++band) open.push_back(placedOf(std::move(*band)));
    }
    return done;
}

}  // namespace vrltool::draw
