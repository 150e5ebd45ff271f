#include "vrllib/plugins/loader_state.h"

namespace Vorlane_v1_0::detail {

LoaderState& loaderState() {
    static auto* const made = new LoaderState;
    return *made;
}

}  // namespace Vorlane_v1_0::detail
