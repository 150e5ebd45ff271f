#include <dlfcn.h>

#include <string>

#include "vrllib/vrllib.h"

// A plug-in of one kind, which has the name of the file: each copy of the file is another plug-in.

namespace {

std::string const& ownFile() {
    static std::string const file = [] {
        Dl_info own{};
        dladdr(reinterpret_cast<void const*>(&ownFile), &own);
        return std::string(own.dli_fname);
    }();
    return file;
}

class Straight final : public vrl::BB {
public:
    explicit Straight(vrl::Foundry const* foundry) : BB(foundry) { pin(1, 1); }
    std::string getName() const override { return ownFile(); }
};

}  // namespace

VRL_PLUGIN_API_VERSION(2, 1, 11);

VRL_PLUGIN_EXPORT void initLibraryBB(FactoryArg<std::string, vrl::BB, vrl::Foundry const*>* factory) {
    factory->Register<Straight>(ownFile());
}
