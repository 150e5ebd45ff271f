// A design saved, read back and listed as text.
//
// The argument is the file to write. Prints the netlist that was read, and its first block as a listing.

#include <fstream>
#include <iostream>

#include "vrllib/vrllib.h"

namespace {

/// A kind of block that this host brings itself; most come from plug-ins.
class Waveguide : public vrl::BB {
public:
    explicit Waveguide(vrl::Foundry const* foundry) : vrl::BB(foundry) {
        pin(1, 1);
        addDouble("length", 100.0, "length along the centre line", "um");
    }
    std::string getName() const override { return "waveguide"; }
};

bool save(vrl::Netlist& netlist, char const* path) {
    std::ofstream file(path, std::ios::binary);
    vrl::BinaryStreamSerialiser writer(file);
    return netlist.write(&writer) && file.flush();
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "Usage: saved_design FILE\n";
        return 2;
    }
    FactoryLoader<vrl::BB>::factory().Register<Waveguide>("waveguide");

    vrl::Netlist line;
    line.addBB(vrl::BB::create(nullptr, "waveguide"), "first");
    line.addBB(vrl::BB::create(nullptr, "waveguide"), "second");
    line.addNode("second", "in0", line.getNode("first", "out0"));
    line.setInputNode(line.getNode("first", "in0")).setOutputNode(line.getNode("second", "out0"));
    line.getBB("second")->setDouble("length", 250.0);
    if (!save(line, argv[1])) return 1;

    vrl::Netlist copy;
    std::ifstream file(argv[1], std::ios::binary);
    vrl::BinaryStreamDeSerialiser reader(file);
    if (!copy.read(&reader)) return 1;
    std::cout << copy << copy.getBB("second")->getDouble("length") << "\n\n";

    vrl::AsciiStreamSerialiser listing(std::cout);
    copy.getBB("first")->getCS().setCS("strip");
    copy.getBB("first")->write(&listing);
}
