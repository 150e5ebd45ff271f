#pragma once

#include <complex>
#include <initializer_list>
#include <string>

#include "vrllib/vrllib.h"

namespace PluginName_plugin {

/// A port of an element.
struct Place {
    char const* element;
    char const* port;
};

/// Connects ports at one node.
inline void connectPorts(vrl::Netlist& netlist, std::initializer_list<Place> places) {
    unsigned node = 0;
    for (Place const& place : places) node = netlist.addNode(place.element, place.port, node);
}

/**@{*/
/// Sets a parameter of an element, whatever number it is; null is ignored.
inline void setValue(vrl::BB* block, std::string const& name, bool value) {
    if (block) block->setBool(name, value);
}
inline void setValue(vrl::BB* block, std::string const& name, double value) {
    if (!block) return;
    if (block->getAttribute(name)->getType() == "Int")
        block->setInteger(name, static_cast<int>(value));
    else
        block->setDouble(name, value);
}
inline void setValue(vrl::BB* block, std::string const& name, std::complex<double> const& value) {
    if (block) block->setComplex(name, value);
}
inline void setValue(vrl::BB* block, std::string const& name, std::string const& value) {
    if (block) block->setString(name, value);
}
/**@}*/

}  // namespace PluginName_plugin
