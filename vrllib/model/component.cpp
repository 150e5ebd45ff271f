#include "vrllib/model/component.h"

namespace Vorlane_v1_0 {

Component::Component() = default;
Component::Component(Component const& other)
    : Attributes(other), RegisterView(other), serRegister(other.serRegister), serDone(other.serDone) {}
Component& Component::operator=(Component const& other) {
    Attributes::operator=(other);
    RegisterView::operator=(other);
    serRegister = other.serRegister;
    serDone = other.serDone;
    return *this;
}
Component::~Component() = default;

VRL_DEFINE_PERSISTENCE(Component, Attributes)

SerFormat<Component> const& Component::serFormat() {
    static auto const format = SerFormat<Component>("Component", 1);
    return format;
}

Version const ComponentVersion::vnull;

ComponentVersion::ComponentVersion(Component* c) : VersionClient(c ? c->getVersionInfo() : vnull) {}
ComponentVersion::~ComponentVersion() = default;

template class Serialisable<Component>;

}  // namespace Vorlane_v1_0

using namespace Vorlane_v1_0;

vrlEmptyComponent::vrlEmptyComponent() = default;
vrlEmptyComponent::vrlEmptyComponent(vrlEmptyComponent const& other)
    : Attributes(other), RegisterView(other), Component(other) {}
vrlEmptyComponent& vrlEmptyComponent::operator=(vrlEmptyComponent const& other) = default;
vrlEmptyComponent::~vrlEmptyComponent() = default;
std::string vrlEmptyComponent::getName() const { return "vrlEmptyComponent"; }
