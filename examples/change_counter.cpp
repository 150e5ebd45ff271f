// A list of parameters and its change counter: how a host knows that what it shows is out of date.
//
// Prints which ways of setting a parameter move the counter, and the names in the order of adding.

#include <iostream>

#include "vrllib/vrllib.h"

namespace {

void look(char const* what, vrl::ComponentVersion const& watcher) {
    std::cout << what << ": " << (watcher.checkUpdate() ? "changed" : "as before") << "\n";
}

}  // namespace

int main() {
    vrlEmptyComponent component;
    component.addDouble("length", 10.0, "length of the arm", "um");

    vrl::ComponentVersion const watcher(&component);
    look("new watcher", watcher);
    component.setAttribute("length", "12.5");
    look("another text", watcher);
    component.setAttribute("length", "12.5");
    look("the same text", watcher);
    component.setDouble("length", 15.0);  // the typed setters do not count
    look("typed setter", watcher);
    component.addInteger("fingers", 4);
    look("new parameter", watcher);
    component.setExpression("length", "2*pitch");
    look("expression", watcher);

    for (auto name = component.beginAttribute(); name != component.endAttribute(); ++name) std::cout << *name << "\n";
}
