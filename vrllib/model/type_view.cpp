#include "vrllib/model/type_view.h"

#include "vrllib/core/messages.h"
#include "vrllib/core/thrown_text.h"
#include "vrllib/core/type_factory.h"
#include "vrllib/model/building_block.h"
#include "vrllib/model/component.h"
#include "vrllib/model/cross_section.h"
#include "vrllib/model/foundry.h"
#include "vrllib/model/netlist.h"
#include "vrllib/model/process_flow.h"

namespace Vorlane_v1_0 {

namespace detail {

namespace {

/// A factory that no plug-in fills; it is made on first use and never destroyed.
template <class T>
FactoryArg<std::string, View, T*>& ownFactory() {
    static auto* const factory = new FactoryArg<std::string, View, T*>;
    return *factory;
}

}  // namespace

FactoryArg<std::string, View, Component*>& viewFactory(Component*) { return ownFactory<Component>(); }
FactoryArg<std::string, View, Foundry*>& viewFactory(Foundry*) { return ownFactory<Foundry>(); }
FactoryArg<std::string, View, CrossSection*>& viewFactory(CrossSection*) { return ownFactory<CrossSection>(); }
FactoryArg<std::string, View, ProcessFlow*>& viewFactory(ProcessFlow*) { return ownFactory<ProcessFlow>(); }
FactoryArg<std::string, View, BB*>& viewFactory(BB*) { return typeFactory<TypeView<BB>>(); }
FactoryArg<std::string, View, Netlist*>& viewFactory(Netlist*) { return typeFactory<TypeView<Netlist>>(); }

void throwNoData() {
    static char text[] = "No data";
    throwText(text);
}

void reportMissingView(std::string const& type) {
    vrlCout() << "Can't allocate '" << type << "' view, please check your VRLConfig.ini\n";
}

}  // namespace detail

#define VRL_VIEWS_OF_(T)                                                                                               \
    template class TypeView<T>;                                                                                        \
    template class ViewT<T>;
VRL_VIEWS_OF_(Component)
VRL_VIEWS_OF_(Foundry)
VRL_VIEWS_OF_(BB)
VRL_VIEWS_OF_(Netlist)
VRL_VIEWS_OF_(CrossSection)
VRL_VIEWS_OF_(ProcessFlow)
#undef VRL_VIEWS_OF_

}  // namespace Vorlane_v1_0
