// A minimal plug-in: one kind of block, registered under its name when the file is loaded.
//
// The file is called lib_wn_minimal and the postfix of the configuration; `sodllfile = minimal` loads it.

#include "vrllib/vrllib.h"

namespace {

class Ring : public vrl::BB {
public:
    explicit Ring(vrl::Foundry const* foundry) : vrl::BB(foundry) {
        pin(1, 2);
        addAttribute(
            new ValueRange<double, vrl::Value<double>>("radius", 10.0, 5.0, 200.0, "radius of the ring", "um"));
    }
    std::string getName() const override { return "ring"; }  // the key below: a saved ring is made again by this name
};

}  // namespace

VRL_PLUGIN_EXPORT void initLibraryBB(FactoryArg<std::string, vrl::BB, vrl::Foundry const*>* factory) {
    factory->Register<Ring>("ring");
}

VRL_PLUGIN_API_VERSION(2, 1, 11);
