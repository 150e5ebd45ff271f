#pragma once

#include <string>

#include "vrllib/vrllib.h"

// Parameters of SampleFab's objects, each in one line. Every one has a range, a description and a unit; the unit of a
// bare number is "1".

namespace samplefab {

struct Range {
    double min;
    double max;
};

struct CountRange {
    int min;
    int max;
};

void addNumber(vrl::Attributes& list, std::string const& name, double value, Range const& range,
               std::string const& descr, std::string const& units);

void addCount(vrl::Attributes& list, std::string const& name, int value, CountRange const& range,
              std::string const& descr);

/// A number that a host may tune by itself.
void addTunable(vrl::Attributes& list, std::string const& name, double value, Range const& range,
                std::string const& descr, std::string const& units);

}  // namespace samplefab
