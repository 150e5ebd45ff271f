#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "check/exceptions.h"
#include "check/findings.h"

namespace vrltool::check {

/// What the command line says of the rules.
struct RuleOptions {
    std::vector<std::string> severities;  ///< "RULE=LEVEL"; of one rule the last counts
    std::vector<std::string> only;        ///< if there is any, no others run
    std::vector<std::string> skip;
};

/// A rule with what is to be done with it.
struct ChosenRule {
    Rule const* rule;
    Severity severity;
    std::string reason;  ///< why it does not run; empty if it runs

    bool runs() const { return reason.empty(); }
};

/// All rules, by id, with what the options say of each. A Failure reports wrong ids and levels.
std::vector<ChosenRule> chooseRules(RuleOptions const& options);

/// Why a rule left something out.
struct LeaveReason {
    char const* word;
    char const* text;
};

/// Where a rule that ran could not look.
struct LeftOut {
    Rule const* rule;
    std::size_t elements;  ///< how many; 0: it did not look at the file at all
    LeaveReason const* reason;
};

/// A finding that an exception covers.
struct Excepted {
    RuleFinding finding;
    std::string reason;
    std::string place;  ///< of the exception: "FILE:LINE:COLUMN"
};

/// What came of one file.
struct FileReport {
    std::string path;
    std::string failure;  ///< why it could not be checked, with the path; empty if it was
    std::string hint;     ///< of that
    std::string type;     ///< what the file says that it holds
    std::string missing;  ///< the missing kinds that stand-ins represent, for standard error
    std::size_t elements = 0;
    std::string noExceptions;           ///< the file of exceptions beside it, if there is one and it has none
    std::vector<RuleFinding> findings;  ///< heaviest first, by rule, element, port and parameter
    std::vector<Excepted> excepted;     ///< in the same order
    std::vector<Exception> idle;        ///< exceptions of rules that ran, which no finding needs
    std::vector<LeftOut> leftOut;       ///< by rule

    std::size_t count(Severity severity) const;
};

/// The rules as they ran: one that could look at nothing in any file did not run, for the reason that it had there.
std::vector<ChosenRule> asTheyRan(std::vector<ChosenRule> rules, std::vector<FileReport> const& files);

/// Reads, prepares and checks one file; the library has been started. What cannot be read is reported in the report.
/// The design of the last file is left to the end of the process. The exceptions that count are those of the file
/// beside the design, or `shared` ones.
FileReport checkFile(std::string const& path, std::vector<ChosenRule> const& rules, bool withExceptions, bool isLast,
                     std::vector<Exception> const* shared = nullptr);

/// Leaves of shared exceptions that are idle those that are so in every file, and reports them once, in the last one.
void keepIdleInAll(std::vector<FileReport>& files);

}  // namespace vrltool::check
