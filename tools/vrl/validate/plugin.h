#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "guard/thrown.h"
#include "host/targets.h"
#include "validate/check.h"
#include "vrllib/vrllib.h"

namespace vrltool::validate {

/// The keys of each target, sorted.
struct Keys {
    std::array<std::vector<std::string>, kTargetCount> of;

    std::vector<std::string> const& operator[](Target target) const { return of[target]; }
    bool empty() const;
    bool operator==(Keys const& other) const { return of == other.of; }
};

/// "1 foundry, 12 blocks"; "nothing" without any.
std::string keysText(Keys const& keys);

/// All keys that the factories have now.
Keys presentKeys();

/// Loads a plug-in as the library does: one load for each target. Returns the keys that it registered, those that
/// others had before included. What an entry point throws passes through.
Keys loadPlugin(std::string const& path, Report& report);

/// Loads the plug-in of a job. Nothing, and the check counts as not run, if an entry point throws.
std::optional<Keys> loadForCheck(Job const& job, Report& report);

/// What a call into the plug-in threw, as "throws 'text'"; empty if it returned.
template <class Call>
std::string throwsText(Call const& call) {
    std::string const thrown = thrownBy(call);
    return thrown.empty() ? thrown : "throws " + thrown;
}

/// Maps the file at once. Null with the loader's words in `error`.
void* mapPlugin(std::string const& path, std::string& error);

}  // namespace vrltool::validate
