#include "guard/hidden_output.h"

#include <iostream>

namespace vrltool {

HiddenOutput::HiddenOutput() : out(std::cout.rdbuf(dropped.rdbuf())), err(std::cerr.rdbuf(dropped.rdbuf())) {}

HiddenOutput::~HiddenOutput() {
    std::cout.rdbuf(out);
    std::cerr.rdbuf(err);
}

}  // namespace vrltool
