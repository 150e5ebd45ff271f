#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "vrllib/vrllib.h"

namespace vrltool::exchange {

/// Ends of a circuit that is being built, and which of them are joined. Ends get their places in order of mention.
class Joints {
public:
    /// An element, by its place in a list of the caller, and a port.
    using End = std::pair<std::size_t, std::string>;

    /// The place of an end, a new one at its first mention.
    std::size_t place(End const& end);
    /// Joins two ends, by their places. False if they were joined already.
    bool join(std::size_t a, std::size_t b);
    /// The end at a place.
    End const& at(std::size_t place) const { return ends[place]; }
    std::size_t size() const { return ends.size(); }
    /// One place for all ends that are joined.
    std::size_t root(std::size_t place);

private:
    std::map<End, std::size_t> places;
    std::vector<End> ends;
    std::vector<std::size_t> parents;
};

}  // namespace vrltool::exchange
