#include "vrllib/platform/platform.h"

namespace Vorlane_v1_0::platform {

ReplaceableCalls& calls() {
    static ReplaceableCalls table{&showMessageBox, &loadLibrary, &findSymbol};
    return table;
}

}  // namespace Vorlane_v1_0::platform
