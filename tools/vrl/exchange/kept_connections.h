#pragma once

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace vrltool::exchange {

/// The nets of skipped instances, which an import kept and an export returns: what they connect, and whether the design
/// still has it. Ports are written "instance,port", in the names of the netlist.
class KeptConnections {
public:
    /// Adds ports that a net or a skipped instance connects.
    void add(std::vector<std::string> const& ports);
    /// The node of a port of the design, 0 for none. Ports of no net are passed over.
    void setNode(std::string const& port, unsigned node);

    /// Forgets what ports with different nodes connect. To be called when all nodes are known.
    void settle();

    /// Whether the ports of a net are still connected as they were.
    bool isCurrent(std::vector<std::string> const& ports) const;
    /// Connects two ports of a node. False if they are connected already, by nets that are current or by this.
    bool connect(std::string const& first, std::string const& second);

private:
    struct Group {
        std::size_t parent;
        std::size_t size = 1;
        std::size_t ports = 0;       ///< of the design
        std::set<unsigned> nodes{};  ///< of these
    };

    std::size_t placeOf(std::string const& port);
    std::size_t rootOf(std::size_t place) const;
    void unite(std::size_t a, std::size_t b);

    std::map<std::string, std::size_t> places;
    std::set<std::string> forgotten;
    std::vector<Group> groups;
};

}  // namespace vrltool::exchange
