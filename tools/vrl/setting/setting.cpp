#include "setting/setting.h"

#include <algorithm>
#include <map>

#include "circuit/parameters.h"
#include "design/foundries.h"
#include "guard/quiet_output.h"
#include "guard/thrown.h"
#include "setting/value_text.h"
#include "text/phrases.h"
#include "text/table.h"

namespace vrltool::setting {

namespace {

std::string withUnit(std::string const& text, std::string const& unit) {
    return unit.empty() || unit == "1" ? text : text + " " + unit;
}

std::string stateText(Parameter const& parameter) {
    std::string const value = parameter.type == "String" ? '"' + parameter.text + '"' : parameter.text;
    std::string const text = withUnit(value, parameter.unit);
    return parameter.expression.empty() ? text : text + " = " + parameter.expression;
}

std::string nameText(std::string const& name) { return name.empty() ? "(none)" : name; }

/// A person's value is not calculated, and has no expression.
void store(vrl::Attribute& attribute, ParameterValue const& value) {
    withValue(attribute, [&](auto& parameter) {
        parameter.setValue(std::get<std::decay_t<decltype(parameter.getValue())>>(value));
        parameter.setCalculated(false);
    });
}

bool isAlready(Parameter const& parameter, ParameterValue const& value) {
    auto const* const attribute = dynamic_cast<vrl::AttributeWithExpr const*>(parameter.attribute);
    return parameter.value == value && parameter.expression.empty() && !(attribute && attribute->isCalculated());
}

class Work {
public:
    Work(Settings& into, bool forced) : settings(into), force(forced) {}

    void take(Target const& target, Assignment const& assignment) {
        auto path = target.path;
        path.push_back(std::to_string(static_cast<int>(target.what)));
        auto const [earlier, isNew] = taken.try_emplace(path, assignment.word);
        if (!isNew) {
            if (earlier->second != assignment.word)
                forbid(target, "is set by " + inQuotes(earlier->second) + " and by " + inQuotes(assignment.word),
                       "set it once");
            return;
        }
        settings.settings.push_back({target, {}, {}, {}, {}, false});
        if (target.what == Target::What::kParameter)
            setParameter(settings.settings.back(), assignment.value);
        else
            setChoice(settings.settings.back(), assignment.value);
    }

private:
    void report(Severity severity, Target const& target, std::string const& what, std::string const& hint) {
        settings.findings.push_back({severity, target.text() + ": " + what, hint});
    }
    void forbid(Target const& target, std::string const& what, std::string const& hint) {
        report(Severity::kError, target, what, hint);
    }
    /// What is forbidden unless it is forced, and is a warning then.
    void object(Target const& target, std::string const& what, std::string const& hint) {
        std::string const further = (hint.empty() ? "" : hint + "\n") + "--force sets it nevertheless";
        report(force ? Severity::kWarning : Severity::kError, target, what, force ? "" : further);
    }

    void setParameter(Setting& setting, std::string const& text) {
        vrl::Attribute& attribute = *setting.target.parameter;
        setting.before = setting.after = parameterOf(attribute);
        std::string why, hint;
        auto const value = valueOfText(text, setting.before, why, hint);
        if (!value) return forbid(setting.target, inQuotes(text) + " " + why, hint);
        if (isAlready(setting.before, *value)) return;
        setting.changed = settings.changes.make(setting.target.path, attribute,
                                                [&](vrl::Attribute& changed) { store(changed, *value); });
        setting.after = parameterOf(attribute);
        if (!setting.changed) return forbid(setting.target, "is not kept in saved designs", "");
        if (!setting.after.inRange)
            object(setting.target,
                   withUnit(setting.after.text, setting.after.unit) + " is out of its range, " +
                       withUnit(rangeText(setting.after), setting.after.unit),
                   "");
    }

    void setChoice(Setting& setting, std::string const& name) {
        bool const isFlow = setting.target.what == Target::What::kFlow;
        vrl::Foundry::CSInfo& choice = *setting.target.choice;
        setting.oldName = isFlow ? choice.getFlowName() : choice.getCSName();
        setting.newName = name;
        if (name == setting.oldName) return;
        testName(setting, isFlow);
        setting.changed = settings.changes.make(setting.target.path, choice, [&](vrl::Foundry::CSInfo& changed) {
            isFlow ? changed.setFlow(name) : changed.setCS(name);
        });
        testAllowed(setting.target);
    }

