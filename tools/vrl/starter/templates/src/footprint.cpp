#include "footprint.h"

#include <sstream>

namespace PluginName_plugin {

namespace {

double widthOf(vrl::BB const* block) { return block && block->find("radius") ? 2.0 * block->getDouble("radius") : 0.0; }

}  // namespace

Footprint::Footprint(vrl::BB* block) : TypeView(block, kName) {
    getViewData().addDouble("width", widthOf(block), "width of the box around the block", "um");
}

std::string Footprint::describe() const {
    std::ostringstream text;
    text << "box of " << getViewData().getDouble("width") << " um";
    return text.str();
}

bool Footprint::applyOn(std::string const& kind) const { return kind.rfind("PluginName", 0) == 0; }

}  // namespace PluginName_plugin
