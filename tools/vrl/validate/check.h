#pragma once

#include <string>
#include <vector>

#include "text/finding.h"
#include "validate/report.h"

namespace vrltool::validate {

/// What a child process is to do: one check of one plug-in.
struct Job {
    std::string check;                ///< its id
    std::string config;               ///< a configuration whose libraries count as others; empty for none
    std::string plugin;               ///< an absolute path
    std::vector<std::string> others;  ///< absolute paths of other plug-ins
    unsigned seconds = 10;            ///< the time that it may take
};

/// Something that is wrong with a plug-in.
struct PluginFinding : Finding {
    std::string thing;  ///< "block 'sfBend'"; empty for the plug-in itself
};

/// One check of plug-ins.
struct Check {
    char const* id;
    Severity severity;
    char const* title;               ///< what is so if it passes
    char const* hint;                ///< what to do if it does not, unless the finding knows better
    std::vector<std::string> needs;  ///< the checks without which it cannot work
    void (*run)(Job const& job, Report& report);
};

/// All checks, in the order in which they run.
std::vector<Check> const& allChecks();

/// The check of that id; a Failure names near ones.
Check const& findCheck(std::string const& id);

bool contains(std::vector<Check const*> const& checks, Check const& check);

/// @name The work of the checks, by family.
/// @{
void checkRegularFile(Job const& job, Report& report);
void checkFileName(Job const& job, Report& report);
void checkMachine(Job const& job, Report& report);
void checkDependencies(Job const& job, Report& report);
void checkEntryPoints(Job const& job, Report& report);

void checkLoads(Job const& job, Report& report);
void checkVersionFunction(Job const& job, Report& report);
void checkEntryReturns(Job const& job, Report& report);
void checkEntryQuiet(Job const& job, Report& report);
void checkOneClassPerKey(Job const& job, Report& report);
void checkBringsKeys(Job const& job, Report& report);
void checkPostLoad(Job const& job, Report& report);
void checkProcessEnd(Job const& job, Report& report);
void checkProcessState(Job const& job, Report& report);

void checkKeyMatchesName(Job const& job, Report& report);
void checkUnknownKey(Job const& job, Report& report);
void checkNullFoundry(Job const& job, Report& report);
void checkFoundryKept(Job const& job, Report& report);
void checkFoundryParts(Job const& job, Report& report);
void checkViews(Job const& job, Report& report);

void checkObjectsQuiet(Job const& job, Report& report);
void checkObjectsState(Job const& job, Report& report);
void checkObjectsFreed(Job const& job, Report& report);
void checkObjectsBounds(Job const& job, Report& report);

void checkPortDirection(Job const& job, Report& report);
void checkCompositeInside(Job const& job, Report& report);
void checkCompositeOpen(Job const& job, Report& report);

void checkNames(Job const& job, Report& report);
void checkDescribed(Job const& job, Report& report);
void checkDefaultsInRange(Job const& job, Report& report);
void checkTextForms(Job const& job, Report& report);
void checkCopies(Job const& job, Report& report);

void checkSaved(Job const& job, Report& report);
void checkRandomBytes(Job const& job, Report& report);

void checkTwoPlugins(Job const& job, Report& report);
void checkKeyClash(Job const& job, Report& report);
/// @}

}  // namespace vrltool::validate
