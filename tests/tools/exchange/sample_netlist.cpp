#include "tests/tools/exchange/sample_netlist.h"

namespace vrl_test {

std::string sampleMap() {
    return "foundry: SampleFab\n"
           "components:\n"
           "  straight:\n"
           "    key: sfStraight\n"
           "    ports: {o1: in0, o2: out0}\n"
           "    parameters:\n"
           "      length_mm: {to: length, factor: 1000}\n"
           "  bend:\n"
           "    key: sfBend\n"
           "    ports: {o1: in0, o2: out0}\n"
           "    defaults: {width: 0.5}\n"
           "  mmi1x2:\n"
           "    key: sfSplitter\n"
           "    ports: {o1: in0, o2: out0, o3: out1}\n"
           "    parameters: {length_mmi: length, taper: null}\n"
           "  phase_shifter:\n"
           "    key: sfPhaseModulator\n"
           "    ports: {o1: in0, o2: out0, top: signal, bottom: ground}\n";
}

std::string sampleNetlist() {
    return "name: mzi_demo\n"
           "instances:\n"
           "  arm:\n"
           "    component: straight\n"
           "    info: {length: 120.5, layers: [[1, 0], null]}\n"
           "    settings:\n"
           "      cross_section: strip\n"
           "      length_mm: 0.1205\n"
           "      npoints: 2\n"
           "      width: null\n"
           "  mod:\n"
           "    component: phase_shifter\n"
           "    settings: {}\n"
           "  split:\n"
           "    component: mmi1x2\n"
           "    settings: {length_mmi: 16, taper: {length: 10.0}}\n"
           "nets:\n"
           "- p1: split,o2\n"
           "  p2: arm,o1\n"
           "- p1: split,o3\n"
           "  p2: mod,o1\n"
           "placements:\n"
           "  arm: {x: 1.5, y: -2, rotation: 90, mirror: true}\n"
           "ports:\n"
           "  west: split,o1\n"
           "  east: arm,o2\n"
           "  north: mod,o2\n"
           "  signal: mod,top\n"
           "warnings: []\n";
}

std::string chainNetlist(std::size_t count, bool json) {
    std::string const quote = json ? "\"" : "";
    std::string const indent = json ? "" : "  ";
    std::string const comma = json ? "," : "";
    auto const name = [](std::size_t i) { return "e" + std::to_string(i); };
    auto const quoted = [&](std::string const& text) { return quote + text + quote; };
    std::string instances, nets;
    for (std::size_t i = 0; i < count; ++i) {
        std::string const last = i + 1 < count ? comma : "";
        instances += indent + quoted(name(i)) + ": {" + quoted("component") + ": " +
                     quoted(i % 2 ? "bend" : "straight") + ", " + quoted("settings") + ": {" + quoted("width") +
                     ": 0.5, " + quoted("npoints") + ": null, " + quoted("layer") + ": [1, 0], " +
                     quoted("cross_section") + ": " + quoted("strip") + "}}" + last + "\n";
        if (i == 0) continue;
        std::string const first = json ? "{\"p1\": \"" : "- {p1: \"";
        nets += first + name(i - 1) + ",o2\", " + quoted("p2") + ": \"" + name(i) + ",o1\"}" + last + "\n";
    }
    std::string const ports =
        quoted("in") + ": \"" + name(0) + ",o1\", " + quoted("out") + ": \"" + name(count - 1) + ",o2\"";
    if (json) return "{\"instances\": {\n" + instances + "}, \"nets\": [\n" + nets + "], \"ports\": {" + ports + "}}\n";
    return "instances:\n" + instances + "nets:\n" + nets + "ports: {" + ports + "}\n";
}

}  // namespace vrl_test
