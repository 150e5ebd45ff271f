#include "vrllib/serialisation/persistence.h"

#include <iostream>

#include "vrllib/core/thrown_text.h"

namespace Vorlane_v1_0::detail {

void registerOnce(SerrDoneFlag& done, SerRegister& reg, SerLayout const* layout, void (*fill)(void*), void* object) {
    if (done) return;
    try {
        if (!layout || !reg.bind(*layout, object)) fill(object);
        done = true;
    } catch (char const* text) {  // the register keeps what was entered until then; the next attempt reports again
        std::cerr << text;
    }
}

void throwNoSuchMember() {
    static char text[] = "SerFormat - no member has that name\n";
    throwText(text);
}

}  // namespace Vorlane_v1_0::detail
