#pragma once

#include "vrllib/model/building_block.h"
#include "vrllib/model/netlist.h"

namespace Vorlane_v1_0 {

/// A composite building block: from outside a block with ports, from inside a netlist.
///
/// Both sides share one parameter list and one view register. There are two component parts, so that a composite does
/// not convert to a Component, and getName and operator<< are on both sides: go through getAsBB or getAsNetlist.
/// Outer ports and inner boundary are separate data, which the derived class keeps in step.
///
/// What a derived class has to write: BB is a virtual base, built by the most derived class alone, so a constructor
/// names it first, and so does a copy constructor with the two lists that are to be copied:
///
///     Splitter(Foundry const* foundry) : BB(foundry), CBB(foundry) { ... }
///     Splitter(Splitter const& o) : Attributes(o), RegisterView(o), BB(o), Netlist(o), CBB(o) { ... }
///     std::string getName() const override { return "splitter"; }   // overrides the names of both sides
///
/// It registers with the block factory and is freed with BB::destroy of its block side, or by a netlist's handle.
/// The callbacks of blocks and those of netlists both run. A composite is saved under the kind of its block side.
class VRL_API CBB : public virtual BB, public virtual Netlist {
public:
    /// An empty netlist. The foundry reaches the block side in an object of this very class only: a derived class names
    /// BB(foundry) itself.
    explicit CBB(Foundry const* foundry);
    /// Shares the inner blocks and the parameters; the copy has no outer ports.
    CBB(CBB const& other);
    /// Assigns the block side, then the netlist side; the outer ports stay.
    CBB& operator=(CBB const& other);
    ~CBB() override;
    VRL_PERSISTENT(CBB)

public:
    /**@{*/
    /// The block side. Null of a null pointer: safe on the result of a failed cast.
    BB* getAsBB();
    BB const* getAsBB() const;
    /**@}*/

    /**@{*/
    /// The netlist side, by the same rule.
    Netlist* getAsNetlist();
    Netlist const* getAsNetlist() const;
    /**@}*/

    /**@{*/
    /// The choice of the block side; the operations of that name with arguments are those of the sides.
    Foundry::CSInfo& getCS();
    Foundry::CSInfo const& getCS() const;
    /**@}*/
    /// The choice for a port.
    using BB::getCS;
    /// The choice at a node.
    using Netlist::getCS;

private:
    SerRegister serRegister;
    SerrDoneFlag serDone;
};

extern template class VRL_INSTANCE Serialisable<CBB>;

}  // namespace Vorlane_v1_0
