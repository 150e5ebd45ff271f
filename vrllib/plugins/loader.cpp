#include "vrllib/plugins/loader.h"

#include <ostream>

#include "vrllib/core/fixed_text.h"
#include "vrllib/platform/platform.h"
#include "vrllib/plugins/load_steps.h"
#include "vrllib/plugins/loader_state.h"
#include "vrllib/plugins/observed_call.h"

using namespace Vorlane_v1_0;
using namespace Vorlane_v1_0::detail;

namespace {

template <class Function>
Function findFunction(void* module, char const* name) {
    platform::SystemError error;
    return reinterpret_cast<Function>(platform::findSymbol(module, name, error));
}

}  // namespace

VersionFunction Vorlane_v1_0::detail::versionFunction(void* module) {
    return findFunction<VersionFunction>(module, kVersionFunction);
}

void needsLibaryVersion(unsigned int major, unsigned int minor, unsigned int patch) {
    loaderState().requiredApiVersion = (major * 100 + minor) * 100 + patch;
}

bool checkLibraryVersion(void* module) {
    unsigned const required = loaderState().requiredApiVersion;
    if (required == 0) return true;
    VersionFunction const version = versionFunction(module);
    return version && version() >= required;
}

void soloader_setDllTag(char const* tag) {
    auto& target = loaderState().dllTag;
    std::string const text = fitted(tag, 3);
    for (std::size_t i = 0; i < sizeof target; ++i) target[i] = i < text.size() ? text[i] : '\0';
}

char const* soloader_getDllTag() { return loaderState().dllTag; }

void soload_addSo(void* module) { loaderState().loadedHandles.push_back(module); }

void soload_iter(std::list<void*>::iterator* begin, std::list<void*>::iterator* end) {
    auto& handles = loaderState().loadedHandles;
    if (begin) *begin = handles.begin();
    if (end) *end = handles.end();
}

// A called function may load libraries: they come at the end of the list, so that the walk reaches them, too.
void soloader_Call(char const* name) {
    std::string const function = name ? name : "";
    for (void* const module : loaderState().loadedHandles) {
        auto const call = findFunction<void (*)()>(module, function.c_str());
        if (!call) continue;
        observedCall(platform::moduleFile(module), function, [call] {
            call();
            return true;
        });
    }
}

void soloader_PostLoad() { soloader_Call("initLibraryPostLoad"); }

void InsertSuccessfullyLoadedDll(std::string file) { loaderState().loadedDlls.insert(std::move(file)); }

void InsertUnsuccessfullyLoadedDll(std::string file) { loaderState().failedDlls.insert(std::move(file)); }

std::ostream& GetSuccessfullyLoadedDlls(std::ostream& os) {
    for (auto const& file : loaderState().loadedDlls) os << file << '\n';
    return os;
}

std::ostream& GetUnsuccessfullyLoadedDlls(std::ostream& os) {
    auto const& loaded = loaderState().loadedDlls;
    for (auto const& file : loaderState().failedDlls)
        if (loaded.find(file) == loaded.end()) os << file << '\n';
    return os;
}
