#include <iostream>

#include "tests/support/sample_design.h"
#include "tests/support/scenario.h"

// What holds only in a process that has done nothing else.

using namespace Vorlane_v1_0;

VRL_SCENARIO(foundryNumbers) {
    sample::Fab const first;
    sample::Fab const second;
    sample::Fab const copy(second);
    sample::Fab const third;
    std::cout << first.getID() << " " << second.getID() << " " << copy.getID() << " " << third.getID() << "\n";
    resetUniqueIDs();
    std::cout << "after resetUniqueIDs " << sample::Fab().getID() << "\n";
}

VRL_SCENARIO(netlistNumbers) {
    Netlist netlist;
    std::cout << netlist.createNode() << " " << netlist.createNode() << " " << netlist.addBB(new sample::Pad) << "\n";
}
