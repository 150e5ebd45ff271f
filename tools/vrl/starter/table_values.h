#pragma once

#include <string>
#include <vector>

#include "values/node.h"

namespace vrltool::starter {

/// The types of parameters that a table can hold.
std::vector<std::string> const& valueTypes();

/// Whether parameters of that type have a unit and may have a range.
bool isNumberType(std::string const& type);

/// A number; of a complex one the real part, by which the library compares them.
double numberOf(values::Node const& value);

/// Why a value is none of that type, as the end of a sentence; empty if it is one. Bounds may be infinite.
std::string whyNoValue(values::Node const& value, std::string const& type, bool bound);

/// A value in C++: "20.0", "std::numeric_limits<double>::infinity()", "{1.0, 0.5}", "true", a string in quotes.
std::string cppValue(values::Node const& value, std::string const& type);

/// A string as a literal of C++, whatever is in it.
std::string cppString(std::string const& text);

/// Hands out names for classes and files: "sfBend" becomes "SfBend", and equal names get a number.
class CppNames {
public:
    /// The name of a class, with that word at its end. No two are the same in their letters, so that files may have
    /// their names wherever capitals do not count.
    std::string className(std::string const& name, std::string const& word);

private:
    std::vector<std::string> taken;
};

/// "SfBend" as "sf_bend", the name of a file.
std::string fileName(std::string const& className);

}  // namespace vrltool::starter
