#pragma once

#include <cstddef>
#include <iosfwd>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "vrllib/core/shared_ptr.h"
#include "vrllib/model/building_block.h"
#include "vrllib/model/component.h"
#include "vrllib/model/foundry.h"
#include "vrllib/model/netlist_tables.h"

/// @file
/// The graph of a circuit and the numbers that all of them share.

/// Sets the process-wide element and node numbers back to 1. Live netlists keep theirs, so new numbers can then
/// collide.
extern "C" VRL_API void resetUniqueIDs();

namespace Vorlane_v1_0 {

/// The numbers that all netlists of a process draw from, each the next one to be given.
class VRL_API Netlist_Vars {
protected:
    static unsigned int numBB;      ///< element number
    static unsigned int nodeCount;  ///< node number
};

/// The graph of a circuit: blocks (the elements) whose ports are connected to numbered nodes.
///
/// It is a pure table: it stores names and numbers, and does not look into the blocks. An element has a number and
/// usually a name; two ports are connected if they have the same node; the boundary lists name nodes as inputs,
/// outputs and DC nodes. Everything is inserted and nothing overwritten or removed: what is there stays.
///
/// Numbers are unique across the netlists of a process, since they come from process-wide counters. The counters are
/// saved with each netlist, and reading one sets them.
///
/// The netlist holds its blocks through handles. The on-create callbacks run at the end of its default constructor and
/// the on-destroy callbacks first of all in its destructor.
/// Cost: look-ups by name, number and node are logarithmic; the first one by node or from a number to a name makes an
/// index, n log n.
class VRL_API Netlist : public Component, private Netlist_Vars {
public:
    /// The blocks by element number.
    using ElementMap = std::map<unsigned int, shared_ptr<BB>>;
    /// The element numbers by name.
    using NameMap = std::map<std::string, unsigned int>;
    /// The nodes by the names of element and port.
    using PortMap = std::map<std::pair<std::string, std::string>, unsigned int>;
    /// The nodes of a boundary list, in the order of adding.
    using Nodes = std::vector<unsigned int>;
    /**@{*/
    /// Iterators stay good while elements and ports are added; those of nodes until their list grows.
    using element_iterator = ElementMap::iterator;
    using const_element_iterator = ElementMap::const_iterator;
    using const_name_iterator = NameMap::const_iterator;
    using const_port_iterator = PortMap::const_iterator;
    using node_iterator = Nodes::iterator;
    using const_node_iterator = Nodes::const_iterator;
    /**@}*/

    /// Empty. Runs the on-create callbacks at its end.
    Netlist();
    /// Shares the blocks and copies the tables and the serialisation register as they are. No on-create callback
    /// runs.
    Netlist(Netlist const& other);
    /// Assigns the same parts as the copy, and the component as Component does.
    Netlist& operator=(Netlist const& other);
    ~Netlist() override;
    VRL_PERSISTENT(Netlist)

public:
    /// A new netlist for the caller: a plain one for the empty kind, otherwise one of the factory, null if it has none.
    static Netlist* create(std::string const& kind);
    /// Deletes the netlist, whose destructor runs the on-destroy callbacks. Null does nothing.
    static void destroy(Netlist* netlist);
    /**@{*/
    /// Adds a callback for all netlists after the present ones; nothing removes it. The library itself never runs
    /// those for changes.
    static void registerOnCreate(void (*callback)(Netlist*));
    static void registerOnChange(void (*callback)(Netlist*));
    static void registerOnDestroy(void (*callback)(Netlist*));
    /**@}*/

    /// The kind; "Netlist" in the base.
    std::string getName() const override;

protected:
    /**@{*/
    /// The hook of a netlist that keeps its own master representation: fills the tables before they are read.
    virtual void mSync();
    void mSync() const { const_cast<Netlist*>(this)->mSync(); }
    /**@}*/

public:
    /**@{*/
    /// Adds a node to a boundary list unless inputNodes has it, and stores the last index of the list in `position`,
    /// which may be null. Outputs are looked up among the inputs as well, by design: a node is not input and output at
    /// once, and an output may be repeated.
    virtual Netlist& setInputNode(unsigned int const& node, unsigned int* position = nullptr);
    virtual Netlist& setOutputNode(unsigned int const& node, unsigned int* position = nullptr);
    /**@}*/
    /// The same for the DC boundary, which looks at itself.
    virtual Netlist& setDCNode(unsigned int const& node, unsigned int* position = nullptr);

    /// Adds an element. The number 0 takes the next number of the process, an empty name becomes "elm#NUMBER". Returns
    /// the name in use, or an empty string without a block.
    ///
    /// A taken name keeps leading to its first element, and the newcomer is reached by its number only. A taken number
    /// keeps its block, the new handle is dropped, and a new name then leads to the old block.
    virtual std::string addBB(shared_ptr<BB> const& block, std::string const& name = "",
                              unsigned int const& number = 0);
    /// The same; the netlist takes the block over. A block that is to be in two netlists goes in through one handle.
    virtual std::string addBB(BB* block, std::string const& name = "", unsigned int const& number = 0);
    /**@{*/
    /// The block, or null.
    virtual BB* getBB(unsigned int const& number);
    virtual BB* getBB(std::string const& name);
    /**@}*/

