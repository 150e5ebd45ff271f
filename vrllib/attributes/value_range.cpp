#include "vrllib/attributes/value_range.h"

#include "vrllib/core/messages.h"

namespace Vorlane_v1_0::detail {

namespace {

template <class T>
bool inside(T const& value, T const& minValue, T const& maxValue) {
    return !(minValue > value) && !(value > maxValue);
}
bool inside(std::complex<double> const& value, std::complex<double> const& minValue,
            std::complex<double> const& maxValue) {
    return inside(value.real(), minValue.real(), maxValue.real());
}

}  // namespace

#define VRL_IS_INSIDE_(T)                                                                                              \
    template <>                                                                                                        \
    bool isInside<T>(T const& value, T const& minValue, T const& maxValue) {                                           \
        return inside(value, minValue, maxValue);                                                                      \
    }
VRL_FOR_RANGED_TYPES(VRL_IS_INSIDE_)
#undef VRL_IS_INSIDE_

std::ostream& messageStream() { return vrlCout(); }

}  // namespace Vorlane_v1_0::detail

#define VRL_RANGE_INSTANCES_(T)                                                                                        \
    template class ValueRange<T, Vorlane_v1_0::Value<T>>;                                                              \
    template class Vorlane_v1_0::Serialisable<AutoValueRange<T, Vorlane_v1_0::Value<T>>>;                              \
    template class AutoValueRange<T, Vorlane_v1_0::Value<T>>;
VRL_FOR_RANGED_TYPES(VRL_RANGE_INSTANCES_)
#undef VRL_RANGE_INSTANCES_
