#pragma once

#include <string>

#include "guard/foreign_work.h"
#include "guard/hidden_output.h"
#include "text/failure.h"

namespace vrltool {

/// What the exception that is being handled says; of one without a message, which only plug-ins throw: "a plug-in threw
/// a value of type int".
std::string thrownMessage();

/// The same for the end of a sentence: the first line of a message, in quotes, or "a value of type int".
std::string thrownText();

/// Calls into a plug-in. Returns what it threw, as thrownText, or an empty string if it returned.
template <class Call>
std::string thrownBy(Call const& call) {
    try {
        call();
    } catch (...) {  // whatever it is, it must not end the work on other things
        return thrownText();
    }
    return {};
}

/// The same, without what is printed meanwhile.
template <class Call>
std::string quietlyThrownBy(Call const& call) {
    HiddenOutput const hidden;
    return thrownBy(call);
}

/// Calls into a plug-in that is needed for what follows. `doing` is reported should it crash; what it throws becomes
/// the Failure that `failureOf` makes of thrownText. A Failure, which only this program throws, passes through.
template <class Call, class FailureOf>
auto callPlugin(std::string const& doing, Call const& call, FailureOf const& failureOf) {
    ForeignWork const work(doing);
    try {
        return call();
    } catch (Failure const&) {
        throw;
    } catch (...) {
        throw failureOf(thrownText());
    }
}

}  // namespace vrltool
