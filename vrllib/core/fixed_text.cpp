#include "vrllib/core/fixed_text.h"

#include <algorithm>

namespace Vorlane_v1_0::detail {

std::string fitted(char const* text, std::size_t arraySize) {
    return text ? std::string(text, std::find(text, text + arraySize - 1, '\0')) : std::string();
}

std::string fitted(std::string const& text, std::size_t arraySize) { return text.substr(0, arraySize - 1); }

}  // namespace Vorlane_v1_0::detail
