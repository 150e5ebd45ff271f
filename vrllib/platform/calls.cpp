#include "vrllib/platform/platform.h"

namespace Vorlane_v1_0::platform {

ReplaceableCalls& calls() {
    static ReplaceableCalls table{&showMessageBox, &loadLibrary, &findSymbol, &configFilePlaces};
    return table;
}

}  // namespace Vorlane_v1_0::platform
