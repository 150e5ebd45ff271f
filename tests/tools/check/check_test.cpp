#include "tests/tools/check/check_test.h"

#include <algorithm>
#include <stdexcept>

#include "tests/demo/sample_plugins.h"

namespace vrl_test {

CheckTest::CheckTest()
    : config(tool.write("probes.ini", configText(VRL_SAMPLE_PLUGINS, "sodlldir_linux = " VRL_TEST_PLUGINS
                                                                     "\nsodllfile = vrlDemoDll\nsodllfile = "
                                                                     "foundrySampleFab\nsodllfile = checkProbes\n"))) {}

std::string CheckTest::save(std::string const& name) {
    circuit.save(tool.path(name));
    return name;
}

Outcome CheckTest::check(std::vector<std::string> arguments) const {
    arguments.insert(arguments.end(), {"--config", config});
    return tool.run("check", arguments);
}

std::string CheckTest::found(std::string const& rule) { return foundIn(save(), rule); }

std::string CheckTest::foundIn(std::string const& file, std::string const& rule) const {
    Outcome const outcome = check({file, "--all", "--only", rule});
    EXPECT_NE(outcome.status, 2) << outcome.err;
    return outcome.out.substr(0, outcome.out.find("\n\n") + 1);
}

vrl::Netlist& CheckTest::inside(std::string const& element) {
    return *dynamic_cast<vrl::CBB&>(*circuit.netlist().getBB(element)).getAsNetlist();
}

void CheckTest::change(std::string const& file, std::string const& from, std::string const& to) const {
    std::string bytes = tool.read(file);
    auto const place = bytes.find(from);
    if (place == std::string::npos || from.size() != to.size()) throw std::invalid_argument("cannot change " + from);
    tool.write(file, bytes.replace(place, from.size(), to));
}

}  // namespace vrl_test
