#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "validate/plugin.h"

namespace vrltool::validate {

/// An object that a plug-in made. Of the pointers, those are set that the object is.
struct Subject {
    vrl::BB* block = nullptr;
    vrl::Netlist* netlist = nullptr;  ///< the inside of a composite as well
    vrl::Attribute* attribute = nullptr;
    vrl::Attributes* list = nullptr;
    std::string tells;      ///< the name that it gives of itself
    bool described = true;  ///< false if it has an empty description
    std::shared_ptr<void> owner;

    explicit operator bool() const { return owner != nullptr; }
    /// Saves the object. False if that fails.
    bool write(vrl::SerialiserBase& serialiser) const;
    /// Reads it back. False if that fails.
    bool read(vrl::DeSerialiserBase& deserialiser) const;
};

/// How an object of a plug-in is made, as often as wanted.
struct Maker {
    std::string key;    ///< "sfBend"
    std::string thing;  ///< "block 'sfBend'"
    std::function<Subject()> make;
};

/// @name What a plug-in makes, by its keys; the empty key is left out.
/// @{
std::vector<Maker> makersOf(Brings what, Keys const& keys);
/// The flows and the cross sections of its foundries.
std::vector<Maker> foundryPartMakers(Keys const& keys);
/// Parameter types, blocks and netlists: what can be saved.
std::vector<Maker> savedMakers(Keys const& keys);
/// All of these, and the foundries.
std::vector<Maker> allMakers(Keys const& keys);
/// @}

/// Makes one, told ahead. Nothing for what cannot be made: only the checks of making complain of that.
Subject madeBy(Maker const& maker, Report& report);

/// The names of a parameter list, sorted, each once; those that no longer lead to a parameter are left out.
std::vector<std::string> namesOf(vrl::Attributes const& list);

/// Runs a step of a check for each object. What it throws is a finding.
void forEachSubject(std::vector<Maker> const& makers, Report& report,
                    std::function<void(Maker const&, Subject const&)> const& use);

}  // namespace vrltool::validate
