#pragma once

#include <functional>
#include <string>
#include <vector>

#include "design/saved_object.h"
#include "validate/plugin.h"

namespace vrltool::validate {

/// An object that a plug-in made; or nothing.
struct MadeObject {
    SavedObject object;
    std::string name{};          ///< what its getName returns
    bool hasDescription = true;  ///< false if describe returns nothing

    explicit operator bool() const { return static_cast<bool>(object); }
};

/// How an object of a plug-in is made, as often as wanted.
struct Maker {
    std::string key;    ///< "sfBend"
    std::string thing;  ///< "block 'sfBend'"
    std::function<MadeObject()> make;
};

/// @name What a plug-in makes, by its keys; the empty key is left out.
/// @{
std::vector<Maker> makersOf(Target what, Keys const& keys);
/// The flows and the cross sections of its foundries.
std::vector<Maker> foundryPartMakers(Keys const& keys);
/// Parameter types, blocks and netlists: what can be saved.
std::vector<Maker> savedMakers(Keys const& keys);
/// All of these, and the foundries.
std::vector<Maker> allMakers(Keys const& keys);
/// @}

/// @name What to do if the process ends in a constructor or a destructor.
/// @{
extern char const* const kMakingHint;
extern char const* const kDestroyingHint;
/// @}

/// Makes one, reported first. Nothing for what cannot be made: only the checks of making complain of that.
MadeObject madeBy(Maker const& maker, Report& report);

/// Destroys one, reported first.
void destroyMade(Maker const& maker, MadeObject& made, Report& report);

/// The names of a parameter list, sorted, each once; those that no longer lead to a parameter are left out.
std::vector<std::string> namesOf(vrl::Attributes const& list);

/// Runs a step of a check for each object. What it throws is a finding.
void forEachMade(std::vector<Maker> const& makers, Report& report,
                 std::function<void(Maker const&, MadeObject const&)> const& use);

}  // namespace vrltool::validate
