#include "blocks.h"
#include "cross_sections.h"
#include "process_flows.h"

// Blocks with electrical ports. They are ribs of the active flow.

namespace samplefab {

namespace {

/// A pn junction along a waveguide that shifts the phase of the light with the voltage.
class PhaseModulator : public Block {
public:
    static constexpr char const* kKind = kPhaseModulatorKind;

    explicit PhaseModulator(vrl::Foundry const* foundry) : Block(foundry, kKind, kRib) {
        getCS().setFlow(kActive);
        pin(1, 1);
        addPort("signal", vrl::EnumList::RF);
        addPort("ground", vrl::EnumList::RF);
        addNumber(*this, "length", 1500.0, {100.0, 6000.0}, "length of the junction", "um");
        addNumber(*this, "width", 0.5, {0.4, 0.8}, "width of the waveguide", "um");
        addNumber(*this, "efficiency", 20.0, {5.0, 50.0}, "voltage for half a wave times length", "V mm");
        addTunable(*this, "bias", -2.0, {-8.0, 0.0}, "voltage at rest", "V");
    }
};

/// A germanium detector at the end of a waveguide.
class Photodiode : public Block {
public:
    static constexpr char const* kKind = "sfPhotodiode";

    explicit Photodiode(vrl::Foundry const* foundry) : Block(foundry, kKind, kRib) {
        getCS().setFlow(kActive);
        pin(1, 0);
        addPort("anode", vrl::EnumList::DC);
        addPort("cathode", vrl::EnumList::DC);
        addNumber(*this, "length", 40.0, {10.0, 200.0}, "length of the absorber", "um");
        addNumber(*this, "width", 0.5, {0.4, 0.8}, "width of the waveguide that feeds it", "um");
        addNumber(*this, "responsivity", 0.9, {0.0, 1.2}, "current for a given power", "A/W");
        addTunable(*this, "bias", -1.0, {-3.0, 0.0}, "voltage in operation", "V");
    }
};

}  // namespace

void registerElectroOptics(BlockFactory& factory) { registerKinds<PhaseModulator, Photodiode>(factory); }

}  // namespace samplefab
