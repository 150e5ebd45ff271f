#pragma once

#include <set>
#include <string>

#include "design/saved_object.h"
#include "diff/change.h"
#include "diff/imported_notes.h"
#include "diff/settings.h"
#include "vrllib/vrllib.h"

namespace vrltool::diff {

/// Whether two values are the same: numbers of one type within the tolerance, all others exactly. Not-a-number is the
/// same as itself.
bool sameValue(ParameterValue const& a, ParameterValue const& b, DiffSettings const& settings);

/// What is to be compared of a parameter.
ParameterState stateOf(Parameter const& parameter);

/// Compares what objects have of their own: parameters, notes, foundries and choices. Of each pair of objects either
/// may be null and then has nothing.
class PropertyComparison {
public:
    /// The changes go into `found`; both outlive this one.
    PropertyComparison(DiffSettings const& s, Differences& d) : settings(s), found(d) {}

    /// Descriptions come with the kind: they are compared if both objects are of the same.
    void compareParameters(vrl::Attributes* a, vrl::Attributes* b, std::string const& path, bool sameKind);
    /// Two parameters that are in no list.
    void compareSingle(vrl::Attribute& a, vrl::Attribute& b);
    void compareNotes(vrl::Annotations const* a, vrl::Annotations const* b, std::string const& path,
                      std::string const& parameter = "", std::set<std::string> const& without = {});
    /// Those of blocks. What an import kept of a setting that is a parameter is not a difference of its own.
    void compareNotesOfBlocks(vrl::BB* a, vrl::BB* b, std::string const& path);
    /// Those of what the files hold; of two netlists without the notes of their imports.
    void compareNotesOfObjects(SavedObject const& a, SavedObject const& b);
    /// What imports kept of two netlists, member by member; nothing unless both are maps.
    void compareImports(values::Node const& a, values::Node const& b, std::string const& path);
    /// Foundry, choices and ports.
    void compareBlocks(vrl::BB* a, vrl::BB* b, std::string const& path);
    void compareChoices(vrl::Foundry::CSInfo const& a, vrl::Foundry::CSInfo const& b, std::string const& path,
                        std::string const& port = "");
    /// Two strings, each empty for none.
    void compareTexts(Topic topic, std::string const& a, std::string const& b, std::string const& path,
                      std::string const& name = "");

    /// The names of all parameters that were met, if any are to be ignored.
    std::set<std::string> const& met() const { return names; }

private:
    void addMembers(std::vector<NoteDifference> const& members, std::string const& path);
    void compareParameter(Parameter const* a, Parameter const* b, std::string const& name, std::string const& path,
                          bool sameKind);
    bool isIgnored(std::string const& name, std::string const& path) const;
    bool same(ParameterState const& a, ParameterState const& b) const;

    DiffSettings const& settings;
    Differences& found;
    std::set<std::string> names;
};

}  // namespace vrltool::diff
