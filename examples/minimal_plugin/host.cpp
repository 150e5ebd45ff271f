// The host of the minimal plug-in: starts the library on a configuration file and makes a block of the new kind.
//
// The argument is the configuration file. Prints the kinds that are there, and the block.

#include <iostream>

#include "vrllib/vrllib.h"

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "Usage: minimal_plugin_host CONFIG\n";
        return 2;
    }
    vrlConfigFile(argv[1]);
    needsLibaryVersion(2, 1, 11);
    vrlInit_vrllib(false, true);
    printFactory<vrl::BB>(std::cout);

    vrl::BB* const ring = vrl::BB::create(nullptr, "ring");
    if (!ring) {
        std::cerr << vrlGetCoutMsg();
        return 1;
    }
    ring->setDouble("radius", 2.0);
    std::cout << *ring << vrlGetCoutMsg().substr(vrlGetCoutMsg().find("The value"));
    vrl::BB::destroy(ring);
}
