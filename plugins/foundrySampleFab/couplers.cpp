#include "blocks.h"
#include "cross_sections.h"

// Couplers: a wide body in which light from one port reaches others, as images by interference or freely spread.

namespace samplefab {

namespace {

/// What those by interference have in common.
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

/// A slab in which light spreads freely from any of the ports on one arc to all on the other.
class StarCoupler : public Block {
protected:
    StarCoupler(vrl::Foundry const* foundry, char const* k, std::size_t inputs, std::size_t outputs)
        : Block(foundry, k, kStrip) {
        pin(inputs, outputs);
        addNumber(*this, "length", 100.0, {5.0, 20000.0}, "distance between the arcs", "um");
        addNumber(*this, "apertureIn", 10.0, {1.0, 2000.0}, "length of the arc of the inputs", "um");
        addNumber(*this, "apertureOut", 20.0, {1.0, 2000.0}, "length of the arc of the outputs", "um");
        addNumber(*this, "width", 0.45, {0.3, 2.0}, "width of the waveguides", "um");
        addNumber(*this, "excessLoss", 0.5, {0.0, 5.0}, "power that reaches no output", "dB");
    }
};

class StarCoupler1x10 : public StarCoupler {
public:
    static constexpr char const* kKind = "sfStarCoupler1x10";
    explicit StarCoupler1x10(vrl::Foundry const* foundry) : StarCoupler(foundry, kKind, 1, 10) {}
};

class StarCoupler3x10 : public StarCoupler {
public:
    static constexpr char const* kKind = "sfStarCoupler3x10";
    explicit StarCoupler3x10(vrl::Foundry const* foundry) : StarCoupler(foundry, kKind, 3, 10) {}
};

}  // namespace

void registerCouplers(BlockFactory& factory) {
    registerKinds<Splitter, Combiner, Coupler2x2, StarCoupler1x10, StarCoupler3x10>(factory);
}

}  // namespace samplefab
