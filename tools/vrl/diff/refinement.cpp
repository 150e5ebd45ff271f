#include "diff/refinement.h"

#include <algorithm>
#include <map>

namespace vrltool::diff {

namespace {

using Members = std::vector<std::size_t>;

class Refinement {
public:
    explicit Refinement(ColouredGraph const& g) : graph(g), cellOf(g.vertices.size()), placeOf(g.vertices.size()) {
        std::map<int, Members> byColour;
        for (std::size_t v = 0; v < g.vertices.size(); ++v) byColour[g.vertices[v].colour].push_back(v);
        for (auto& entry : byColour) addCell(std::move(entry.second));
    }

    std::vector<std::pair<std::size_t, std::size_t>> run() {
        for (std::size_t generation = 0; !fresh.empty(); ++generation) {
            Members const splitters = std::move(fresh);
            fresh.clear();
            for (std::size_t const cell : splitters) splitBy(Members(cells[cell].members));
            // One generation carries a colour to the nets, the next one from there to the neighbours.
            if (generation > 0 || fresh.empty()) pairUp();
        }
        return pairs;
    }

private:
    struct Cell {
        Members members;
        bool paired = false;
    };
    using Labels = std::vector<int>;

    void addCell(Members members) {
        for (std::size_t i = 0; i < members.size(); ++i) {
            cellOf[members[i]] = cells.size();
            placeOf[members[i]] = i;
        }
        fresh.push_back(cells.size());
        changed.push_back(cells.size());
        cells.push_back({std::move(members)});
    }

    void take(std::size_t vertex) {
        Members& members = cells[cellOf[vertex]].members;
        std::size_t const last = members.back();
        members[placeOf[vertex]] = last;
        placeOf[last] = placeOf[vertex];
        members.pop_back();
    }

    /// Parts the cells whose members differ in their edges to these vertices.
    void splitBy(Members const& splitter) {
        std::map<std::size_t, Labels> touched;
        for (std::size_t const vertex : splitter)
            for (auto const& edge : graph.vertices[vertex].edges)
                if (!cells[cellOf[edge.to]].paired) touched[edge.to].push_back(edge.label);
        std::map<std::size_t, std::map<Labels, Members>> pieces;
        for (auto& [vertex, labels] : touched) {
            std::sort(labels.begin(), labels.end());
            pieces[cellOf[vertex]][std::move(labels)].push_back(vertex);
        }
        for (auto& [cell, byLabels] : pieces) split(cell, byLabels);
    }

    /// Makes new cells of all pieces but the greatest one, the members that are in no piece being one as well.
    void split(std::size_t cell, std::map<Labels, Members>& byLabels) {
        if (byLabels.size() == 1 && byLabels.begin()->second.size() == cells[cell].members.size()) return;
        std::vector<Members> pieces;
        for (auto& entry : byLabels) {
            for (std::size_t const vertex : entry.second) take(vertex);
            pieces.push_back(std::move(entry.second));
        }
        auto const greatest = std::max_element(pieces.begin(), pieces.end(),
                                               [](Members const& x, Members const& y) { return x.size() < y.size(); });
        if (greatest->size() > cells[cell].members.size()) swapIn(cell, *greatest);
        changed.push_back(cell);
        for (Members& piece : pieces)
            if (!piece.empty()) addCell(std::move(piece));
    }

    void swapIn(std::size_t cell, Members& piece) {
        cells[cell].members.swap(piece);
        for (std::size_t i = 0; i < cells[cell].members.size(); ++i) placeOf[cells[cell].members[i]] = i;
    }

    void pairUp() {
        for (std::size_t const id : std::exchange(changed, {})) {
            Cell& cell = cells[id];
            if (cell.paired || cell.members.size() != 2) continue;
            auto const [a, b] = std::minmax(cell.members[0], cell.members[1], [&](std::size_t x, std::size_t y) {
                return graph.vertices[x].inB < graph.vertices[y].inB;
            });
            if (!graph.vertices[a].pairs || graph.vertices[a].inB == graph.vertices[b].inB) continue;
            cell.paired = true;
            pairs.emplace_back(a, b);
        }
    }

    ColouredGraph const& graph;
    std::vector<Cell> cells;
    Members cellOf;   ///< by vertex
    Members placeOf;  ///< by vertex: its position in its cell
    Members fresh;    ///< cells by which others have not been split yet
    Members changed;  ///< cells that may have become pairs
    std::vector<std::pair<std::size_t, std::size_t>> pairs;
};

}  // namespace

std::vector<std::pair<std::size_t, std::size_t>> refinedPairs(ColouredGraph const& graph) {
    return Refinement(graph).run();
}

}  // namespace vrltool::diff
