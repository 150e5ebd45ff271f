#include "draw/pieces.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <iterator>
#include <map>
#include <numeric>
#include <utility>

#include "draw/bands.h"

namespace vrltool::draw {

namespace {

using layout::kGrid;

constexpr int kPieceGap = 3 * kGrid;
constexpr int kTurnWidth = 12 * kGrid;  // what turns take at both ends of a row
constexpr double kShape = 1.6;          // width to height of what is packed

/// Cuts one part into rows.
class Rows {
public:
    Rows(layout::Flow const& f, layout::Columns const& c, std::vector<NodeShape>& s, MakeTurn const& t)
        : flow(f), columns(c), shapes(s), turn(t), placeOf(f.nodes.size()) {}

    /// The whole part in one piece if it is not too wide. Its columns show where to cut it otherwise.
    std::vector<PlacedPiece> lay(std::vector<std::size_t> const& part, std::vector<std::size_t> nets, int limit) {
        // Turns are numbered along the columns.
        std::stable_sort(nets.begin(), nets.end(),
                         [this](std::size_t a, std::size_t b) { return lastColumn(a) < lastColumn(b); });
        std::vector<PlacedPiece> placed;
        placed.push_back(placedOf(std::move(cut(part, nets, {0})[0])));
        if (limit == 0 || placed[0].placed.width <= limit) return placed;
        measure(placed[0], nets);
        auto const starts = rowStarts(limit);
        if (starts.size() == 1) return placed;
        placed.clear();
        for (Piece& row : cut(part, nets, starts)) placed.push_back(placedOf(std::move(row)));
        return placed;
    }

private:
    std::vector<Piece> cut(std::vector<std::size_t> const& part, std::vector<std::size_t> const& nets,
                           std::vector<std::size_t> const& starts) {
        std::vector<Piece> rows(starts.size());
        for (std::size_t const node : part) {
            std::size_t const row = rowOf(columns.column[node], starts);
            placeOf[node] = {row, rows[row].nodes.size()};
            rows[row].add(node, shapes[node].node, columns.column[node] - starts[row] + 1);
        }
        for (std::size_t const net : nets) addNet(net, rows);
        for (std::size_t i = 0; i < rows.size(); ++i) {
            rows[i].beginsLine = i > 0;
            rows[i].closeUp();
        }
        return rows;
    }

    void measure(PlacedPiece const& whole, std::vector<std::size_t> const& nets) {
        lastBlock = 0;
        std::size_t last = 0;
        for (std::size_t const node : whole.piece.nodes) last = std::max(last, columns.column[node]);
        widths.assign(last + 1, 0);
        auto const& ends = whole.placed.columnEnds;
        for (std::size_t i = 0; i < whole.piece.nodes.size(); ++i) {
            std::size_t const node = whole.piece.nodes[i], column = whole.piece.diagram.nodes[i].column;
            if (!flow.nodes[node].end) lastBlock = std::max(lastBlock, columns.column[node]);
            widths[columns.column[node]] = ends[column] - (column == 0 ? 0 : ends[column - 1]);
        }
        countPassing(nets);
    }

    std::size_t lastColumn(std::size_t net) const {
        std::size_t last = 0;
        for (layout::PinPlace const& end : flow.nets[net]) last = std::max(last, columns.column[end.node]);
        return last;
    }

    /// How many nets pass the channel before each column.
    void countPassing(std::vector<std::size_t> const& nets) {
        passing.assign(widths.size() + 1, 0);
        for (std::size_t const net : nets) {
            std::size_t first = widths.size(), last = 0;
            for (layout::PinPlace const& end : flow.nets[net]) {
                first = std::min(first, columns.column[end.node]);
                last = std::max(last, columns.column[end.node]);
            }
            if (first == last) continue;
            ++passing[first + 1];
            --passing[last + 1];
        }
        std::partial_sum(passing.begin(), passing.end(), passing.begin());
    }

    /// Rows are of about the same width, and are cut where few wires are. Labels after the last block stay with it.
    std::vector<std::size_t> rowStarts(int limit) const {
        std::vector<std::size_t> starts{0};
        int const room = std::max(limit - kTurnWidth, 1);
        while (limit > 0) {
            int const rest =
                std::accumulate(widths.begin() + static_cast<std::ptrdiff_t>(starts.back()), widths.end(), 0);
            if (rest <= room) break;
            std::size_t const next = nextStart(starts.back(), room, rest / ((rest + room - 1) / room));
            if (next == 0) break;
            starts.push_back(next);
        }
        return starts;
    }

    /// The first column of the next row, or 0 for none.
    std::size_t nextStart(std::size_t from, int room, int even) const {
        std::size_t best = 0;
        double least = 0;
        int width = widths[from];
        for (std::size_t column = from + 1; column <= lastBlock; ++column) {
            double const cost = passing[column] + 16.0 * std::abs(width - even) / std::max(even, 1);
            if (best == 0 || cost < least) {
                best = column;
                least = cost;
            }
            width += widths[column];
            if (width > room) return best;
        }
        return best;
    }

    static std::size_t rowOf(std::size_t column, std::vector<std::size_t> const& starts) {
        auto const after = std::upper_bound(starts.begin(), starts.end(), column);
        return static_cast<std::size_t>(after - starts.begin()) - 1;
    }

