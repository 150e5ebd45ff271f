#include "vrllib/attributes/length_angle.h"

namespace {

double micrometre(double x) { return x; }
double millimetre(double x) { return x * 1000.0; }
double centimetre(double x) { return x * 10000.0; }
double metre(double x) { return x * 1000000.0; }
double inch(double x) { return x * 25400.0; }
double radian(double x) { return x; }
double degree(double x) { return x / 180.0 * 3.141592653589793; }

}  // namespace

#define VRL_QUANTITY_(Class, Base, toBaseUnit)                                                                         \
    Class::Class(std::string const& name, std::string const& descr, std::string const& units)                          \
        : Base(name, 0.0, 0.0, 0.0, descr, units) {}                                                                   \
    Class::Class(std::string const& name, double const& value, double const& min, double max,                          \
                 std::string const& descr, std::string const& units)                                                   \
        : Base(name, toBaseUnit(value), toBaseUnit(min), toBaseUnit(max), descr, units) {}                             \
    Class::Class(Class const& other) = default;                                                                        \
    Class& Class::operator=(Class const& other) = default;                                                             \
    Class::~Class() = default;

VRL_QUANTITY_(vrlLength, Vorlane_v1_0::detail::RangedDouble, micrometre)
VRL_QUANTITY_(vrlLength_mm, vrlLength, millimetre)
VRL_QUANTITY_(vrlLength_cm, vrlLength, centimetre)
VRL_QUANTITY_(vrlLength_m, vrlLength, metre)
VRL_QUANTITY_(vrlLength_inch, vrlLength, inch)
VRL_QUANTITY_(vrlAngle, Vorlane_v1_0::detail::RangedDouble, radian)
VRL_QUANTITY_(vrlAngle_deg, vrlAngle, degree)
#undef VRL_QUANTITY_
