// A composite: a block with ports outside and a netlist inside.
//
// Prints an outer netlist that holds it, its inner netlist, and what both sides share.

#include <iostream>

#include "vrllib/vrllib.h"

namespace {

class Splitter : public vrl::BB {
public:
    explicit Splitter(vrl::Foundry const* foundry) : vrl::BB(foundry) { pin(1, 2); }
    std::string getName() const override { return "splitter"; }
};

/// One input, four outputs, made of three splitters.
class Tree : public vrl::CBB {
public:
    explicit Tree(vrl::Foundry const* foundry) : vrl::BB(foundry), vrl::CBB(foundry) {
        pin(1, 4);
        addDouble("pitch", 127.0, "distance of the outputs", "um");
        addBB(vrl::BB::create(foundry, "splitter"), "root");
        addBB(vrl::BB::create(foundry, "splitter"), "upper");
        addBB(vrl::BB::create(foundry, "splitter"), "lower");
        addNode("upper", "in0", getNode("root", "out0"));
        addNode("lower", "in0", getNode("root", "out1"));
        setInputNode(getNode("root", "in0"));
        for (char const* leaf : {"upper", "lower"})
            for (char const* port : {"out0", "out1"}) setOutputNode(getNode(leaf, port));
    }
    std::string getName() const override { return "tree"; }
};

}  // namespace

int main() {
    FactoryLoader<vrl::BB>::factory().Register<Splitter>("splitter");
    FactoryLoader<vrl::BB>::factory().Register<Tree>("tree");

    vrl::Netlist chip;
    chip.addBB(vrl::BB::create(nullptr, "tree"), "distribution");
    chip.setInputNode(chip.getNode("distribution", "in0"));
    std::cout << chip;

    auto* const tree = dynamic_cast<vrl::CBB*>(chip.getBB("distribution"));
    std::cout << *tree->getAsNetlist();

    tree->getAsBB()->setDouble("pitch", 250.0);
    std::cout << tree->getAsNetlist()->getDouble("pitch") << " "
              << (&tree->getCS() == &tree->getAsBB()->getCS() ? "one choice" : "two choices") << "\n";
}
