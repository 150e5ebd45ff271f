#include <algorithm>
#include <map>
#include <utility>

#include "check/findings.h"
#include "design/foundries.h"
#include "guard/thrown.h"
#include "text/near_names.h"
#include "text/phrases.h"

// Rules that look at foundries and at the choices of cross sections and process flows.

namespace vrltool::check {

namespace {

std::vector<std::string> foundryNames() {
    std::vector<std::string> names;
    for (auto const& entry : FactoryLoader<vrl::Foundry>::factory()) names.push_back(entry.first);
    return names;
}

void unknownFoundry(CheckedElement const& checked, Findings& findings) {
    if (!checked.foundryUnknown) return;
    std::string const near = didYouMean(checked.element->foundry, foundryNames());
    findings.add({checked.path, "", "", 0}, "no loaded plug-in has its foundry " + inQuotes(checked.element->foundry),
                 near.empty() ? "load the plug-in that brings it; 'vrl plugins' shows what is loaded" : near);
}

void noFoundry(CheckedElement const& checked, Findings& findings) {
    if (checked.element->foundry.empty())
        findings.add({checked.path, "", "", 0}, "the block is made for no foundry",
                     "put a block in its place that is made for a foundry");
}

/// What foundries have; each is asked for each name only once.
class Offers {
public:
    bool hasSection(vrl::Foundry const& foundry, std::string const& name) {
        return known(sections, foundry, name, [&] { return hasCrossSection(foundry, name); });
    }
    bool hasFlow(vrl::Foundry const& foundry, std::string const& name) {
        return known(flows, foundry, name, [&] { return vrltool::hasFlow(foundry, name); });
    }

private:
    using Answers = std::map<std::pair<vrl::Foundry const*, std::string>, bool>;

    template <class Ask>
    static bool known(Answers& answers, vrl::Foundry const& foundry, std::string const& name, Ask const& ask) {
        auto const [entry, isNew] = answers.try_emplace({&foundry, name});
        if (isNew) entry->second = ask();
        return entry->second;
    }

    Answers sections, flows;
};

void checkChoice(CheckedElement const& checked, std::string const& port, vrl::Foundry::CSInfo const& choice,
                 Offers& offers, Findings& findings) {
    vrl::Foundry const& foundry = *checked.foundry;
    auto const add = [&](std::string const& what, std::string const& name, std::vector<std::string> const& names,
                         std::string const& things) {
        findings.add({checked.path, port, "", 0},
                     "the foundry " + inQuotes(checked.element->foundry) + " has no " + what + " " + inQuotes(name),
                     namesHint(name, names, things));
    };
    std::string const& cs = choice.getCSName();
    std::string const& flow = choice.getFlowName();
    if (!cs.empty() && !offers.hasSection(foundry, cs))
        add("cross section", cs, crossSectionNames(foundry), "its cross sections");
    if (!flow.empty() && !offers.hasFlow(foundry, flow))
        add("process flow", flow, flowNames(foundry), "its process flows");
}

void unknownChoice(Scope const& scope, Findings& findings) {
    Offers offers;
    for (CheckedElement const& checked : scope.checkedElements) {
        if (!findings.covers(checked) || !checked.foundry) continue;
        vrl::BB const& block = *checked.element->block;
        checkChoice(checked, "", block.vrl::BB::getCS(), offers, findings);
        for (auto port = block.beginPort(); port != block.endPort(); ++port)
            if (port->hasCS()) checkChoice(checked, port->getName(), port->getCS(), offers, findings);
    }
}

void choiceNotAllowed(CheckedElement const& checked, Findings& findings) {
    vrl::BB const& block = *checked.element->block;
    vrl::Foundry::CSInfo const& choice = block.vrl::BB::getCS();
    if (choice.getCSName().empty() && choice.getFlowName().empty()) return;
    bool allowed = true;
    quietlyThrownBy([&] { allowed = block.isAllowed(choice); });
    if (!allowed)
        findings.add({checked.path, "", "", 0},
                     "the kind " + inQuotes(checked.element->kind) + " may not be made with " + choiceText(choice),
                     "choose another cross section or process flow; 'vrl describe' shows those of the foundry");
}

}  // namespace

Rules const& foundryRules() {
    static Rules const rules{
        {"unknown-foundry",
         "a block is made for a foundry that no loaded plug-in has",
         Severity::kError,
         kNothing,
         unknownFoundry,
         {"The block keeps the name of its foundry, and no loaded plug-in brings a foundry of that name.",
          "The foundry makes cross sections and knows what can be printed. Without it nobody knows how wide a "
          "waveguide is, and the rules about cross sections cannot look at the block.",
          "bend: no loaded plug-in has its foundry 'SampleFb' [unknown-foundry]",
          "Load the plug-in of the foundry; 'vrl list foundries' shows those that are loaded. A block of another "
          "foundry takes its place otherwise."}},
        {"no-foundry",
         "a block is made for no foundry",
         Severity::kNote,
         kNothing,
         noFoundry,
         {"The block was made without a foundry, and keeps no name of one.",
          "Nobody can make a cross section for it: it is fit for a first sketch, and not for a mask.",
          "delay: the block is made for no foundry [no-foundry]",
          "Make the block for a foundry. If sketches are intended, skip this rule."}},
        {"unknown-choice",
         "a choice names a cross section or process flow that the foundry does not have",
         Severity::kError,
         kFoundry,
         unknownChoice,
         {"A block, or one of its ports, has chosen a cross section or a process flow by name, and its foundry has "
          "none of that name. Nothing tests the names when they are set.",
          "The foundry then falls back to its defaults without a word: the waveguide is made, but not the one that the "
          "designer asked for.",
          "bend: the foundry 'SampleFab' has no cross section 'stripe'; did you mean 'strip'? [unknown-choice]",
          "Correct the name. 'vrl describe FOUNDRY' shows its cross sections and flows."}},
        {"choice-not-allowed",
         "a block has a choice that its kind does not allow",
         Severity::kError,
         kKind,
         choiceNotAllowed,
         {"A kind can refuse cross sections and process flows, and it refuses the one that this block has.",
          "A modulator needs a slab that carries its current: made with a strip it is a waveguide with two pads.",
          "mod: the kind 'fabModulator' may not be made with cross section 'strip' [choice-not-allowed]",
          "Choose a cross section or process flow that the kind allows; its description should say which."}},
    };
    return rules;
}

}  // namespace vrltool::check
