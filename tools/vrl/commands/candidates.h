#pragma once

#include <functional>
#include <string>
#include <vector>

namespace vrltool {

/// Makes `source` the source of the words of a type name of the grammar, such as the ids of "RULE". An option that
/// carries its choices needs none.
void registerCandidates(std::string const& type, std::function<std::vector<std::string>()> source);

/// What the shell asks for.
struct CandidateRequest {
    std::string type;                ///< of what is being written: "KEY", "PARAMETER", ...
    std::string begun;               ///< as far as it is written
    std::vector<std::string> words;  ///< the other words of the command line
};

/// What may be written there, sorted. The library is started if plug-ins have to be asked, with the configuration that
/// the words name. Throws what reading throws.
std::vector<std::string> candidatesFor(CandidateRequest const& request);

}  // namespace vrltool
