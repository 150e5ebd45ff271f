#pragma once

#include <string>

#include "vrllib/vrllib.h"

namespace vrl_test {

/// A netlist of blocks of the sample plug-ins, built step by step; its numbers begin at 1. Ports are named as
/// "element,port".
class SampleCircuit {
public:
    SampleCircuit();
    SampleCircuit(SampleCircuit const&) = delete;
    SampleCircuit& operator=(SampleCircuit const&) = delete;
    ~SampleCircuit();

    /// Adds a block of a kind, made for SampleFab.
    SampleCircuit& add(std::string const& name, std::string const& kind);
    /// Adds a block that the caller made.
    SampleCircuit& add(std::string const& name, vrl::BB* block);
    /// Ties two ends to one node.
    SampleCircuit& join(std::string const& a, std::string const& b);
    /**@{*/
    /// Puts the node of an end on the boundary.
    SampleCircuit& input(std::string const& end);
    SampleCircuit& output(std::string const& end);
    SampleCircuit& dc(std::string const& end);
    /**@}*/
    /// Sets a number of an element.
    SampleCircuit& set(std::string const& element, std::string const& parameter, double value);

    vrl::Netlist& netlist() { return *circuit; }
    /// Saves the netlist. Returns the path.
    std::string save(std::string const& path);

private:
    unsigned node(std::string const& end);

    vrl::Netlist* circuit;
};

/// A Mach-Zehnder interferometer: in -> split -> (upper, lower: straight of 100 and 150 um) -> join -> out.
void addInterferometer(SampleCircuit& circuit);

/// A phase modulator between two edge couplers, its electrical ports on the DC boundary, and a composite after it.
void addModulator(SampleCircuit& circuit);

}  // namespace vrl_test
