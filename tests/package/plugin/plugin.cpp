#include <string>

#include "vrllib/vrllib.h"

namespace {

/// A straight waveguide with one port at each end.
class Waveguide : public vrl::BB {
public:
    explicit Waveguide(vrl::Foundry const* foundry) : BB(foundry) {
        pin(1, 1);
        addAttribute(new ValueRange<double, vrl::Value<double>>("length", 10.0, 1.0, 100.0, "from port to port", "um"));
    }

    std::string getName() const override { return "packageWaveguide"; }
};

}  // namespace

VRL_PLUGIN_API_VERSION(2, 1, 11);

VRL_PLUGIN_EXPORT void initLibraryBB(FactoryArg<std::string, vrl::BB, vrl::Foundry const*>* factory) {
    factory->Register<Waveguide>("packageWaveguide");
}
