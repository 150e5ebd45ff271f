#include <clocale>
#include <cstdlib>
#include <iostream>

#include <unistd.h>

#include "composite.h"
#include "kinds.h"

namespace {

/// Static objects that do harm, early or late.
struct AtStart {
    AtStart() {
        if (kFault == Fault::kCrashesInConstructor) std::abort();
    }
} const atStart;

struct AtEnd {
    ~AtEnd() {
        if (kFault == Fault::kCrashesAtEnd) std::abort();
    }
} const atEnd;

using BlockFactory = FactoryArg<std::string, vrl::BB, vrl::Foundry const*>;

/// What a fault of the entry points does.
void misbehave(BlockFactory& factory) {
    if (kFault == Fault::kHangs)
        for (;;) pause();
    if (kFault == Fault::kExits) std::exit(0);
    if (kFault == Fault::kThrows) throw "no licence";
    if (kFault == Fault::kPrints) std::cout << "loaded\nand more\n";
    if (kFault == Fault::kTalks) vrlPuts("ready");
    if (kFault == Fault::kChangesEnvironment) setenv("VRL_TEST_CHANGED", "yes", 1);
    if (kFault == Fault::kOneKeyTwice) factory.Register<broken::Pair>("brBlock");
    if (broken::hasComposite()) factory.Register<broken::Pair>("brPair");
    if (kFault == Fault::kEmptyKey) factory.Register<broken::Block>("");
}

}  // namespace

VRL_PLUGIN_EXPORT unsigned getAPIversion() {
    return kFault == Fault::kVersionZero ? 0 : kFault == Fault::kVersionFuture ? 990101 : 20111;
}

VRL_PLUGIN_EXPORT void initLibraryAttribute(FactoryNoArg<std::string, vrl::Attribute>* factory) {
    if (kFault != Fault::kBringsNothing) factory->Register<broken::Reach>("brReach");
}

VRL_PLUGIN_EXPORT void initLibraryFoundry(FactoryNoArg<std::string, vrl::Foundry>* factory) {
    if (kFault != Fault::kBringsNothing) factory->Register<broken::Fab>("BrokenFab");
}

VRL_PLUGIN_EXPORT void initLibraryBB(BlockFactory* factory) {
    misbehave(*factory);
    bool const late = kFault == Fault::kNeedsToBeFirst && factory->hasData();
    if (kFault != Fault::kBringsNothing && !late) factory->Register<broken::Block>("brBlock");
}

VRL_PLUGIN_EXPORT void initLibraryBBView(FactoryArg<std::string, vrl::View, vrl::BB*>* factory) {
    if (kFault != Fault::kBringsNothing) factory->Register<broken::BlockView>("Broken/View");
}

VRL_PLUGIN_EXPORT void initLibraryPostLoad() {
    static unsigned calls = 0;
    ++calls;
    if (kFault == Fault::kPostLoadThrows && calls > 1) throw std::string("called again");
    if (kFault == Fault::kPostLoadRegisters) FactoryLoader<vrl::BB>::factory().Register<broken::Block>("brLate");
}
