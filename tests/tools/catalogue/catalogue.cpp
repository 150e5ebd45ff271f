#include "tests/tools/catalogue/catalogue.h"

#include "tests/demo/sample_plugins.h"

namespace vrl_test {

namespace {

void replaceAll(std::string& text, std::string const& from, std::string const& to) {
    for (auto at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
}

}  // namespace

std::string writeBrokenConfig(Tool const& tool, std::vector<std::string> const& libraries) {
    std::string lines;
    for (std::string const& library : libraries) lines += "sodllfile = " + library + "\n";
    return writeBrokenLines(tool, lines);
}

std::string writeBrokenLines(Tool const& tool, std::string const& lines) {
    return tool.write("broken.ini", configText(VRL_CATALOGUE_PLUGINS, lines));
}

std::string brokenPlugin(std::string const& name) {
    return std::string(VRL_CATALOGUE_PLUGINS) + "/lib_wn_" + name + ".so.5.1.3";
}

std::string homeOf(Tool const& tool) {
    std::string const work = tool.path("");
    return work.substr(0, work.size() - 5) + "home";
}

std::string shown(Tool const& tool, std::string const& output) {
    std::string text = output;
    replaceAll(text, VRL_CATALOGUE_PLUGINS, "BROKEN");
    replaceAll(text, VRL_SAMPLE_PLUGINS, "SAMPLES");
    replaceAll(text, homeOf(tool), "HOME");
    std::string const work = tool.path("");
    replaceAll(text, work.substr(0, work.size() - 1), "HERE");
    return text;
}

}  // namespace vrl_test
