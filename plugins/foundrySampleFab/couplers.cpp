#include "blocks.h"
#include "cross_sections.h"

// Multimode interference couplers: a wide body in which light from one port forms images at others.

namespace samplefab {

namespace {

/// What the three have in common.
class Coupler : public Block {
protected:
    Coupler(vrl::Foundry const* foundry, char const* k, std::size_t inputs, std::size_t outputs, double lengthUm)
        : Block(foundry, k, kStrip) {
        pin(inputs, outputs);
        addNumber(*this, "length", lengthUm, {2.0, 500.0}, "length of the body", "um");
        addNumber(*this, "bodyWidth", 4.0, {1.5, 20.0}, "width of the body", "um");
        addNumber(*this, "excessLoss", 0.2, {0.0, 3.0}, "power that reaches no output", "dB");
    }
};

/// Splits the light of one port in halves.
class Splitter : public Coupler {
public:
    static constexpr char const* kKind = "sfSplitter";
    explicit Splitter(vrl::Foundry const* foundry) : Coupler(foundry, kKind, 1, 2, 15.5) {}
};

/// Combines two waves; what is out of phase is lost.
class Combiner : public Coupler {
public:
    static constexpr char const* kKind = "sfCombiner";
    explicit Combiner(vrl::Foundry const* foundry) : Coupler(foundry, kKind, 2, 1, 15.5) {}
};

/// Couples two ports with two others.
class Coupler2x2 : public Coupler {
public:
    static constexpr char const* kKind = "sfCoupler2x2";

    explicit Coupler2x2(vrl::Foundry const* foundry) : Coupler(foundry, kKind, 2, 2, 62.0) {
        addNumber(*this, "crossCoupling", 0.5, {0.0, 1.0}, "share of the power that changes sides", "1");
    }
};

}  // namespace

void registerCouplers(BlockFactory& factory) { registerKinds<Splitter, Combiner, Coupler2x2>(factory); }

}  // namespace samplefab
