#pragma once

#include <string>

namespace vrltool::page {

/// The page with @title@, @sheet@, @box@, @picture@ and @data@ at the places of what each design has of its own.
std::string const& templateText();

}  // namespace vrltool::page
