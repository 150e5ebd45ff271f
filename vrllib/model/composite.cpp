#include "vrllib/model/composite.h"

namespace Vorlane_v1_0 {

CBB::CBB(Foundry const* foundry) : BB(foundry), Netlist() {}
CBB::CBB(CBB const& other)
    : Attributes(other),
      RegisterView(other),
      BB(other),
      Netlist(other),
      serRegister(other.serRegister),
      serDone(other.serDone) {}
CBB& CBB::operator=(CBB const& other) {
    BB::operator=(other);
    Netlist::operator=(other);
    serRegister = other.serRegister;
    serDone = other.serDone;
    return *this;
}
CBB::~CBB() = default;

VRL_DEFINE_PERSISTENCE(CBB, BB, Netlist)

SerFormat<CBB> const& CBB::serFormat() {
    static auto const format =
        SerFormat<CBB>("CBB", 1).type([](CBB& composite) { return static_cast<BB&>(composite).getName(); });
    return format;
}

Foundry::CSInfo& CBB::getCS() { return BB::getCS(); }
Foundry::CSInfo const& CBB::getCS() const { return BB::getCS(); }

template class Serialisable<CBB>;

}  // namespace Vorlane_v1_0
