#include <windows.h>

#include "vrllib/platform/platform.h"

namespace Vorlane_v1_0::platform {

Button showMessageBox(char const* text, char const* caption) {
    int const pressed = ::MessageBoxA(nullptr, text ? text : "", caption ? caption : "", MB_OKCANCEL);
    return pressed == IDCANCEL ? Button::kCancel : Button::kOk;
}

}  // namespace Vorlane_v1_0::platform
