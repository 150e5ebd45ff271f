#pragma once

#include <string>

#include "tests/support/kept_file.h"
#include "tests/tools/tool.h"
#include "validate/elf.h"

namespace vrl_test {

/// The path of a plug-in with a fault; see plugins/fault.h.
inline std::string faultyPlugin(std::string const& fault) {
    return VRL_BROKEN_PLUGINS "/lib_wn_" + fault + ".so.5.1.3";
}

/// What a kept file has in the place of a whole output; "@machine@" is the name of this one there.
inline std::string keptReport(std::string const& actual, std::string const& name) {
    std::string const machine = vrltool::validate::readElf(VRL_TOOL_PROGRAM).machine;
    return kept(actual, VRL_VALIDATE_EXPECTED "/" + name, machine, "@machine@");
}

}  // namespace vrl_test
