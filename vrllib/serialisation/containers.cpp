#include "vrllib/serialisation/containers.h"

namespace Vorlane_v1_0 {

template class SerialisableMap<std::string, std::string>;
template class SerialisableMap<std::string, unsigned int>;
template class SerialisableMap<std::pair<std::string, std::string>, unsigned int>;
template class SerialisableVec<unsigned int>;

}  // namespace Vorlane_v1_0
