#include "vrllib/attributes/value_array.h"

std::ostream& Vorlane_v1_0::detail::writeArrayText(std::ostream& os) { return os << "/*--- array of type T */\n"; }

#define VRL_ARRAY_INSTANCES_(T)                                                                                        \
    template struct Vorlane_v1_0::detail::ArrayData<T>;                                                                \
    template class ValueArray<T>;
VRL_FOR_ARRAY_TYPES(VRL_ARRAY_INSTANCES_)
#undef VRL_ARRAY_INSTANCES_
