#pragma once

#include <map>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

#include "exchange/block_maker.h"
#include "exchange/boundary.h"
#include "exchange/joints.h"
#include "exchange/to_netlist.h"

namespace vrltool::exchange {

/// Builds the circuit of one document: its elements first, then what joins them, then the boundary and the notes.
class NetlistBuilder {
public:
    NetlistBuilder(Document const& source, NameMap const& names, Workshop& shop, Findings& found);

    Imported build();

private:
    /// An element that was made.
    struct Built {
        std::string name;
        vrl::BB* block;  ///< owned by the netlist
        ComponentRule const* rule;
        Instance const* instance;
    };

    /// What an end of the document leads to.
    enum class Reached { kEnd, kLeftOut, kNothing };

    /// How often an end is used, and where it is used for the second time.
    struct Uses {
        std::size_t count = 0;
        Mark second;
    };

    void makeNetlist();
    void addElements();
    void addElement(Instance const& instance, ComponentRule const& rule, std::string const& name);
    bool standsTwice(Instance const& instance);
    void addNameless();
    void leaveOut(Instance const& instance);
    void leaveOutOdd();

    Built const* element(std::string const& name) const;
    bool isUndeclared(Built const& built, std::string const& port) const;
    std::string portOf(Built const& built, std::string const& theirs) const;
    Reached reach(EndName const& end, Joints::End& reached);
    void tellUnreached(EndName const& end);
    std::vector<std::string> theirPorts(Built const& built) const;

    void joinNets();
    void joinNet(Net const& net);
    bool joinsItself(Net const& net, std::vector<Joints::End> const& ends);
    void joinPair(Joints::End const& a, EndName const& aName, Joints::End const& b, EndName const& bName);
    void keepNetMembers(Net const& net, std::vector<Joints::End> const& ends);
    void joinMeantNodes();
    void use(std::size_t place, Mark const& mark);
    void tellSharedEnds();

    void reachPorts();
    void makeNodes();
    void setBoundary();
    void setToldBoundary(Tree const& boundary);
    unsigned nodeOf(Tree const& end, std::map<std::string, unsigned>& bare);

    void keepNotes();
    bool portsAreDerived();
    void tellKept();
    Tree endTree(Joints::End const& end) const;
    vrl::EnumList::Domain domainOf(std::size_t place) const;

    Document const& document;
    Findings& findings;
    BlockMaker maker;
    Imported result;
    std::vector<Built> built;
    std::unordered_map<std::string, std::size_t> byName;
    std::map<std::string, Instance const*> arrays;
    std::vector<std::pair<Instance const*, ComponentRule const*>> nameless;
    std::set<std::string> leftOutNames;
    Tree leftInstances = Tree::map(), leftNets = Tree::list(), leftPlacements = Tree::map();
    Joints joints;
    std::vector<unsigned> nodes;  ///< of the ends, by their places
    std::vector<Uses> uses;       ///< likewise
    std::set<std::size_t> meant;  ///< ends that are shared on purpose
    std::set<std::pair<std::size_t, std::size_t>> pairs;
    std::vector<std::pair<OuterPort const*, std::size_t>> ports;  ///< with the places of their ends
    Tree netMembers = Tree::list();
    Tree outerPorts = Tree::list();  ///< for the note of them
    std::size_t twice = 0;           ///< nets that were told before
    std::size_t hints = 0;           ///< given; looking for near names among many takes its time
};

}  // namespace vrltool::exchange
