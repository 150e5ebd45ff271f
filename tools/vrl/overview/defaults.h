#pragma once

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "circuit/circuit.h"
#include "circuit/parameters.h"
#include "vrllib/vrllib.h"

namespace vrltool::overview {

/// What can be said of an element in a line of its own: a parameter, or a name in a choice.
struct Property {
    std::string name;   ///< of a choice "cross section" or "process flow", that of a port "out0 cross section"
    std::string value;  ///< with unit and expression; empty for no choice
};

std::vector<Property> propertiesOf(vrl::BB& block);
std::vector<Property> propertiesOf(vrl::Attributes& list);

/// What new blocks of the kinds have. Each is made once; a kind that cannot be made has no defaults.
class Defaults {
public:
    Defaults() = default;
    Defaults(Defaults const&) = delete;
    Defaults& operator=(Defaults const&) = delete;
    ~Defaults();

    /// A new element of the same kind and foundry, or null. That of an element inside of a composite is the one that
    /// the kind of the composite has there: `outer` is the new composite, or null.
    Element const* of(Element const& element, Element const* outer = nullptr);

    /// The properties of a new element, by name.
    std::map<std::string, std::string> const& propertiesOf(Element const& fresh);

private:
    std::map<std::pair<std::string, std::string>, Element> made;  ///< by kind and foundry
    std::map<Element const*, std::map<std::string, std::string>> properties;
};

}  // namespace vrltool::overview