    /// Takes the next node number of the process. The netlist records nothing.
    virtual unsigned int createNode();
    /// Connects a port of a named element to a node, 0 for a new one. Returns the node, or 0 for an unknown element.
    ///
    /// A port that is connected already keeps its node, though the result is the one asked for. Throws "Port name is
    /// empty."
    /// (`char*`) on a known element; a new number stays used.
    virtual unsigned int addNode(std::string const& element, std::string const& port, unsigned int const& node = 0);
    /// The first port, in order of element and port name, that is connected to the node. Without one the strings are
    /// empty. An output may be null.
    virtual bool findNode(unsigned int const& node, std::string* element, std::string* port) const;
    /// The node of a port, or 0.
    virtual unsigned int findNode(std::string const& element, std::string const& port) const;
    /// The first element, in order of the names, whose port of that name is connected to the node.
    virtual bool findNamedNode(unsigned int const& node, std::string const& port, std::string* element) const;
    /// The node of a port. Throws the `std::string` "Node ELEMENT@PORT is not there.".
    virtual unsigned int getNode(std::string const& element, std::string const& port) const;
    /// The node of a port, a new one if it has none. 0 for an unknown element, with a number spent.
    virtual unsigned int getNode(std::string const& element, std::string const& port);

    /// A placeholder: it says so on std::cerr and returns an empty choice. Derived netlists override it.
    virtual Foundry::CSInfo const& getCS(unsigned int const& node, bool input) const;
    /// Writes the parameters, the boundary and, in order of the names, the elements with the nodes of their ports. The
    /// choice of cross section is written where it differs from that of the element before.
    virtual std::ostream& operator<<(std::ostream& os) const;
    /// The foundries of the blocks by their numbers. Blocks without one are left out.
    virtual std::map<unsigned int, Foundry const*> getFoundryUse() const;

    /// The first name of that number, or "-".
    virtual std::string findElementName(unsigned int const& number) const;

    /// Gives each block that has a foundry name a foundry of that name, one for all blocks that share it.
    ///
    /// The foundry of an unknown name is null, without a message. Composite blocks are not entered. Nobody frees the
    /// foundries.
    void prepare();

    /**@{*/
    /// The element of that number, or the end.
    element_iterator findElement(unsigned int const& number);
    const_element_iterator findElement(unsigned int const& number) const;
    /**@}*/
    /// The number of elements. It does not call mSync.
    std::size_t sizeElements() const { return BBList.size(); }
    /**@{*/
    /// The elements with their blocks, by ascending number.
    element_iterator beginElements();
    element_iterator endElements();
    const_element_iterator beginElements() const;
    const_element_iterator endElements() const;
    /**@}*/

    /**@{*/
    /// The names with the numbers of their elements, sorted.
    const_name_iterator beginElementName() const;
    const_name_iterator endElementName() const;
    /**@}*/

    /**@{*/
    /// The connected ports with their nodes, sorted by element and port name.
    const_port_iterator beginElementPort() const;
    const_port_iterator endElementPort() const;
    /**@}*/
    /// The number of connected ports, which is not that of the nodes.
    std::size_t sizeNodes() const { return portToNode.map().size(); }

    /**@{*/
    /// The nodes of a boundary list, in the order of adding.
    node_iterator beginInputNodes();
    node_iterator endInputNodes();
    const_node_iterator beginInputNodes() const;
    const_node_iterator endInputNodes() const;
    node_iterator beginOutputNodes();
    node_iterator endOutputNodes();
    const_node_iterator beginOutputNodes() const;
    const_node_iterator endOutputNodes() const;
    node_iterator beginDCNodes();
    node_iterator endDCNodes();
    const_node_iterator beginDCNodes() const;
    const_node_iterator endDCNodes() const;
    /**@}*/

protected:
    /// Whether every block is within its ranges. If not, a heading and all complaints go to `os`. The netlist's own
    /// parameters are left out, and so is a netlist that is found inside itself.
    /// Cost: linear in the blocks and the complaints, for composites in each other to any depth.
    bool inSpec(std::ostream& os) const override;

private:
    /// A table after mSync.
    template <class Table>
    Table& synced(Table& table) {
        mSync();
        return table;
    }
    template <class Table>
    Table const& synced(Table const& table) const {
        mSync();
        return table;
    }

    void printElement(std::ostream& os, std::string const& name, unsigned int number, Foundry::CSInfo& current) const;

    detail::NumberTable<std::string> nameToBB;
    detail::NumberTable<std::pair<std::string, std::string>> portToNode;
    ElementMap BBList;
    detail::NodeList inputNodes;
    detail::NodeList outputNodes;
    detail::NodeList DCNodes;
    SerRegister serRegister;
    SerrDoneFlag serDone;
};

/// Writes the netlist by its virtual operator<<.
VRL_API std::ostream& operator<<(std::ostream& os, Netlist const& netlist);

extern template class VRL_INSTANCE Serialisable<Netlist>;

}  // namespace Vorlane_v1_0
