#include "tests/tools/tool.h"

#include "tests/demo/sample_plugins.h"
#include "tests/support/files.h"

namespace vrl_test {

namespace {

std::string configOf(std::vector<std::string> const& libraries) {
    std::string lines;
    for (std::string const& library : libraries) lines += "sodllfile = " + library + "\n";
    return configText(VRL_SAMPLE_PLUGINS, lines);
}

}  // namespace

Tool::Tool() : sandbox(VRL_TOOL_PROGRAM) {
    writeFile(sandbox.home() / ".config/vorlane/VRLConfig.ini", configOf({"vrlDemoDll", "foundrySampleFab"}));
}

Outcome Tool::run(std::string const& command, std::vector<std::string> const& arguments) const {
    return sandbox.run(command, arguments);
}

Outcome Tool::runAtTerminal(std::string const& command, std::vector<std::string> const& arguments) const {
    return sandbox.runAtTerminal("", command, arguments);
}

std::string Tool::write(std::string const& name, std::string const& text) const {
    writeFile(sandbox.work() / name, text);
    return name;
}

std::string Tool::read(std::string const& name) const { return readFile(sandbox.work() / name); }

std::string Tool::writeConfig(std::string const& name, std::vector<std::string> const& libraries) const {
    return write(name, configOf(libraries));
}

}  // namespace vrl_test
