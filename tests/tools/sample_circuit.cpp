#include "tests/tools/sample_circuit.h"

#include <fstream>
#include <stdexcept>

#include "tests/demo/sample_plugins.h"

namespace vrl_test {

namespace {

vrl::Foundry* sampleFab() {
    static vrl::Foundry* const foundry = vrl::Foundry::create("SampleFab");
    return foundry;
}

}  // namespace

SampleCircuit::SampleCircuit() {
    startWithSamplePlugins();
    resetUniqueIDs();
    circuit = vrl::Netlist::create("");
}

SampleCircuit::~SampleCircuit() { vrl::Netlist::destroy(circuit); }

SampleCircuit& SampleCircuit::add(std::string const& name, std::string const& kind) {
    vrl::BB* const block = vrl::BB::create(sampleFab(), kind);
    if (!block) throw std::invalid_argument("no kind " + kind);
    return add(name, block);
}

SampleCircuit& SampleCircuit::add(std::string const& name, vrl::BB* block) {
    circuit->addBB(block, name);
    return *this;
}

SampleCircuit& SampleCircuit::join(std::string const& a, std::string const& b) {
    auto const comma = b.find(',');
    circuit->addNode(b.substr(0, comma), b.substr(comma + 1), node(a));
    return *this;
}

SampleCircuit& SampleCircuit::input(std::string const& end) {
    circuit->setInputNode(node(end));
    return *this;
}

SampleCircuit& SampleCircuit::output(std::string const& end) {
    circuit->setOutputNode(node(end));
    return *this;
}

SampleCircuit& SampleCircuit::dc(std::string const& end) {
    circuit->setDCNode(node(end));
    return *this;
}

SampleCircuit& SampleCircuit::set(std::string const& element, std::string const& parameter, double value) {
    circuit->getBB(element)->setDouble(parameter, value);
    return *this;
}

std::string SampleCircuit::save(std::string const& path) {
    std::ofstream file(path, std::ios::binary);
    vrl::BinaryStreamSerialiser writer(file);
    if (!circuit->write(&writer) || !file.flush()) throw std::runtime_error("cannot save " + path);
    return path;
}

unsigned SampleCircuit::node(std::string const& end) {
    auto const comma = end.find(',');
    return circuit->getNode(end.substr(0, comma), end.substr(comma + 1));
}

void addInterferometer(SampleCircuit& circuit) {
    circuit.add("in", "sfEdgeCoupler").add("split", "sfSplitter").add("upper", "sfStraight");
    circuit.add("lower", "sfStraight").add("join", "sfCombiner").add("out", "sfEdgeCoupler");
    circuit.join("in,out0", "split,in0").join("split,out0", "upper,in0").join("split,out1", "lower,in0");
    circuit.join("upper,out0", "join,in0").join("lower,out0", "join,in1").join("join,out0", "out,in0");
    circuit.input("in,in0").output("out,out0").set("upper", "length", 100).set("lower", "length", 150);
}

void addModulator(SampleCircuit& circuit) {
    circuit.add("in", "sfEdgeCoupler").add("mod", "sfPhaseModulator").add("split", "sfSplitter");
    circuit.add("arms", "sfPushPullArms").add("join", "sfCombiner").add("out", "sfEdgeCoupler");
    circuit.join("in,out0", "mod,in0").join("mod,out0", "split,in0");
    circuit.join("split,out0", "arms,in0").join("split,out1", "arms,in1");
    circuit.join("arms,out0", "join,in0").join("arms,out1", "join,in1").join("join,out0", "out,in0");
    circuit.input("in,in0").output("out,out0").dc("mod,signal").dc("mod,ground");
}

}  // namespace vrl_test
