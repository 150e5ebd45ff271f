#pragma once

#include <set>
#include <string>
#include <vector>

#include "diff/settings.h"
#include "values/node.h"
#include "vrllib/vrllib.h"

namespace vrltool::diff {

/// A member of the notes of an import that differs: its names from the outermost on, "[2]" for a part of a list, and
/// what each side has. What is missing is undefined.
struct NoteDifference {
    std::vector<std::string> member;
    values::Node inA, inB;
};

/// What differs between two notes, member by member. Lists that are not as long as each other differ whole.
std::vector<NoteDifference> differentMembers(values::Node const& a, values::Node const& b,
                                             DiffSettings const& settings);

/// The same of two blocks. Settings that became parameters are left out, and so is what else shows in the block itself.
/// A setting is such a one if a parameter has its name, or if in both blocks the same parameter has its value, times
/// one factor.
std::vector<NoteDifference> differentMembers(vrl::BB& a, vrl::BB& b, DiffSettings const& settings);

/// The note of a netlist without the ports of these names.
values::Node withoutPorts(values::Node const& note, std::set<std::string> const& names);

}  // namespace vrltool::diff
