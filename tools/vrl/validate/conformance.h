#pragma once

#include <string>
#include <vector>

#include "validate/check.h"

namespace vrltool::validate {

enum class Verdict { kPass, kFail, kNotRun };

/// What came of one check of one plug-in.
struct CheckResult {
    Check const* check = nullptr;
    Verdict verdict = Verdict::kPass;
    Severity severity = Severity::kError;  ///< that of the check; of a process that ended too early always kError
    std::string note;                      ///< what a check that passed has to say, or why it was not run
    std::vector<PluginFinding> findings;
    bool hindered = false;  ///< it was not run since another one failed, and not since it does not apply
    std::string endedAt{};  ///< the thing with which its process ended too early; empty if it did not, or with none
};

/// What came of all checks of one plug-in.
struct Conformance {
    std::string path;  ///< as on the command line
    std::vector<CheckResult> results;

    std::size_t count(Verdict verdict) const;
    /// The number of checks of that severity that failed.
    std::size_t failures(Severity severity) const;
    /// Whether a check of severity error failed, even one that is not reported but hinders one that is.
    bool failed() const;
};

/// Which checks are to run, and how.
struct Plan {
    std::vector<std::string> plugins;
    std::string config;                ///< a configuration whose libraries count as other plug-ins
    std::vector<Check const*> checks;  ///< in their order
    std::vector<Check const*> needed;  ///< run as well, and reported only where they hinder one of these
    unsigned seconds = 10;             ///< the time of each
};

/// Runs the checks, each in a process of its own.
std::vector<Conformance> checkPlugins(Plan const& plan);

}  // namespace vrltool::validate
