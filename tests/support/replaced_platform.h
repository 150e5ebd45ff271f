#pragma once

#include "vrllib/platform/platform.h"

namespace vrl_test {

/// The calls of the operating system that a scenario of the program replaced_scenarios chooses. That program is made
/// of the objects of the library itself, with these in place of the library's own calls.
struct ReplacedPlatform {
    Vorlane_v1_0::platform::Button (*showMessageBox)(char const* text, char const* caption);
    void* (*loadLibrary)(char const* path, Vorlane_v1_0::platform::SystemError& error);
    void* (*findSymbol)(void* module, char const* name, Vorlane_v1_0::platform::SystemError& error);
};

/// They start as calls that press OK, and that map any file as a library without symbols.
ReplacedPlatform& replacedPlatform();

}  // namespace vrl_test
