#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/targets.h"
#include "vrllib/vrllib.h"

namespace vrltool::catalogue {

/// A registered key.
struct Kind {
    Target target;
    std::string key;
    std::string file;  ///< that contains the code of its creator

    /// The short name of that file.
    std::string plugin() const;
};

/// The keys of a factory, or of all seven, by target and key.
std::vector<Kind> kindsOf(Target target);
std::vector<Kind> allKinds();
std::vector<std::string> keysOf(std::vector<Kind> const& kinds);

/// An object that a factory made, and that goes back to it.
template <class T>
using Made = std::unique_ptr<T, void (*)(T*)>;

/**@{*/
/// A new object of a kind; null if its creator makes none. What the creator throws passes through.
Made<vrl::Attribute> makeAttribute(std::string const& key);
Made<vrl::Foundry> makeFoundry(std::string const& key);
Made<vrl::BB> makeBlock(vrl::Foundry const* foundry, std::string const& key);
Made<vrl::Netlist> makeNetlist(std::string const& key);
/// A view of nothing.
Made<vrl::View> makeView(Target target, std::string const& key);
/**@}*/

/// One line on the make of an object: "in0, out0; radius, angle".
std::string blockLine(vrl::BB& block);

/// The words, with ", " in between.
std::string joined(std::vector<std::string> const& words);

std::vector<std::string> parameterNames(vrl::Attributes& list);

std::vector<std::string> portNames(vrl::BB const& block);

}  // namespace vrltool::catalogue
