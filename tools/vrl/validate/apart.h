#pragma once

#include <functional>
#include <string>
#include <vector>

namespace vrltool::validate {

/// What work in a process of its own came to.
struct Apart {
    std::string trouble;             ///< how the process ended, or what was thrown; empty if all went well
    std::vector<std::string> texts;  ///< what the work gave
};

/// Works in a copy of this process, which ends with the work: what is loaded there is not loaded here. Texts hold no
/// zero bytes. It is ended after that many seconds, unless they are 0.
Apart workApart(std::function<std::vector<std::string>()> const& work, unsigned seconds = 0);

}  // namespace vrltool::validate
