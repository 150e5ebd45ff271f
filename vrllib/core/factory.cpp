#include "vrllib/core/factory.h"

#include "vrllib/core/thrown_text.h"

namespace Vorlane_v1_0::detail {

void throwEmptyKey() {
    static char text[] = "Sorry - use a proper key";
    throwText(text);
}

void keepForever(void const* object) {
    static auto* const kept = new std::vector<void const*>;  // never freed, so that leak checkers see what it keeps
    kept->push_back(object);
}

}  // namespace Vorlane_v1_0::detail
