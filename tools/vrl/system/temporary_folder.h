#pragma once

#include <string>

#include "system/large_files.h"

namespace vrltool {

/// A folder of its own for files on their way, removed with all in it at the end. A Failure if none can be made.
class TemporaryFolder {
public:
    TemporaryFolder();
    TemporaryFolder(TemporaryFolder const&) = delete;
    TemporaryFolder& operator=(TemporaryFolder const&) = delete;
    ~TemporaryFolder();

    std::string const& path() const { return folder; }
    std::string operator/(std::string const& name) const { return folder + "/" + name; }
    /// The bytes of a file in it; empty if there is none.
    std::string read(std::string const& name) const;

private:
    LargeFilesFail limit;  // so that it is removed
    std::string folder;
};

}  // namespace vrltool
