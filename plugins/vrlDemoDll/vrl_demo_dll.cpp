#include <iterator>
#include <string>

#include "vrllib/vrllib.h"

// The smallest plug-in that is useful: one kind of block, two views, a version and a hook.

namespace {

/// A waveguide that is there for its delay.
class DelayLine : public vrl::BB {
public:
    explicit DelayLine(vrl::Foundry const* foundry) : BB(foundry) {
        pin(1, 1);
        addAttribute(new ValueRange<double, vrl::Value<double>>("length", 1000.0, 10.0, 50000.0,
                                                                "length of the path from port to port", "um"));
    }

    std::string getName() const override { return "demoDelayLine"; }
};

/// A note of a person on a block of any kind. It is not saved with the block.
class Notes : public vrl::TypeView<vrl::BB> {
public:
    static constexpr char const* kName = "Demo/Notes";

    explicit Notes(vrl::BB* block) : TypeView(block, kName) { getViewData().addString("note", "", "what to remember"); }

    std::string describe() const override { return "note: " + getViewData().getString("note"); }
    bool applyOn(std::string const&) const override { return true; }
};

/// A delay line is drawn as one.
class Symbol : public vrl::TypeView<vrl::BB> {
public:
    static constexpr char const* kName = "Symbol/Demo";

    explicit Symbol(vrl::BB* block) : TypeView(block, kName) {
        getViewData().addString("symbol", "delay", "name of the symbol in a picture");
    }

    std::string describe() const override { return "symbol: " + getViewData().getString("symbol"); }
    bool applyOn(std::string const& kind) const override { return kind == "demoDelayLine"; }
};

}  // namespace

VRL_PLUGIN_API_VERSION(2, 1, 11);

VRL_PLUGIN_EXPORT void initLibraryBB(FactoryArg<std::string, vrl::BB, vrl::Foundry const*>* factory) {
    factory->Register<DelayLine>("demoDelayLine");
}

VRL_PLUGIN_EXPORT void initLibraryBBView(FactoryArg<std::string, vrl::View, vrl::BB*>* factory) {
    factory->Register<Notes>(Notes::kName);
    factory->Register<Symbol>(Symbol::kName);
}

// Called when every plug-in has registered its classes: once for each initLibrary... above that was called, and again
// with each further start-up.
VRL_PLUGIN_EXPORT void initLibraryPostLoad() {
    static bool reported = false;
    if (reported) return;
    reported = true;
    vrlPrintf("vrlDemoDll: kinds of building block: %d\n",
              static_cast<int>(std::distance(FactoryLoader<vrl::BB>::begin(), FactoryLoader<vrl::BB>::end())));
}
