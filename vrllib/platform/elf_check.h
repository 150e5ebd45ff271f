#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace Vorlane_v1_0::platform {

class File;

/// What a look at a shared library showed before the system maps it.
struct ElfCheck {
    char const* damage = nullptr;      ///< why the system would fall over it; null if it would not
    std::vector<std::string> needed;   ///< the names of the libraries that it depends on
    std::vector<std::string> folders;  ///< where it says that they are, with $ORIGIN still in them
};

/// Checks a file of a given size. A file that is no library of this machine is not damaged: the system refuses it and
/// says why.
///
/// Everything that the system reads of a library while it maps it has to be in the file: the segments, the dynamic
/// table and the tables that it names. The section headers come last in a file, so one that was cut short, or whose end
/// was never written, shows there.
ElfCheck checkElf(File const& file, std::uint64_t size);

}  // namespace Vorlane_v1_0::platform
