#pragma once

#include <string>

#include "vrllib/plugins/loader_state.h"

namespace Vorlane_v1_0::detail {

/// Runs code of a library between the two calls of the observer, and returns its result. What that code loads itself is
/// not asked for by a line of the configuration.
template <class Code>
auto observedCall(std::string const& path, std::string const& function, Code const& code) {
    LoadLineScope const none;
    if (LoadObserver* const observer = loaderState().observer) observer->beforeCall(path, function);
    auto result = code();
    if (LoadObserver* const observer = loaderState().observer) observer->afterCall(path, function);
    return result;
}

}  // namespace Vorlane_v1_0::detail
