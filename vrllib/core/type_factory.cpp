#include "vrllib/core/type_factory.h"

namespace Vorlane_v1_0::detail {

template <class T>
FactoryType<T>*& factoryPlace() {
    static FactoryType<T>* factory = nullptr;
    return factory;
}

template FactoryType<Attribute>*& factoryPlace<Attribute>();
template FactoryType<Foundry>*& factoryPlace<Foundry>();
template FactoryType<BB>*& factoryPlace<BB>();
template FactoryType<Netlist>*& factoryPlace<Netlist>();
template FactoryType<View>*& factoryPlace<View>();
template FactoryType<TypeView<BB>>*& factoryPlace<TypeView<BB>>();
template FactoryType<TypeView<Netlist>>*& factoryPlace<TypeView<Netlist>>();

}  // namespace Vorlane_v1_0::detail
