#include "vrllib/attributes/value_range.h"

#include "vrllib/core/messages.h"

namespace Vorlane_v1_0::detail {

template <>
bool isInside<int>(int const& value, int const& minValue, int const& maxValue) {
    return !(minValue > value) && !(value > maxValue);
}
template <>
bool isInside<double>(double const& value, double const& minValue, double const& maxValue) {
    return !(minValue > value) && !(value > maxValue);
}
template <>
bool isInside<std::complex<double>>(std::complex<double> const& value, std::complex<double> const& minValue,
                                    std::complex<double> const& maxValue) {
    return isInside<double>(value.real(), minValue.real(), maxValue.real());
}

std::ostream& messageStream() { return vrlCout(); }

}  // namespace Vorlane_v1_0::detail

#define VRL_RANGE_INSTANCES_(T)                                                                                        \
    template class ValueRange<T, Vorlane_v1_0::Value<T>>;                                                              \
    template class Vorlane_v1_0::Serialisable<AutoValueRange<T, Vorlane_v1_0::Value<T>>>;                              \
    template class AutoValueRange<T, Vorlane_v1_0::Value<T>>;
VRL_RANGE_INSTANCES_(int)
VRL_RANGE_INSTANCES_(double)
VRL_RANGE_INSTANCES_(std::complex<double>)
#undef VRL_RANGE_INSTANCES_
