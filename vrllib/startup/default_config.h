#pragma once

namespace Vorlane_v1_0::detail {

/// What is written into the configuration file that is made when there is none; the same on every system.
extern char const* const kDefaultConfigText;

}  // namespace Vorlane_v1_0::detail
