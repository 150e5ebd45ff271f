#include <iostream>

#include "tests/support/load_report.h"
#include "tests/support/load_texts.h"
#include "tests/support/replaced_platform.h"
#include "tests/support/scenario.h"

namespace {

using namespace Vorlane_v1_0;
using vrl_test::pluginFile;
using vrl_test::report;
using Reason = platform::SystemError::Reason;

void print(bool answer) { std::cout << (answer ? "true" : "false") << "\n"; }

platform::SystemError failure;

void* failToLoad(char const*, platform::SystemError& error) {
    error = failure;
    return nullptr;
}

void* failToFind(void*, char const*, platform::SystemError& error) {
    error = failure;
    return nullptr;
}

void loadFailing(platform::SystemError const& reason) {
    failure = reason;
    print(FactoryLoader<BB>::loadLibs(pluginFile("onlyFoundry").c_str(), false));
    print(FactoryLoader<BB>::loadLibs(pluginFile("onlyFoundry").c_str(), true));
}

}  // namespace

VRL_SCENARIO(UnmappedWithoutAReason) {
    vrl_test::replacedPlatform().loadLibrary = failToLoad;
    loadFailing({});
    report();
}

VRL_SCENARIO(UnmappedWithAReason) {
    vrl_test::replacedPlatform().loadLibrary = failToLoad;
    loadFailing({193, "%1 is no application.\r\n"});
    report();
}

VRL_SCENARIO(MissingEntryWithoutACode) {
    vrl_test::replacedPlatform().findSymbol = failToFind;
    loadFailing({0, ""});
    report();
}

VRL_SCENARIO(MissingEntryWithOtherText) {
    vrl_test::replacedPlatform().findSymbol = failToFind;
    loadFailing({5, "Access is denied.\r\n"});
    report();
}

VRL_SCENARIO(MissingEntryWithTheUsualText) {
    vrl_test::replacedPlatform().findSymbol = failToFind;
    loadFailing({1, "The specified procedure could not be found.\r\n"});
    loadFailing({1, "Procedure not found\n"});
    loadFailing({127, "In other words", Reason::kMissingSymbol});
    report();
}

VRL_SCENARIO(MissingEntryWithNearlyTheUsualText) {
    vrl_test::replacedPlatform().findSymbol = failToFind;
    loadFailing({1, "Procedure not found"});
    report();
}
