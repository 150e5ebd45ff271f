#include "blocks.h"
#include "cross_sections.h"

// The composite: the two arms of a Mach-Zehnder modulator, driven in push-pull.

namespace samplefab {

namespace {

/// in0 -> upper -> out0
/// in1 -> trim -> lower -> out1
///
/// The boundary of the inner netlist follows the order of the ports: in0, in1; out0, out1; upper, lower, ground.
class PushPullArms : public vrl::CBB {
public:
    static constexpr char const* kKind = "sfPushPullArms";

    explicit PushPullArms(vrl::Foundry const* foundry) : BB(foundry), CBB(foundry) {
        getCS().setCS(kStrip);
        pin(2, 2);
        for (char const* const name : {"upper", "lower", "ground"}) addPort(name, vrl::EnumList::RF);
        addNumber(*this, "length", 1700.0, {200.0, 8000.0}, "length of the cell, feeds included", "um");
        addNumber(*this, "separation", 50.0, {20.0, 500.0}, "distance between the arms", "um");
        addElements(foundry);
        connect();
    }
    PushPullArms(PushPullArms const&) = delete;
    PushPullArms& operator=(PushPullArms const&) = delete;

    std::string getName() const override { return kKind; }

private:
    void addElements(vrl::Foundry const* foundry) {
        addBB(vrl::BB::create(foundry, kPhaseModulatorKind), "upper");
        addBB(vrl::BB::create(foundry, kPhaseModulatorKind), "lower");
        vrl::BB* const trim = vrl::BB::create(foundry, kStraightKind);
        addBB(trim, "trim");
        if (trim) trim->setDouble("length", 20.0);
    }

    void connect() {
        setInputNode(addNode("upper", "in0"));
        setInputNode(addNode("trim", "in0"));
        addNode("lower", "in0", addNode("trim", "out0"));
        setOutputNode(addNode("upper", "out0"));
        setOutputNode(addNode("lower", "out0"));
        setDCNode(addNode("upper", "signal"));
        setDCNode(addNode("lower", "signal"));
        setDCNode(addNode("lower", "ground", addNode("upper", "ground")));
    }
};

}  // namespace

void registerComposites(BlockFactory& factory) { registerKinds<PushPullArms>(factory); }

}  // namespace samplefab
