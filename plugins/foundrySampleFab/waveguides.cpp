#include "blocks.h"
#include "cross_sections.h"
#include "process_flows.h"

// Waveguides: what leads light from block to block, or filters it on the way.

namespace samplefab {

namespace {

class Straight : public Block {
public:
    static constexpr char const* kKind = kStraightKind;

    explicit Straight(vrl::Foundry const* foundry) : Block(foundry, kKind, kStrip) {
        pin(1, 1);
        addNumber(*this, "length", 100.0, {1.0, 20000.0}, "length from port to port", "um");
        addNumber(*this, "width", 0.45, {0.3, 2.0}, "width of the waveguide", "um");
    }
};

/// An arc. The passive flow chooses its cross section by the radius.
class Bend : public Block {
public:
    static constexpr char const* kKind = "sfBend";

    explicit Bend(vrl::Foundry const* foundry) : Block(foundry, kKind, kStrip) {
        getCS().setFlow(kPassive);
        pin(1, 1);
        addNumber(*this, "radius", 10.0, {5.0, 500.0}, "radius of the centre line", "um");
        addNumber(*this, "angle", 90.0, {1.0, 360.0}, "angle between the ends", "deg");
        addNumber(*this, "width", 0.45, {0.3, 2.0}, "width of the waveguide", "um");
    }
};

class Taper : public Block {
public:
    static constexpr char const* kKind = "sfTaper";

    explicit Taper(vrl::Foundry const* foundry) : Block(foundry, kKind, kStrip) {
        pin(1, 1);
        addNumber(*this, "length", 50.0, {5.0, 1000.0}, "length from port to port", "um");
        addNumber(*this, "widthIn", 0.45, {0.3, 20.0}, "width at in0", "um");
        addNumber(*this, "widthOut", 2.0, {0.3, 20.0}, "width at out0", "um");
    }
};

/// A Bragg reflector: the side walls of a waveguide go in and out.
class Grating : public Block {
public:
    static constexpr char const* kKind = "sfGrating";

    explicit Grating(vrl::Foundry const* foundry) : Block(foundry, kKind, kShallow) {
        pin(1, 1);
        addCount(*this, "periods", 300, {10, 5000}, "number of periods");
        addNumber(*this, "pitch", 0.28, {0.2, 0.5}, "length of one period", "um");
        addNumber(*this, "dutyCycle", 0.5, {0.2, 0.8}, "share of the wide part in a period", "1");
        addNumber(*this, "width", 0.7, {0.4, 2.0}, "width between the corrugations", "um");
    }
};

}  // namespace

void registerWaveguides(BlockFactory& factory) { registerKinds<Straight, Bend, Taper, Grating>(factory); }

}  // namespace samplefab
