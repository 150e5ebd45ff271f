#include "vrllib/core/io.h"

#include <iostream>

namespace Vorlane_v1_0 {

bool detail::notAvailable(std::ostream* log) {
    (log ? *log : std::cerr) << "No Boost\n";
    return false;
}

template class IO<Attribute, void, void>;
template class IO<Attributes, void, void>;
template class IO<BB, void, void>;
template class IO<Foundry, void, void>;
template class IO<Netlist, void, void>;

}  // namespace Vorlane_v1_0
