#include "layout_view.h"

#include <initializer_list>
#include <sstream>

#include "parameters.h"

namespace samplefab {

namespace {

/// The first of the parameters that the block has, or 0.
double firstOf(vrl::BB const* block, std::initializer_list<char const*> names) {
    if (!block) return 0.0;
    for (char const* const name : names)
        if (block->find(name)) return block->getDouble(name);
    return 0.0;
}

}  // namespace

LayoutView::LayoutView(vrl::BB* block) : TypeView(block, kName) {
    vrl::Attributes& data = getViewData();
    addNumber(data, "length", firstOf(block, {"length", "radius"}), {0.0, 20000.0}, "length of the box", "um");
    addNumber(data, "width", firstOf(block, {"separation", "bodyWidth", "radius", "width", "tipWidth"}), {0.0, 2000.0},
              "width of the box", "um");
    addNumber(data, "margin", 5.0, {0.0, 100.0}, "distance that neighbours keep", "um");
}

LayoutView::~LayoutView() = default;

std::string LayoutView::describe() const {
    vrl::Attributes const& data = getViewData();
    std::ostringstream text;
    text << data.getDouble("length") << " um x " << data.getDouble("width") << " um, margin "
         << data.getDouble("margin") << " um";
    return text.str();
}

bool LayoutView::applyOn(std::string const& kind) const { return kind.compare(0, 2, "sf") == 0; }

}  // namespace samplefab
