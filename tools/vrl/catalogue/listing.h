#pragma once

#include <optional>
#include <string>
#include <vector>

#include "text/failure.h"
#include "vrllib/vrllib.h"

namespace vrltool::catalogue {

/// The words that can be listed: "foundries", "blocks", ...
std::vector<std::string> listWords();

std::vector<std::string> domainNames();
/// The domain of a name, whatever its capitals.
std::optional<vrl::EnumList::Domain> domainOf(std::string const& name);

/// Lists the keys of one word on standard output; blocks of one domain only, if there is one. The library has to be
/// started. A kind that cannot be made is reported, and is a finding.
Outcome listKinds(std::string const& word, std::optional<vrl::EnumList::Domain> domain, bool json);

}  // namespace vrltool::catalogue
