#pragma once

// What is wrong with a plug-in of these tests. Each is built of the same sources with another fault.
enum class Fault {
    kNone,
    // while it is loaded and entered
    kCrashesInConstructor,
    kHangs,
    kExits,
    kThrows,
    kPrints,
    kTalks,
    kBringsNothing,
    kEmptyKey,
    kVersionZero,
    kVersionFuture,
    kPostLoadThrows,
    kPostLoadRegisters,
    kCrashesAtEnd,
    kChangesEnvironment,
    kNeedsToBeFirst,
    // what it registers
    kNullFoundryCrashes,
    kNullFoundryThrows,
    kForgetsFoundry,
    kFlowThrows,
    kOtherName,
    kAnySection,
    kPortTwice,
    kParameterTwice,
    kUndescribed,
    kOutOfRange,
    kBoundsSwapped,
    kBoundsNoNumbers,
    kBoundsInfinite,
    kTextForm,
    kCopyThrows,
    kRefersToOwner,
    kSavedType,
    kNotSaved,
    kSavedDifferently,
    kRandomBytes,
    kViewNull,
    kViewOtherName,
    kViewForgetsObject
};

/// The fault of this plug-in.
extern Fault const kFault;
