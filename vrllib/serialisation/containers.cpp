#include "vrllib/serialisation/containers.h"

namespace Vorlane_v1_0 {

namespace detail {

bool openContainer(DeSerialiserBase* d, char const* shape, unsigned int& count) {
    std::string type;
    int version = 0;
    d->beginCompAttribute(&type, &version, nullptr);
    if (type != shape || version != 1) return false;
    count = 0;
    d->readNumberAttributes(count);
    return true;
}

}  // namespace detail

template class SerialisableMap<std::string, std::string>;
template class SerialisableMap<std::string, unsigned int>;
template class SerialisableMap<std::pair<std::string, std::string>, unsigned int>;
template class SerialisableVec<unsigned int>;

}  // namespace Vorlane_v1_0
