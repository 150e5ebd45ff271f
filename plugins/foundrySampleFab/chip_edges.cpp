#include "blocks.h"
#include "cross_sections.h"

// Where light enters and leaves the chip.

namespace samplefab {

namespace {

/// A spot-size converter: a tip at the facet that widens the mode to that of a fibre. Works in both directions.
class EdgeCoupler : public Block {
public:
    static constexpr char const* kKind = "sfEdgeCoupler";

    explicit EdgeCoupler(vrl::Foundry const* foundry) : Block(foundry, kKind, kStrip) {
        pin(1, 1);
        addNumber(*this, "length", 300.0, {50.0, 1000.0}, "length from the facet to the waveguide", "um");
        addNumber(*this, "tipWidth", 0.18, {0.15, 0.3}, "width of the tip at the facet", "um");
        addNumber(*this, "couplingLoss", 1.5, {0.0, 10.0}, "loss between fibre and waveguide", "dB");
    }
};

}  // namespace

void registerChipEdges(BlockFactory& factory) { registerKinds<EdgeCoupler>(factory); }

}  // namespace samplefab
