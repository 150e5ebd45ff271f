#include "guard/hidden_output.h"

#include <iostream>

namespace vrltool {

HiddenOutput::HiddenOutput() : out(std::cout.rdbuf(&dropped)), err(std::cerr.rdbuf(&dropped)) {}

HiddenOutput::~HiddenOutput() {
    std::cout.rdbuf(out);
    std::cerr.rdbuf(err);
}

}  // namespace vrltool
