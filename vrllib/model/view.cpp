#include "vrllib/model/view.h"

#include <cstdio>
#include <ostream>

#include "vrllib/core/type_factory.h"
#include "vrllib/doc/texstream.h"
#include "vrllib/model/component.h"

namespace Vorlane_v1_0 {

RegisterView::RegisterView() = default;
RegisterView::RegisterView(RegisterView const& other) : views(other.views) {}
RegisterView& RegisterView::operator=(RegisterView const& other) {
    if (this != &other) views = other.views;
    return *this;
}
RegisterView::~RegisterView() {
    allocatedViews.clear();  // before the entries, which may name the same views
    views.clear();
}

void RegisterView::add(std::string const& name, View* view) { views.emplace(name, view); }
void RegisterView::addView(std::string const& name, View* view) { RegisterView::add(name, view); }
void RegisterView::addAllocatedView(std::string const& name, View* view) { RegisterView::add(name, view); }
void RegisterView::addAllocatedView(View*) {}
void RegisterView::del(std::string const& name) { views.erase(name); }

View const* RegisterView::get(std::string const& name) const {
    auto const found = views.find(name);
    return found == views.end() ? nullptr : found->second;
}
View* RegisterView::get(std::string const& name) {
    auto const found = views.find(name);
    return found == views.end() ? nullptr : found->second;
}
View* RegisterView::getView(std::string const& name) { return RegisterView::get(name); }
View const* RegisterView::getView(std::string const& name) const { return RegisterView::get(name); }

View::View(Component* c, std::string const& name) : component(c) {
    if (c) c->RegisterView::add(name, this);
}
View::View(View const& other) = default;
View& View::operator=(View const& other) = default;
View::~View() = default;

View* View::create(std::string const& type, Component* c, std::string const& name) {
    return detail::typeFactory<View>().create(type, c, name);
}
void View::destroy(View* view) { detail::typeFactory<View>().destroy(view); }
template <>
void ptr_destroy<View>(View* view) {
    View::destroy(view);
}

// A view belongs to a component, so there is none that could be the default.
template <>
shared_ptr<View> detail::defaultObject<View>() {
    static char text[] = "Can not create a default view";
    throwText(text);
}

bool View::applyOn(std::string const&) const { return false; }

std::string View::docApiVersion() const {
    char text[40];
    std::snprintf(text, sizeof text, "%d.%d.%d", 2, 1, 9);
    return text;
}

std::ostream& View::operator<<(std::ostream& os) const {
    os << "View{version=" << docApiVersion() << ",{";
    viewData.operator<<(os);
    return os << "}}\n";
}
std::ostream& operator<<(std::ostream& os, View const& view) { return view.operator<<(os); }

texstream& View::toTex(texstream& tex) const {
    tex.os() << "View\\{\\}";
    return tex;
}

}  // namespace Vorlane_v1_0
