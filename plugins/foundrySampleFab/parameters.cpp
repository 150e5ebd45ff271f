#include "parameters.h"

namespace samplefab {

void addNumber(vrl::Attributes& list, std::string const& name, double value, Range const& range,
               std::string const& descr, std::string const& units) {
    list.add(new ValueRange<double, vrl::Value<double>>(name, value, range.min, range.max, descr, units));
}

void addCount(vrl::Attributes& list, std::string const& name, int value, CountRange const& range,
              std::string const& descr) {
    list.add(new ValueRange<int, vrl::Value<int>>(name, value, range.min, range.max, descr, "1"));
}

void addTunable(vrl::Attributes& list, std::string const& name, double value, Range const& range,
                std::string const& descr, std::string const& units) {
    auto* const number =
        new AutoValueRange<double, vrl::Value<double>>(name, value, range.min, range.max, descr, units);
    number->setAutoChangeable(true);
    list.add(number);
}

}  // namespace samplefab
