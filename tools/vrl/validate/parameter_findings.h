#pragma once

#include <string>

#include "validate/check.h"
#include "vrllib/vrllib.h"

namespace vrltool::validate {

/// @name What is wrong with the parameters of one object, reported parameter by parameter.
/// @{
void findWrongNames(std::string const& thing, vrl::Attributes& list, Report& report);
void findUndescribed(std::string const& thing, vrl::Attributes& list, Report& report);
void findWrongDefaults(std::string const& thing, vrl::Attributes& list, Report& report);
/// @}

}  // namespace vrltool::validate