    void testName(Setting const& setting, bool isFlow) {
        std::string const& name = setting.newName;
        vrl::BB& block = *setting.target.block;
        if (name.empty() || isStandIn(block)) return;
        attachFoundry(block);
        vrl::Foundry const* const foundry = block.getFoundry();
        if (!foundry || (isFlow ? hasFlow(*foundry, name) : hasCrossSection(*foundry, name))) return;
        std::string const thing = isFlow ? "process flow" : "cross section";
        object(setting.target,
               "the foundry " + inQuotes(block.getFoundryName()) + " has no " + thing + " " + inQuotes(name),
               namesHint(name, isFlow ? flowNames(*foundry) : crossSectionNames(*foundry),
                         isFlow ? "its process flows" : "its cross sections"));
    }

    void testAllowed(Target const& target) {
        if (!target.name.empty() || isStandIn(*target.block)) return;
        bool allowed = true;
        quietlyThrownBy([&] { allowed = target.block->isAllowed(*target.choice); });
        if (!allowed)
            object(target, "the kind " + inQuotes(target.block->getName()) + " does not allow this choice", "");
    }

    Settings& settings;
    bool force;
    std::map<SavedChanges::Path, std::string> taken;
};

/// Whether an element is a stand-in, so that nobody knows the ranges of its parameters.
bool isUnknown(Setting const& setting) {
    return setting.changed && setting.target.block && isStandIn(*setting.target.block);
}

/// Of a missing kind neither ranges nor cross sections are known; each kind is reported once.
void noteUnknown(Settings& settings) {
    std::map<std::string, std::vector<std::string>> byKind;
    for (Setting const& setting : settings.settings)
        if (isUnknown(setting)) byKind[setting.target.block->getName()].push_back(setting.target.text());
    for (auto const& [kind, targets] : byKind)
        settings.findings.push_back(
            {Severity::kNote,
             listText(targets, 3) + ": set without a check, since no loaded plug-in has the kind " + inQuotes(kind),
             ""});
}

/// How many elements a composite has inside; 0 for any other block.
std::size_t sizeInside(vrl::BB* block) {
    auto* const composite = dynamic_cast<vrl::CBB*>(block);
    return composite ? composite->getAsNetlist()->sizeElements() : 0;
}

/// What is inside of a composite was saved with it. Only its plug-in knows what of it follows from a parameter, and it
/// is not asked again.
void noteInsides(Settings& settings) {
    std::map<std::string, std::vector<std::string>> byComposite;
    std::map<std::string, std::size_t> sizes;
    for (Setting const& setting : settings.settings) {
        Target const& target = setting.target;
        std::size_t const size = sizeInside(target.block);
        if (!setting.changed || target.what != Target::What::kParameter || size == 0) continue;
        byComposite[target.element].push_back(target.text());
        sizes[target.element] = size;
    }
    for (auto const& [composite, targets] : byComposite)
        settings.findings.push_back(
            {Severity::kNote,
             listText(targets, 3) + ": the inside of the composite is not computed anew: its " +
                 counted(sizes[composite], "element") + " stay as they were saved",
             "set what follows from it as " + (composite.empty() ? "" : composite + "/") + "ELEMENT.PARAMETER=VALUE"});
}

void notePartly(Settings& settings, Assignment const& assignment) {
    std::size_t const all = assignment.without.size() + assignment.targets.size();
    if (assignment.without.empty()) return;
    std::string const what = std::to_string(assignment.without.size()) + " of " + std::to_string(all) +
                             " elements that fit have no " + assignment.missing + " and stay as they are: ";
    settings.findings.push_back({Severity::kNote, assignment.word + ": " + what + listText(assignment.without, 5), ""});
}

}  // namespace

std::string Setting::text() const {
    bool const isParameter = target.what == Target::What::kParameter;
    std::string const from = isParameter ? stateText(before) : nameText(oldName);
    return changed ? from + " -> " + (isParameter ? stateText(after) : nameText(newName)) : from;
}

bool Settings::forbidden() const {
    return std::any_of(findings.begin(), findings.end(),
                       [](Finding const& finding) { return finding.severity == Severity::kError; });
}

Settings setAll(Design const& design, std::vector<std::string> const& words, std::string const& kind, bool force) {
    Settings settings;
    Targets const targets(design, kind);
    QuietOutput const quiet;
    Work work(settings, force);
    for (std::string const& word : words) {
        try {
            settings.assignments.push_back(targets.find(word));
        } catch (Failure const& failure) {
            settings.findings.push_back({Severity::kError, failure.what(), failure.hint()});
            continue;
        }
        for (Target const& target : settings.assignments.back().targets) work.take(target, settings.assignments.back());
        notePartly(settings, settings.assignments.back());
    }
    noteUnknown(settings);
    noteInsides(settings);
    return settings;
}

}  // namespace vrltool::setting
