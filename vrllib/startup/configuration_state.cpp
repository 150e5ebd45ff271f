#include "vrllib/startup/configuration_state.h"

namespace Vorlane_v1_0::detail {

ConfigurationState& configuration() {
    static auto* const made = new ConfigurationState;
    return *made;
}

}  // namespace Vorlane_v1_0::detail
