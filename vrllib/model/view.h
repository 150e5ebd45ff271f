#pragma once

#include <iosfwd>
#include <map>
#include <string>
#include <vector>

#include "vrllib/attributes/attributes.h"
#include "vrllib/base/forward.h"
#include "vrllib/core/shared_ptr.h"

namespace Vorlane_v1_0 {

/// The named views of a component, in name order.
///
/// It owns none of them: removing an entry, or the whole register, leaves the views alive.
class VRL_API RegisterView {
public:
    /// The views by name.
    using ViewMap = std::map<std::string, View*>;
    /**@{*/
    /// Valid until the entry is removed.
    using iterator = ViewMap::iterator;
    using const_iterator = ViewMap::const_iterator;
    /**@}*/

    RegisterView();
    /// The copy holds the same views, which go on naming their first component.
    RegisterView(RegisterView const& other);
    /// Replaces the entries by the same views as the source's; nothing is freed.
    RegisterView& operator=(RegisterView const& other);
    virtual ~RegisterView();

    /**@{*/
    /// A taken name keeps its first view; the new one is dropped in silence.
    void add(std::string const& name, View* view);
    void addView(std::string const& name, View* view);
    /**@}*/
    /// The same as add: in spite of its name it takes no ownership.
    void addAllocatedView(std::string const& name, View* view);
    /// Does nothing, by design: the view is neither stored nor freed.
    void addAllocatedView(View* view);
    /// Removes the entry and leaves the view alive. An absent name is no error.
    void del(std::string const& name);

    /**@{*/
    /// The view of that name, or null.
    View* get(std::string const& name);
    View const* get(std::string const& name) const;
    View* getView(std::string const& name);
    View const* getView(std::string const& name) const;
    /**@}*/

    /**@{*/
    /// The entries, in order of the names.
    iterator begin() { return views.begin(); }
    iterator end() { return views.end(); }
    const_iterator begin() const { return views.begin(); }
    const_iterator end() const { return views.end(); }
    iterator beginView() { return views.begin(); }
    iterator endView() { return views.end(); }
    const_iterator beginView() const { return views.begin(); }
    const_iterator endView() const { return views.end(); }
    /**@}*/

private:
    ViewMap views;
    std::vector<shared_ptr<View>> allocatedViews;
};

/// A tool's companion of a component: it holds the parameters and the behaviour that only that tool needs.
///
/// Plug-ins derive from it and register in a view factory. A view does not own its component, and its destructor does
/// not take it out of the component's register: whoever destroys a view while its component lives calls del first.
class VRL_API View {
public:
    /// Copies the component pointer and the parameters; the copy registers itself nowhere.
    View(View const& other);
    /// Takes over the component pointer and the parameters; no register changes.
    View& operator=(View const& other);

    /// A view of that kind for a component; the name goes to the view's constructor. Null for an unknown kind. The
    /// caller frees it with destroy. Throws "Sorry - use a proper key" (`char*`) for an empty kind.
    static View* create(std::string const& type, Component* c, std::string const& name);
    /// Runs the on-destroy callbacks, then deletes the view; null only runs the callbacks.
    static void destroy(View* view);

    /**@{*/
    /// The component, or null. It is not owned, and nothing tracks its end.
    Component* getComponent() { return component; }
    Component const* getComponent() const { return component; }
    /**@}*/

    /**@{*/
    /// The view's own parameters.
    Attributes& getViewData() { return viewData; }
    Attributes const& getViewData() const { return viewData; }
    /**@}*/

    /// Writes "View{version=2.1.9,{", the parameters and "}}\n". Not virtual: every view prints like this.
    std::ostream& operator<<(std::ostream& os) const;
    /// Writes "View\{\}".
    texstream& toTex(texstream& tex) const;

protected:
    /// Registers the view under the name with the component, unless that is null.
    View(Component* c, std::string const& name);
    /// Leaves the component's register as it is.
    virtual ~View();

public:
    /// One line of text for a person.
    virtual std::string describe() const = 0;
    /// Whether this view applies to what `name` names; the base says false.
    virtual bool applyOn(std::string const& name) const;

protected:
    /// The version of the view interface. It stays as it is and does not follow that of the library.
    std::string docApiVersion() const;

private:
    friend class ::FactoryFunctions<View>;

    Component* component;
    Attributes viewData;
};

/// Writes the view by its operator<<.
VRL_API std::ostream& operator<<(std::ostream& os, View const& view);

}  // namespace Vorlane_v1_0
