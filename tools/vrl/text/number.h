#pragma once

#include <complex>
#include <string>

namespace vrltool {

/// The shortest text that reads back as the same number; "nan", "inf" or "-inf" for what is none.
std::string numberText(double value);

/// The same for a complex number: "1+0.5I", and the real part alone if the imaginary part is 0.
std::string numberText(std::complex<double> const& value);

/// The number that a decimal text of JSON is, whatever the locale: infinite or 0 for what is beyond all numbers.
double numberFrom(std::string const& text);

}  // namespace vrltool
