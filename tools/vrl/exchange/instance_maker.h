#pragma once

#include <map>
#include <set>
#include <string>

#include "circuit/circuit.h"
#include "exchange/document.h"
#include "exchange/findings.h"
#include "exchange/name_map.h"
#include "exchange/workshop.h"

namespace vrltool::exchange {

/// Makes the instances of elements: the way back of BlockMaker.
class InstanceMaker {
public:
    /// All of them outlive the maker. `file` names the design in findings.
    InstanceMaker(std::string const& file, NameMap const& names, Workshop& shop, Findings& found);

    /// The rule for an element: that of the component that it came from, or the first for its kind, or none but names
    /// that stay.
    ComponentRule const& ruleFor(Element const& element);
    /// The instance of an element that has a block.
    Instance make(Element const& element, std::string const& name);
    /// The name of a pin in the netlist.
    std::string portName(Element const& element, ElementPort const& pin);
    /// Tells of the composites, and of the kinds that the map does not name.
    void tellKinds();

private:
    /// What the settings of an instance say, and what of the block they do not.
    struct Settings {
        Tree settings = Tree::map();
        Tree values = Tree::map();
    };

    Settings settingsOf(vrl::BB& block, ComponentRule const& rule, FreshBlock const* fresh, Tree const& before) const;
    static void keepBefore(Settings& result, vrl::BB& block, ComponentRule const& rule, FreshBlock const* fresh,
                           Tree const& before, std::set<std::string>& told);
    void addStateBeside(Instance& instance, Element const& element, ComponentRule const& rule, FreshBlock const* fresh);
    void compareInside(Element const& element, FreshBlock const& fresh);

    std::string const& path;
    NameMap const& map;
    Workshop& workshop;
    Findings& findings;
    std::map<std::string, ComponentRule> sameNames;
    std::set<std::string> unmapped;
    std::map<std::string, std::size_t> composites;
};

}  // namespace vrltool::exchange
