#include "tests/support/replaced_platform.h"

#include <string>

namespace vrl_test {

namespace {

using namespace Vorlane_v1_0;

platform::Button pressOk(char const*, char const*) { return platform::Button::kOk; }

// A real plug-in would load a second copy of the library into the program.
void* open(char const*, platform::SystemError& error) {
    static int module = 0;
    error = {};
    return &module;
}

void* find(void*, char const*, platform::SystemError& error) {
    error = {127, "no such symbol", platform::SystemError::Reason::kMissingSymbol};
    return nullptr;
}

}  // namespace

ReplacedPlatform& replacedPlatform() {
    static ReplacedPlatform calls{&pressOk, &open, &find};
    return calls;
}

}  // namespace vrl_test

namespace Vorlane_v1_0::platform {

Button showMessageBox(char const* text, char const* caption) {
    return vrl_test::replacedPlatform().showMessageBox(text, caption);
}
void* loadLibrary(char const* path, SystemError& error) {
    return vrl_test::replacedPlatform().loadLibrary(path, error);
}
void* findSymbol(void* module, char const* name, SystemError& error) {
    return vrl_test::replacedPlatform().findSymbol(module, name, error);
}
std::string moduleFile(void*) { return {}; }
std::string fileWith(void const*) { return {}; }

}  // namespace Vorlane_v1_0::platform
