#pragma once

#include <map>
#include <set>
#include <string>

#include "exchange/document.h"
#include "exchange/findings.h"
#include "exchange/name_map.h"
#include "exchange/workshop.h"

namespace vrltool::exchange {

/// Makes the blocks of instances: finds the kind by the map, sets the parameters, keeps the rest as notes.
class BlockMaker {
public:
    /// All of them outlive the maker.
    BlockMaker(Document const& source, NameMap const& names, Workshop& shop, Findings& found);

    /// The rule for an instance; null, and an error, if its component has none or its kind cannot be made.
    ComponentRule const* ruleFor(Instance const& instance);
    /// A block for an instance, for the caller.
    vrl::BB* make(Instance const& instance, ComponentRule const& rule);
    /// Tells what was kept as notes, once for each component.
    void tellNotes();

    std::size_t settingCount() const { return settings; }
    std::size_t parameterCount() const { return parameters; }

private:
    /// What of one component was kept as notes.
    struct Kept {
        Mark mark;
        std::set<std::string> settings;
        std::size_t instances = 0;
    };

    std::string foundryOf(Instance const& instance) const;
    bool checkFoundry(Instance const& instance);
    ComponentRule const* findRule(Instance const& instance);
    bool checkRule(ComponentRule const& rule, std::string const& foundry);
    void checkDefaults(ComponentRule const& rule, FreshBlock const& fresh);
    void setDefaults(vrl::BB& block, ComponentRule const& rule);
    bool setParameters(vrl::BB& block, Instance const& instance, ComponentRule const& rule);
    bool setParameter(vrl::BB& block, Instance const& instance, Tree::Member const& setting, MappedName const& target);
    void keepNotes(vrl::BB& block, Instance const& instance, ComponentRule const& rule, bool keepSettings);

    Document const& document;
    NameMap const& map;
    Workshop& workshop;
    Findings& findings;
    std::map<std::string, ComponentRule> sameNames;  ///< rules of kinds that the map does not name
    std::set<std::string> checkedRules;
    std::map<std::string, bool> checkedFoundries;
    std::map<std::string, Kept> kept;
    std::size_t settings = 0;
    std::size_t parameters = 0;
};

}  // namespace vrltool::exchange
