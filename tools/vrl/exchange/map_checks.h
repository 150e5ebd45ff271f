#pragma once

#include <string>
#include <utility>

#include "exchange/name_map.h"

// What a map says and what can have no effect, or would lead nowhere: each is a Failure with its line.

namespace vrltool::exchange {

/// The instance and the name of an "instance,port" or an "instance,setting".
std::pair<std::string, Node> insidePlace(Node const& node);

/// Checks a rule, as it is given, by itself.
void checkRule(std::string const& path, Node const& given, ComponentRule const& rule);

/// Checks that all that composites name is known to the rules for their instances.
void checkComposites(NameMap const& map);

}  // namespace vrltool::exchange
