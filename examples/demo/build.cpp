#include <fstream>
#include <iostream>
#include <memory>

#include "demo.h"

// The first process: builds the circuit and saves it.

namespace {

struct Element {
    char const* name;
    char const* kind;
};

struct Wire {
    char const* from;
    char const* output;
    char const* to;
    char const* input;
};

constexpr Element kElements[] = {
    {"in", "sfEdgeCoupler"}, {"split", "sfSplitter"},  {"arms", "sfPushPullArms"},  {"join", "sfCoupler2x2"},
    {"bend", "sfBend"},      {"out", "sfEdgeCoupler"}, {"monitor", "sfPhotodiode"},
};

constexpr Wire kWires[] = {
    {"in", "out0", "split", "in0"},  {"split", "out0", "arms", "in0"},   {"split", "out1", "arms", "in1"},
    {"arms", "out0", "join", "in0"}, {"arms", "out1", "join", "in1"},    {"join", "out0", "bend", "in0"},
    {"bend", "out0", "out", "in0"},  {"join", "out1", "monitor", "in0"},
};

constexpr char const* kContacts[][2] = {
    {"arms", "upper"}, {"arms", "lower"}, {"arms", "ground"}, {"monitor", "anode"}, {"monitor", "cathode"}};

void buildModulator(vrl::Netlist& circuit, vrl::Foundry const* fab) {
    for (Element const& element : kElements) {
        vrl::BB* const block = vrl::BB::create(fab, element.kind);
        if (!block) throw Failure{"there is no block of kind " + std::string(element.kind) + "."};
        circuit.addBB(block, element.name);
    }
    circuit.setInputNode(circuit.getNode("in", "in0"));
    for (Wire const& wire : kWires) circuit.addNode(wire.to, wire.input, circuit.getNode(wire.from, wire.output));
    circuit.setOutputNode(circuit.getNode("out", "out0"));
    for (auto const& contact : kContacts) circuit.setDCNode(circuit.getNode(contact[0], contact[1]));
}

void save(vrl::Netlist& circuit, char const* file) {
    std::ofstream stream(file, std::ios::binary);
    vrl::BinaryStreamSerialiser writer(stream);
    bool const written = stream && circuit.write(&writer);
    stream.close();
    if (!written || !stream)
        throw Failure{"cannot write \"" + std::string(file) +
                      "\". Its folder has to exist, be writable and have room."};
}

}  // namespace

void build(char const* config, char const* file) {
    std::cout << "A design is built\n\n1. The library starts.\n\n";
    startLibrary(config);

    std::unique_ptr<vrl::Foundry, void (*)(vrl::Foundry*)> const fab(vrl::Foundry::create("SampleFab"),
                                                                     &vrl::Foundry::destroy);
    vrl::Netlist circuit;
    buildModulator(circuit, fab.get());
    std::cout << "\n2. A Mach-Zehnder modulator of SampleFab (" << fab->describe()
              << ") is built. Its bend gets a radius of 2 um.\n\n";
    circuit.getBB("bend")->setDouble("radius", 2.0);
    std::cout << vrlGetCoutMsg();
    vrlCoutReset();

    std::cout << "\n3. The netlist is attached to its foundry and checked.\n\n";
    attachFoundries(circuit);
    // A netlist keeps its check to itself; the parameter list that it is has it in public.
    if (static_cast<vrl::Attributes const&>(circuit).inSpec(std::cout)) throw Failure{"the check has missed the bend."};

    std::cout << "4. The netlist is printed.\n\n";
    printDesign(circuit);
    save(circuit, file);
    std::cout << "\n5. The netlist is saved to " << file << ".\n";
}
