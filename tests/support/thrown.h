#pragma once

#include <string>

namespace vrl_test {

/// The text that a call throws as `char*`.
template <class Call>
std::string thrownText(Call call) {
    try {
        call();
    } catch (char* text) {
        return text;
    }
    return "(nothing was thrown)";
}

/// The `std::string` that a call throws.
template <class Call>
std::string thrownString(Call call) {
    try {
        call();
    } catch (std::string const& text) {
        return text;
    }
    return "(nothing was thrown)";
}

}  // namespace vrl_test
