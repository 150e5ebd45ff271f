#pragma once

#include <string>

#include "vrllib/vrllib.h"

namespace PluginName_plugin {

/// The room that a block takes, as its parameters were when the view was made.
class Footprint : public vrl::TypeView<vrl::BB> {
public:
    static constexpr char const* kName = "PluginName/Footprint";

    /// Null makes a view of nothing: a box of no size.
    explicit Footprint(vrl::BB* block);
    std::string describe() const override;
    /// Kinds of this plug-in begin with its name.
    bool applyOn(std::string const& kind) const override;
};

}  // namespace PluginName_plugin
