#include "vrllib/serialisation/persistence.h"

#include <iostream>

namespace Vorlane_v1_0::detail {

void registerOnce(SerrDoneFlag& done, void (*fill)(void*), void* object) {
    if (done) return;
    try {
        fill(object);
        done = true;
    } catch (char const* text) {  // the register keeps what was entered until then; the next attempt reports again
        std::cerr << text;
    }
}

}  // namespace Vorlane_v1_0::detail
