#pragma once

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <utility>

namespace vrltool::spice {

/// Names for one sort of things in a netlist of SPICE, which knows letters, digits and underscores only, and no
/// capitals.
class Names {
public:
    /// Names that have a meaning of their own are not given.
    explicit Names(std::set<std::string> reserved = {}) : taken(std::move(reserved)) {}

    /// The wanted name if it can be, or one like it: what else is in it becomes "_", and a name that is taken gets a
    /// number.
    std::string take(std::string const& wanted);

private:
    std::set<std::string> taken;              ///< in lower case
    std::map<std::string, std::size_t> last;  ///< the number that was given last, by names in lower case
};

/// Names for nodes and for parameters.
Names nodeNames();
Names parameterNames();

}  // namespace vrltool::spice