    /// A net of several rows has a turn in each: at the right of its first row, and at the left of the others.
    void addNet(std::size_t net, std::vector<Piece>& rows) {
        std::map<std::size_t, layout::Net> parts;
        for (layout::PinPlace const& end : flow.nets[net]) {
            auto const& [row, place] = placeOf[end.node];
            parts[row].push_back({place, end.pin});
        }
        for (auto& [row, ends] : parts) {
            Piece& piece = rows[row];
            if (parts.size() > 1) {
                bool const right = row == parts.begin()->first;
                shapes.push_back(turn(net, right));
                ends.push_back({piece.nodes.size(), 0});
                piece.add(shapes.size() - 1, shapes.back().node, right ? widths.size() + 1 : 0);
            }
            piece.addNet(net, std::move(ends), flow.weights.empty() ? 1 : flow.weights[net]);
        }
    }

    layout::Flow const& flow;
    layout::Columns const& columns;
    std::vector<NodeShape>& shapes;
    MakeTurn const& turn;
    std::vector<std::pair<std::size_t, std::size_t>> placeOf;  ///< row and place there of each node
    std::vector<int> widths;                                   ///< of each column, with the channel before it
    std::vector<int> passing;                                  ///< see countPassing
    std::size_t lastBlock = 0;
};

int lineWidth(std::vector<PlacedPiece> const& pieces, int limit) {
    double area = 0;
    int widest = 0;
    for (PlacedPiece const& piece : pieces) {
        area += static_cast<double>(piece.placed.width + kPieceGap) * (piece.placed.height + kPieceGap);
        widest = std::max(widest, piece.placed.width);
    }
    int const wanted = static_cast<int>(std::sqrt(area * kShape));
    return std::max(widest, limit == 0 ? wanted : std::min(wanted, limit));
}

/// Fills lines of a width, and sheets of a height with lines; 0: one sheet.
class Packing {
public:
    Packing(int w, int h) : width(w), height(h) {}

    std::vector<Box> run(std::vector<PlacedPiece>& pieces) {
        for (PlacedPiece& piece : pieces) {
            int const right = at.x + piece.placed.width;
            if (at.x > 0 && (piece.piece.beginsLine || right > width)) beginLine();
            if (height > 0 && at.y > 0 && at.y + piece.placed.height > height) beginSheet();
            put(piece);
        }
        return std::move(sheets);
    }

private:
    void beginLine() {
        at = {0, at.y + lineHeight + kPieceGap};
        lineHeight = 0;
    }

    void beginSheet() {
        sheets.emplace_back();
        at = {};
        lineHeight = 0;
    }

    void put(PlacedPiece& piece) {
        piece.at = at;
        piece.sheet = sheets.size() - 1;
        Box& all = sheets.back();
        all.width = std::max(all.width, at.x + piece.placed.width);
        all.height = std::max(all.height, at.y + piece.placed.height);
        at.x += layout::onGrid(piece.placed.width) + kPieceGap;
        lineHeight = std::max(lineHeight, layout::onGrid(piece.placed.height));
    }

    int width, height;
    std::vector<Box> sheets = std::vector<Box>(1);
    Point at;
    int lineHeight = 0;
};

}  // namespace

void Piece::add(std::size_t node, layout::Node const& shape, std::size_t column) {
    nodes.push_back(node);
    diagram.nodes.push_back(shape);
    diagram.nodes.back().column = column;
}

void Piece::addNet(std::size_t net, layout::Net ends, double weight) {
    nets.push_back(net);
    diagram.nets.push_back(std::move(ends));
    diagram.weights.push_back(weight);
}

void Piece::closeUp() {
    std::map<std::size_t, std::size_t> places;
    for (layout::Node const& node : diagram.nodes) places[node.column];
    std::size_t next = 0;
    for (auto& place : places) place.second = next++;
    for (layout::Node& node : diagram.nodes) node.column = places[node.column];
}

std::vector<PlacedPiece> piecesOf(layout::Flow const& flow, layout::Columns const& columns,
                                  std::vector<NodeShape>& shapes, Room const& room, MakeTurn const& turn) {
    std::vector<std::size_t> partOf(flow.nodes.size());
    for (std::size_t part = 0; part < columns.parts.size(); ++part)
        for (std::size_t const node : columns.parts[part]) partOf[node] = part;
    std::vector<std::vector<std::size_t>> nets(columns.parts.size());
    for (std::size_t net = 0; net < flow.nets.size(); ++net) nets[partOf[flow.nets[net][0].node]].push_back(net);
    std::vector<PlacedPiece> pieces;
    Rows rows(flow, columns, shapes, turn);
    bool afterRows = false;
    for (std::size_t part = 0; part < columns.parts.size(); ++part) {
        auto laid = rows.lay(columns.parts[part], std::move(nets[part]), room.width);
        laid[0].piece.beginsLine = afterRows;
        afterRows = laid.size() > 1;
        for (PlacedPiece& row : laid) {
            auto bands = bandsOf(std::move(row), room, flow.nodes.size(), shapes, turn);
            std::move(bands.begin(), bands.end(), std::back_inserter(pieces));
        }
    }
    return pieces;
}

PlacedPiece placedOf(Piece piece) {
    layout::Placed placed = layout::place(piece.diagram);
    return {std::move(piece), std::move(placed), {}};
}

std::vector<Box> pack(std::vector<PlacedPiece>& pieces, Room const& room) {
    auto sheets = Packing(lineWidth(pieces, room.width), 0).run(pieces);
    if (room.height == 0 || sheets[0].height <= room.height) return sheets;
    return Packing(room.width, room.height).run(pieces);
}

}  // namespace vrltool::draw
