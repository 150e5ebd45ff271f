#include "vrllib/vrllib.h"

// A kind of netlist that saves no more than a plain one does, as which it is saved, and a view of netlists whose own
// name differs from its kind. Both are in order.

namespace {

class Chip : public vrl::Netlist {
public:
    std::string getName() const override { return "plainChip"; }
};

class ChipView : public vrl::TypeView<vrl::Netlist> {
public:
    explicit ChipView(vrl::Netlist* netlist) : TypeView(netlist, "the view of chips") {}
    std::string describe() const override { return "a view for tests"; }
};

}  // namespace

VRL_PLUGIN_EXPORT unsigned getAPIversion() { return 20111; }

VRL_PLUGIN_EXPORT void initLibraryNetlist(FactoryNoArg<std::string, vrl::Netlist>* factory) {
    factory->Register<Chip>("plainChip");
}

VRL_PLUGIN_EXPORT void initLibraryNetlistView(FactoryArg<std::string, vrl::View, vrl::Netlist*>* factory) {
    factory->Register<ChipView>("Chip/View");
}
