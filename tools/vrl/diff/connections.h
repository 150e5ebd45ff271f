#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "diff/change.h"
#include "diff/matching.h"
#include "diff/wiring.h"

namespace vrltool::diff {

/// The ends of both circuits under common numbers: an end of a part and an end of its match are one.
struct CommonEnds {
    /// An end with the nets on which A and B have it, kNone where it is not connected.
    struct End {
        std::string text;
        std::size_t netA = kNone;
        std::size_t netB = kNone;
        bool ofBoundary = false;  ///< a place of a boundary list, which belongs to its net as an end does
    };
    std::vector<End> ends;
    std::vector<std::vector<std::size_t>> ofA, ofB;  ///< by net

    CommonEnds(Wiring const& a, Wiring const& b, Matching const& matching);
    /// Adds an end of both.
    void addPlace(std::string const& text, std::size_t netA, std::size_t netB);
    /// The texts of some ends, sorted, those of the boundary last.
    std::vector<std::string> texts(std::vector<std::size_t> const& some) const;

private:
    void add(Wiring::Part const* inA, Wiring::Part const* inB);
    void addEnd(std::string const& text, std::size_t netA, std::size_t netB, bool ofBoundary);
};

/// Compares what is joined. Each net of A whose ends B has on several nets is one change, and so is each net of B whose
/// ends A has on several.
void compareConnections(CommonEnds const& ends, std::string const& path, std::vector<Change>& changes);

}  // namespace vrltool::diff
