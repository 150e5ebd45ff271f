#pragma once

#include <map>
#include <string>
#include <tuple>

#include "vrllib/vrllib.h"

namespace vrltool {

struct ElementPort;

namespace check {

struct CheckedElement;

/// The parameters of a block from which cross sections are made, by their names; null for one that is missing.
struct Dimensions {
    vrl::Attribute const* width = nullptr;
    vrl::Attribute const* widthIn = nullptr;
    vrl::Attribute const* widthOut = nullptr;
    vrl::Attribute const* radius = nullptr;

    /// Keeps a parameter that has one of the names.
    void take(std::string const& name, vrl::Attribute const* parameter);
};

/// The cross section at a port: as its foundry makes it, and the names by which it was chosen.
struct Section {
    bool made = false;  ///< whether the foundry made it; if not, there are the names only
    std::string kind;
    double width = 0;
    std::string csName, flowName;
};

/// Whether the sections of two ports do not fit: made by their foundries, kind and width count, otherwise the names
/// that both have.
bool differ(Section const& a, Section const& b);

/// "strip of width 0.45 um"; of one that was not made, what was chosen: "cross section 'strip'". `unit` is that of the
/// width, or empty.
std::string sectionText(Section const& section, std::string const& unit);

/// "cross section 'strip' by process flow 'active'"; empty if both names are.
std::string choiceText(vrl::Foundry::CSInfo const& choice);

/// The unit of the width at a port; empty if no parameter says the width.
std::string widthUnitAt(CheckedElement const& checked, std::string const& port);

/// Makes the cross sections of ports; asks for each only once.
///
/// The choice for a port is its own if it has one, otherwise that of its block for this port. Width and radius are the
/// parameters 'width' and 'radius' of the block. Without 'width', a port that is an input has the parameter 'widthIn',
/// and an output 'widthOut'. What no parameter says is left to the foundry: the width -1, which asks for the standard
/// width, and the radius 0.
class Sections {
public:
    /// The section at a port of the checked; valid as long as this object.
    Section const& at(CheckedElement const& checked, vrl::BB::Port const& port);

private:
    using Key = std::tuple<double, double, bool, std::string, std::string, std::string>;
    std::map<Key, Section> made;
};

}  // namespace check
}  // namespace vrltool
