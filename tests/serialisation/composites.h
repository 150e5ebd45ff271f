#pragma once

#include "tests/support/sample_design.h"

namespace sample {

/// A composite block with one input and two outputs.
class Splitter : public CBB {
public:
    explicit Splitter(Foundry const* foundry = nullptr) : BB(foundry), CBB(foundry) { pin(1, 2); }
    Splitter(Splitter const& o) : Attributes(o), RegisterView(o), BB(o), Netlist(o), CBB(o) {}
    Splitter& operator=(Splitter const&) = default;
    ~Splitter() override = default;
    std::string getName() const override { return "splitter"; }
};

/// Registers the kind "splitter" besides "mmi" and "pad", and starts with fresh numbers.
class KindsWithComposite {
public:
    KindsWithComposite() : splitter(registered<Splitter>(FactoryLoader<BB>::factory(), "splitter")) {
        resetUniqueIDs();
    }
    ~KindsWithComposite() { resetUniqueIDs(); }

private:
    Kinds kinds;
    Registration<FactoryArg<std::string, BB, Foundry const*>> splitter;
};

/// A circuit of a mmi "m1" with the length 42, a pad "dc" and a composite "s1" with a mmi "inner" inside, with an
/// annotation, a parameter of each type, and all boundary lists. The numbers are at 4 and 6.
inline void fill(Netlist& circuit) {
    circuit.setAnnotation("author", "somebody");
    circuit.addBool("flag", true);
    circuit.addInteger("count", -3);
    circuit.addDouble("width", 2.5, "a width", "um");
    circuit.addComplex("index", {1.5, -2});
    circuit.addString("title", "circuit");
    circuit.setExpression("width", "5/2");

    Fab const fab("FabOne");
    auto* const mmi = new Mmi(&fab);
    mmi->setDouble("length", 42);
    mmi->getPort("in0")->getCS().setCS("wg");
    mmi->getPort("in0")->getCS().setFlow("strip");
    circuit.addBB(mmi, "m1");
    circuit.addBB(new Pad, "dc");
    auto* const splitter = new Splitter;
    splitter->getAsNetlist()->addBB(new Mmi, "inner", 1);
    splitter->getAsNetlist()->addNode("inner", "in0", 7);
    circuit.addBB(splitter, "s1");

    circuit.setInputNode(circuit.addNode("m1", "in0"));
    circuit.addNode("s1", "in0", circuit.addNode("m1", "out0"));
    circuit.setOutputNode(circuit.addNode("s1", "out0"));
    circuit.setOutputNode(circuit.addNode("s1", "out1"));
    circuit.setDCNode(circuit.addNode("dc", "dc0"));
}

}  // namespace sample
