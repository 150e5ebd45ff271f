#pragma once

#include <complex>
#include <limits>

#include "vrllib/vrllib.h"

namespace PluginName_plugin {

// Parameters with a range: name, value, minimum, maximum, description, unit.
using Count = ValueRange<int, vrl::Value<int>>;
using Number = ValueRange<double, vrl::Value<double>>;
using ComplexNumber = ValueRange<std::complex<double>, vrl::Value<std::complex<double>>>;

// The same with a flag, whether hosts may change the value by themselves.
using TunableCount = AutoValueRange<int, vrl::Value<int>>;
using TunableNumber = AutoValueRange<double, vrl::Value<double>>;
using TunableComplexNumber = AutoValueRange<std::complex<double>, vrl::Value<std::complex<double>>>;

/// The parameter, with its flag set.
template <class T>
T* tunable(bool on, T* parameter) {
    parameter->setAutoChangeable(on);
    return parameter;
}

}  // namespace PluginName_plugin
