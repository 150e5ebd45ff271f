#pragma once

#include <sstream>
#include <streambuf>

namespace vrltool {

/// Drops what is written to std::cout and std::cerr while it lives: the library and plug-ins write there while they are
/// asked.
class HiddenOutput {
public:
    HiddenOutput();
    HiddenOutput(HiddenOutput const&) = delete;
    HiddenOutput& operator=(HiddenOutput const&) = delete;
    ~HiddenOutput();

private:
    std::ostringstream dropped;
    std::streambuf* out;
    std::streambuf* err;
};

}  // namespace vrltool
