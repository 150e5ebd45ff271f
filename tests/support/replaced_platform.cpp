#include "tests/support/replaced_platform.h"

#include <string>

#include <dlfcn.h>

namespace vrl_test {

namespace {

using namespace Vorlane_v1_0;

platform::Button pressOk(char const*, char const*) { return platform::Button::kOk; }

void* open(char const* path, platform::SystemError& error) {
    error = {};
    return ::dlopen(path, RTLD_NOW | RTLD_LOCAL);
}

void* find(void* module, char const* name, platform::SystemError& error) {
    error = {};
    return ::dlsym(module, name);
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
