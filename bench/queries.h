#pragma once

#include <cstddef>
#include <functional>
#include <vector>

namespace bench {

/// Something that a host asks of a circuit, or does to it: one benchmark, "PEER/NAME/BLOCKS".
struct Query {
    char const* name;
    /// Builds what is asked, of that many blocks. The function that it returns is what is measured: it asks so many
    /// times.
    std::function<void()> (*prepare)(std::size_t blocks);
};

/// Those of the library, and of plain objects where there is something to compare with.
std::vector<Query> queries();

/// The start-up of the library with copies of a plug-in file, made in a folder.
std::function<void()> startUp(std::size_t files);

}  // namespace bench
