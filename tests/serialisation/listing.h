#pragma once

#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "vrllib/serialisation/ascii_stream.h"

namespace sample {

/// The listing of an object on a stream that `prepare` has set up.
template <class T, class Prepare>
std::string listingOf(T& object, Prepare prepare) {
    std::ostringstream os;
    prepare(os);
    Vorlane_v1_0::AsciiStreamSerialiser listing(os);
    EXPECT_TRUE(object.write(&listing));
    return os.str();
}
template <class T>
std::string listingOf(T& object) {
    return listingOf(object, [](std::ostream&) {});
}

}  // namespace sample
