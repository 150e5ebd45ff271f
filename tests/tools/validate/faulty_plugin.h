#pragma once

#include <string>

namespace vrl_test {

/// The path of a plug-in with a fault; see plugins/fault.h.
inline std::string faultyPlugin(std::string const& fault) {
    return VRL_BROKEN_PLUGINS "/lib_wn_" + fault + ".so.5.1.3";
}

}  // namespace vrl_test
