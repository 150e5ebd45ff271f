#include "bench/kinds.h"

#include <utility>

namespace bench {

namespace {

/// As the kinds of a foundry: the constructor declares ports and parameters, two of them with a range.
template <std::size_t Kind>
class LibraryBlock final : public vrl::BB {
public:
    explicit LibraryBlock(vrl::Foundry const* foundry) : BB(foundry) {
        for (char const* const name : kPorts) addPort(name, vrl::EnumList::Optics);
        range(kLength, 1, 20000);
        range(kWidth, 0.2, 5);
        addInteger(kCount.name, kCount.value, kCount.description, kCount.unit);
        addBool(kHeated.name, kHeated.value, kHeated.description, kHeated.unit);
        addString(kModel.name, kModel.value, kModel.description, kModel.unit);
    }
    std::string getName() const override { return kindName(Kind); }

private:
    void range(ParameterSpec<double> const& spec, double min, double max) {
        addAttribute(
            new ValueRange<double, vrl::Value<double>>(spec.name, spec.value, min, max, spec.description, spec.unit));
    }
};

template <std::size_t... Kinds>
void registerEach(FactoryArg<std::string, vrl::BB, vrl::Foundry const*>& factory, std::index_sequence<Kinds...>) {
    (factory.Register<LibraryBlock<Kinds>>(kindName(Kinds)), ...);
}

}  // namespace

void registerKinds(FactoryArg<std::string, vrl::BB, vrl::Foundry const*>& factory) {
    registerEach(factory, std::make_index_sequence<kKinds>());
}

}  // namespace bench
