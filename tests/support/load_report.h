#pragma once

#include <iostream>
#include <list>

#include "vrllib/vrllib.h"

namespace vrl_test {

/// Writes the messages so far, and what the loader noted.
inline void report() {
    std::list<void*>::iterator begin;
    std::list<void*>::iterator end;
    soload_iter(&begin, &end);
    std::cout << vrlGetCoutMsg() << "handles: " << std::distance(begin, end) << "\nloaded:\n";
    GetSuccessfullyLoadedDlls(std::cout) << "failed:\n";
    GetUnsuccessfullyLoadedDlls(std::cout);
}

}  // namespace vrl_test
