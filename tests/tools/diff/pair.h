#pragma once

#include <functional>
#include <string>
#include <vector>

#include "tests/tools/sample_circuit.h"
#include "tests/tools/tool.h"

namespace vrl_test {

/// Two designs, a.vrl and b.vrl, and the tool that compares them.
class Pair {
public:
    using Build = std::function<void(SampleCircuit&)>;

    Pair(Build const& a, Build const& b) {
        save("a.vrl", a);
        save("b.vrl", b);
    }

    /// What "vrl diff OPTIONS a.vrl b.vrl" writes to its output and to standard error, and its status: the whole of it.
    std::string diff(std::vector<std::string> options = {}) const {
        options.insert(options.end(), {"a.vrl", "b.vrl"});
        auto const ended = tool.run("diff", options);
        return ended.out + ended.err + "status " + std::to_string(ended.status) + "\n";
    }

    Tool tool;

private:
    void save(std::string const& name, Build const& build) {
        SampleCircuit circuit;
        build(circuit);
        circuit.save(tool.path(name));
    }
};

/// A circuit with something done to it.
inline Pair::Build both(Pair::Build const& first, Pair::Build const& then) {
    return [=](SampleCircuit& circuit) {
        first(circuit);
        then(circuit);
    };
}

}  // namespace vrl_test
