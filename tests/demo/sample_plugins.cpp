#include "tests/demo/sample_plugins.h"

#include "tests/support/files.h"
#include "vrllib/vrllib.h"

namespace vrl_test {

std::string configText(std::string const& folder, std::string const& lines) {
    return "sodlldir_clear\nsodlldir_linux = " + folder + "\nsodllpostfix_linux = .so.${version}\n" + lines;
}

std::string const& startWithSamplePlugins() {
    static TemporaryFolder const folder;
    static std::string const messages = [] {
        auto const text = configText(VRL_SAMPLE_PLUGINS, "sodllfile = vrlDemoDll\nsodllfile = foundrySampleFab\n");
        vrlConfigFile(writeFile(folder / "VRLConfig.ini", text).c_str());
        vrlInit_vrllib(false, false);
        return vrlGetCoutMsg();
    }();
    return messages;
}

}  // namespace vrl_test
