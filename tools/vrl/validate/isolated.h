#pragma once

#include <functional>
#include <string>
#include <vector>

namespace vrltool::validate {

/// What came of work in a copy of this process.
struct IsolatedResult {
    std::string trouble;               ///< how the process ended, or what was thrown; empty if all went well
    std::vector<std::string> strings;  ///< what the work returned
};

/// Works in a copy of this process: what is loaded there is not loaded here. The strings hold no zero bytes. After that
/// many seconds the copy is ended.
IsolatedResult workIsolated(std::function<std::vector<std::string>()> const& work, unsigned seconds);

}  // namespace vrltool::validate
