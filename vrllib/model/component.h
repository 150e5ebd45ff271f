#pragma once

#include <string>

#include "vrllib/attributes/attributes.h"
#include "vrllib/core/change_counter.h"
#include "vrllib/model/view.h"

// The design model, its words:
//
// component  any object of a design: a parameter list and a register of views with the name of its kind
// kind       what an object is ("mmi"), given by getName; an instance has a name only inside a netlist
// foundry    a fabrication house; it makes process flows and cross sections
// block      a building block (BB): a component with ports, made for a foundry
// element    a block in a netlist, under a number and usually a name
// node       a number that connects ports; 0 means no node
// composite  a block that is a netlist inside (CBB)

namespace Vorlane_v1_0 {

/// The base of every object of a design.
///
/// The parameter list and the view register are virtual bases, so that an object with two component parts has one of
/// each. The most derived class builds them: a copy constructor that is to copy them names Attributes(other) and
/// RegisterView(other) itself.
/// A component is saved as its parameter list; views are not saved.
class VRL_API Component : public virtual Attributes, public virtual RegisterView {
public:
    Component();
    /// Copies the parameter list (sharing the parameters), the views and the serialisation register as they are.
    Component(Component const& other);
    /// Assigns the same parts as the copy, but the change counter stays.
    Component& operator=(Component const& other);
    ~Component() override;
    VRL_PERSISTENT(Component)

public:
    /// The name of the kind.
    virtual std::string getName() const = 0;

private:
    SerRegister serRegister;
    SerrDoneFlag serDone;
};

/// The watcher of a component's change counter. Without a component it never sees a change.
class VRL_API ComponentVersion : public VersionClient {
public:
    /// Begins at the present count; null is allowed. The component has to outlive the watcher.
    explicit ComponentVersion(Component* c);
    /// Watches the same component.
    ComponentVersion(ComponentVersion const& other) = default;
    /// Takes over the count only, as VersionClient does.
    ComponentVersion& operator=(ComponentVersion const& other) = default;
    ~ComponentVersion();

private:
    static Version const vnull;
};

extern template class VRL_INSTANCE Serialisable<Component>;

}  // namespace Vorlane_v1_0

/// A component with no meaning of its own: a bare holder of parameters and views.
class VRL_API vrlEmptyComponent : public Vorlane_v1_0::Component {
public:
    vrlEmptyComponent();
    /// Copies the component, its parameter list and views included.
    vrlEmptyComponent(vrlEmptyComponent const& other);
    /// Assigns as Component does.
    vrlEmptyComponent& operator=(vrlEmptyComponent const& other);
    ~vrlEmptyComponent() override;

    /// "vrlEmptyComponent".
    std::string getName() const override;
};
