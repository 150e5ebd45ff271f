#include "composite.h"

namespace broken {

Pair::Pair(vrl::Foundry const* foundry) : BB(foundry), CBB(foundry) {
    bool const missing = kFault == Fault::kMissingBlock || kFault == Fault::kMissingInside;
    pin(1, kFault == Fault::kNodeTwice ? 2 : 1);
    addBB(vrl::BB::create(foundry, kFault == Fault::kMissingBlock ? "brGone" : "brBlock"), "first");
    if (kFault == Fault::kMissingInside) addBB(vrl::BB::create(foundry, "brGone"), "middle");
    addBB(vrl::BB::create(foundry, "brBlock"), "second");
    setInputNode(addNode("first", kFault == Fault::kMissingPort ? "input" : "in0"));
    if (!missing) addNode("second", "in0", addNode("first", "out0"));
    if (missing) addNode("second", "in0", addNode("middle", "out0"));
    unsigned const out = kFault == Fault::kNodeOfNothing ? createNode() : addNode("second", "out0");
    setOutputNode(out);
    if (kFault == Fault::kNodeTwice) setOutputNode(out);
}

bool hasComposite() {
    switch (kFault) {
    case Fault::kConstructorPrints:
    case Fault::kLeaks:
    case Fault::kOverruns:
    case Fault::kMissingBlock:
    case Fault::kMissingInside:
    case Fault::kMissingPort:
    case Fault::kNodeTwice:
    case Fault::kNodeOfNothing:
        return true;
    default:
        return false;
    }
}

}  // namespace broken
