#include "starter/block_table.h"

namespace vrltool::starter {

using namespace values;

namespace {

constexpr char kHead[] =
    "# The blocks of a foundry, for 'vrl new-plugin NAME DIR --from FILE'.\n"
    "#\n"
    "# A table holds what is declared. What is computed has to be written by hand in the sources that are made of it:\n"
    "# ports and ranges that depend on parameters, cross sections and their descriptions that depend on width and "
    "radius,\n"
    "# the choice of a flow between cross sections, mode models, views, and types of parameters of a plug-in's own.\n";

/// A string, or nothing for an empty one.
Node text(std::string const& string) { return string.empty() ? Node() : stringNode(string); }

Node parametersNode(std::vector<TableParameter> const& parameters) {
    Node map{Kind::kMap};
    for (TableParameter const& one : parameters)
        map.add(one.name, newMap({{"type", text(one.type)},
                                  {"default", one.value},
                                  {"min", one.min},
                                  {"max", one.max},
                                  {"unit", text(one.unit)},
                                  {"description", text(one.description)},
                                  {"tunable", one.tunable ? plainNode(*one.tunable ? "true" : "false") : Node()}}));
    return unlessEmpty(map);
}

Node portNode(TablePort const& port) {
    bool const plain = port.choice.crossSection.empty() && port.choice.flow.empty();
    if (plain) return stringNode(port.domain);
    return newMap({{"domain", stringNode(port.domain)},
                   {"crossSection", text(port.choice.crossSection)},
                   {"flow", text(port.choice.flow)}});
}

Node elementNode(TableElement const& element) {
    Node settings{Kind::kMap};
    for (auto const& [name, value] : element.settings) settings.add(name, value);
    if (settings.size() == 0) return stringNode(element.kind);
    return newMap({{"kind", stringNode(element.kind)}, {"parameters", settings}});
}

Node placeNode(TablePlace const& place) { return stringNode(place.element + "," + place.port); }

Node blockNode(TableBlock const& block) {
    Node ports{Kind::kMap}, elements{Kind::kMap}, connections{Kind::kList}, outer{Kind::kMap};
    for (TablePort const& port : block.ports) ports.add(port.name, portNode(port));
    for (TableElement const& element : block.elements) elements.add(element.name, elementNode(element));
    for (auto const& net : block.connections) {
        Node list{Kind::kList};
        for (TablePlace const& place : net) list.add(placeNode(place));
        connections.add(list);
    }
    for (auto const& [port, place] : block.outer) outer.add(port, placeNode(place));
    return newMap({{"description", text(block.description)},
                   {"crossSection", text(block.choice.crossSection)},
                   {"flow", text(block.choice.flow)},
                   {"ports", unlessEmpty(ports)},
                   {"parameters", parametersNode(block.parameters)},
                   {"elements", unlessEmpty(elements)},
                   {"connections", unlessEmpty(connections)},
                   {"outer", unlessEmpty(outer)}});
}

}  // namespace

std::string writtenTable(BlockTable const& table, bool json) {
    Node sections{Kind::kMap}, flows{Kind::kMap}, blocks{Kind::kMap};
    for (TableSection const& section : table.sections)
        sections.add(section.name, newMap({{"description", text(section.description)},
                                           {"width", section.width},
                                           {"parameters", parametersNode(section.parameters)}}));
    for (TableFlow const& flow : table.flows)
        flows.add(flow.name,
                  newMap({{"crossSection", text(flow.crossSection)}, {"parameters", parametersNode(flow.parameters)}}));
    for (TableBlock const& block : table.blocks) blocks.add(block.kind, blockNode(block));
    Node const root = newMap({{"foundry", stringNode(table.foundry)},
                              {"description", text(table.description)},
                              {"crossSection", text(table.choice.crossSection)},
                              {"flow", text(table.choice.flow)},
                              {"parameters", parametersNode(table.parameters)},
                              {"crossSections", unlessEmpty(sections)},
                              {"flows", unlessEmpty(flows)},
                              {"blocks", blocks}});
    if (json) return written(root, Format::kJson) + "\n";
    return kHead + written(root, Format::kYaml) + "\n";
}

}  // namespace vrltool::starter
