#include <iostream>
#include <map>
#include <vector>

#include "demo.h"

namespace {

using Foundries = std::map<unsigned int, vrl::Foundry const*>;

/// The foundries that Netlist::prepare makes belong to nobody and live as long as the process; here they stay
/// reachable.
void keep(Foundries const& foundries) {
    static auto* const kept = new std::vector<Foundries>;
    kept->push_back(foundries);
}

void prepareAll(vrl::Netlist& netlist) {
    netlist.prepare();
    keep(netlist.getFoundryUse());
    // A composite is a block to the netlist around it: its inside is prepared on its own.
    for (auto element = netlist.beginElements(); element != netlist.endElements(); ++element)
        if (auto* const composite = dynamic_cast<vrl::CBB*>(element->second.get()))
            prepareAll(*composite->getAsNetlist());
}

}  // namespace

void visitElements(vrl::Netlist& netlist, std::function<void(std::string const& path, vrl::BB& block)> const& see,
                   std::string const& prefix) {
    for (auto name = netlist.beginElementName(); name != netlist.endElementName(); ++name) {
        vrl::BB* const block = netlist.getBB(name->second);
        if (!block) continue;
        see(prefix + name->first, *block);
        if (auto* const composite = dynamic_cast<vrl::CBB*>(block))
            visitElements(*composite->getAsNetlist(), see, prefix + name->first + "/");
    }
}

void attachFoundries(vrl::Netlist& circuit) {
    prepareAll(circuit);
    visitElements(circuit, [](std::string const& path, vrl::BB& block) {
        if (block.getFoundry()) return;
        throw Failure{"there is no foundry \"" + block.getFoundryName() + "\" for the block " + path +
                      ". Name the plug-in that has it in CONFIG."};
    });
}

void printDesign(vrl::Netlist& circuit) {
    std::cout << circuit;
    visitElements(circuit, [](std::string const& path, vrl::BB& block) {
        if (auto* const composite = dynamic_cast<vrl::CBB*>(&block))
            std::cout << "Inside " << path << ":\n" << *composite->getAsNetlist();
    });
}
