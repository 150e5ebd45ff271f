#include "host/load_watch.h"

#include "vrllib/platform/platform.h"

// The library tells a host what failed as text for people only. The calls that it makes of the system can be replaced;
// watching them there is the one thing that this program takes from behind the public interface.

namespace vrltool {

namespace {

namespace platform = Vorlane_v1_0::platform;

struct Watch {
    platform::ReplaceableCalls before;
    std::vector<FailedLibrary> failed;
};

Watch& watch() {
    static auto* const state = new Watch{platform::calls(), {}};
    return *state;
}

void* loadLibrary(char const* path, platform::SystemError& error) {
    void* const module = watch().before.loadLibrary(path, error);
    auto& failed = watch().failed;
    if (!module && (failed.empty() || failed.back().path != path)) failed.push_back({path, error.text});
    return module;
}

}  // namespace

void watchLoads() {
    watch();
    platform::calls().loadLibrary = &loadLibrary;
}

std::vector<FailedLibrary> failedLibraries() { return watch().failed; }

}  // namespace vrltool
