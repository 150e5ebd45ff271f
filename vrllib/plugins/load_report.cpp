#include "vrllib/plugins/load_report.h"

#include <utility>

#include "vrllib/plugins/loader_state.h"

using namespace Vorlane_v1_0::detail;

namespace Vorlane_v1_0 {

LoadObserver::~LoadObserver() = default;
bool LoadObserver::mayLoad(std::string const&) { return true; }
void LoadObserver::beforeCall(std::string const&, std::string const&) {}
void LoadObserver::afterCall(std::string const&, std::string const&) {}
void LoadObserver::onLoad(LoadEvent const&) {}
bool LoadObserver::absorbs(LoadEvent const&) { return false; }

}  // namespace Vorlane_v1_0

Vorlane_v1_0::LoadObserver* vrlSetLoadObserver(Vorlane_v1_0::LoadObserver* observer) {
    return std::exchange(loaderState().observer, observer);
}

Vorlane_v1_0::LoadReport const& vrlLoadReport() { return loaderState().report; }

unsigned int vrlNeededPluginVersion() { return loaderState().requiredApiVersion; }
