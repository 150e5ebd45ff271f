#pragma once

#include <string>

#include "vrllib/attributes/value_range.h"

// Lengths and angles: ranged doubles whose stored numbers are in the base unit, micrometres or radians. The classes
// with a unit in their name convert what the constructor is given, and nothing else: a number that is set later is
// taken in the base unit. The unit text is the caller's. Without numbers, the value and both bounds are 0, so that 0 is
// the only value in range. That the upper bound alone is passed by value belongs to the interface.

#define VRL_QUANTITY_(Class, Base)                                                                                     \
    class VRL_API Class : public Base {                                                                                \
    public:                                                                                                            \
        /** The value and both bounds are 0. */                                                                        \
        explicit Class(std::string const& name, std::string const& descr = "", std::string const& units = "");         \
        /** Converts the three numbers to the base unit and stores them. */                                            \
        Class(std::string const& name, double const& value, double const& min, double max,                             \
              std::string const& descr = "", std::string const& units = "");                                           \
        /** Copies everything; nothing is converted. */                                                                \
        Class(Class const& other);                                                                                     \
        /** As the copy. */                                                                                            \
        Class& operator=(Class const& other);                                                                          \
        ~Class() override;                                                                                             \
    };

namespace Vorlane_v1_0::detail {

using RangedDouble = ValueRange<double, Value<double>>;

}  // namespace Vorlane_v1_0::detail

/// A length; the constructor's numbers are micrometres.
VRL_QUANTITY_(vrlLength, Vorlane_v1_0::detail::RangedDouble)
/// Millimetres, times 1000.
VRL_QUANTITY_(vrlLength_mm, vrlLength)
/// Centimetres, times 10000.
VRL_QUANTITY_(vrlLength_cm, vrlLength)
/// Metres, times 1000000.
VRL_QUANTITY_(vrlLength_m, vrlLength)
/// Inches, times 25400.
VRL_QUANTITY_(vrlLength_inch, vrlLength)
/// An angle; the constructor's numbers are radians.
VRL_QUANTITY_(vrlAngle, Vorlane_v1_0::detail::RangedDouble)
/// Degrees, divided by 180, then times pi.
VRL_QUANTITY_(vrlAngle_deg, vrlAngle)

#undef VRL_QUANTITY_
