#pragma once

#include <map>
#include <string>

namespace vrl_test {

/// The saved form of one object of every persistent class that a file can hold, by a name for each; some of them of
/// kinds that no plug-in has.
std::map<std::string, std::string> const& savedObjects();

}  // namespace vrl_test
