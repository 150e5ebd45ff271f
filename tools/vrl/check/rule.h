#pragma once

#include <string>
#include <variant>
#include <vector>

#include "text/finding.h"

namespace vrltool::check {

struct Scope;
struct CheckedElement;
class Findings;

/// All four words, heaviest first.
std::vector<std::string> const& severityWords();
/// The severity of a word. False if there is none.
bool severityOf(std::string const& word, Severity& severity);

/// What a rule has to know of an element; where it is not known, the rule leaves the element out.
enum Needs : unsigned {
    kNothing = 0,
    kKind = 1,     ///< its kind: not on stand-ins
    kFoundry = 2,  ///< its foundry: not where the name of the foundry is unknown
    kCircuit = 4   ///< a circuit around it: not on a block that was saved alone
};

/// What 'vrl explain' prints of a rule: sentences, which are wrapped, and an example, which is shown unchanged.
struct Page {
    char const* meaning;
    char const* why;
    char const* example;
    char const* hint;
};

/// Looks at one circuit, without the insides of its composites.
using CircuitCheck = void (*)(Scope const&, Findings&);
/// Looks at one element, which the rule covers.
using ElementCheck = void (*)(CheckedElement const&, Findings&);

/// One rule of 'vrl check', complete in one entry of the table of its family.
struct Rule {
    char const* id;     ///< short words with "-" between them; stable, since people write them into scripts
    char const* title;  ///< one line without a full stop
    Severity severity;  ///< unless somebody sets another
    unsigned needs;     ///< of Needs
    std::variant<CircuitCheck, ElementCheck> check;
    Page page;
};

using Rules = std::vector<Rule>;

/// All rules, by id.
Rules const& allRules();
/// Their ids.
std::vector<std::string> ruleIds();
/// The rule of that id. A Failure reports a wrong one, with near ones.
Rule const& ruleOf(std::string const& id);

/**@{*/
/// The families, each in its own file.
Rules const& elementRules();
Rules const& parameterRules();
Rules const& foundryRules();
Rules const& portRules();
Rules const& nodeRules();
Rules const& boundaryRules();
/**@}*/

}  // namespace vrltool::check
