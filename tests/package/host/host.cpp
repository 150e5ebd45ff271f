#include <iostream>
#include <sstream>
#include <string>

#include "vrllib/vrllib.h"

// Starts the library on the configuration file that it is given, and prints the kinds of block that
// the plug-ins named there register, and works on one.

int main(int argc, char** argv) {
    if (argc != 2) return 2;
    vrlConfigFile(argv[1]);
    needsLibaryVersion(2, 1, 11);
    vrlInit_vrllib(false, true);
    printFactory<vrl::BB>(std::cout);

    vrl::BB* const block = vrl::BB::create(nullptr, "packageWaveguide");
    if (!block) {
        std::cerr << vrlGetCoutMsg();
        return 1;
    }
    block->setDouble("length", 200.0);
    std::cout << *block << "ports:";
    for (auto port = block->beginPort(); port != block->endPort(); ++port) std::cout << " " << port->getName();
    std::cout << "\n";

    std::ostringstream complaints;
    auto const* const length = dynamic_cast<ValueRange<double, vrl::Value<double>>*>(block->getAttribute("length"));
    if (!length || length->inSpec(complaints)) return 1;
    std::cout << complaints.str();

    try {
        block->getDouble("width");
    } catch (std::string const& text) {
        std::cout << text;
    }
    vrl::BB::destroy(block);
}
