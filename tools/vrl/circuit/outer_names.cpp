#include "circuit/outer_names.h"

#include "values/note.h"

namespace vrltool {

OuterNames outerNames(vrl::Netlist const& netlist, Circuit const& circuit) {
    OuterNames names;
    values::Node const kept = values::note(netlist);
    for (auto const& [name, given] : values::mapOf(values::member(kept, "ports"))) {
        values::Node const& port = given.size() == 2 ? (given.end() - 1)->second : given;
        auto const comma = port.text.rfind(',');  // of "element,port"; lists of one are what was left out
        if (comma == std::string::npos) continue;
        std::size_t const element = circuit.find(port.text.substr(0, comma));
        if (element == circuit.elements.size()) continue;
        ElementPort const* const found = circuit.elements[element].port(port.text.substr(comma + 1));
        if (found && found->node != 0) names[found->node].push_back(name.text);
    }
    return names;
}

}  // namespace vrltool
