#include "symbol_view.h"

#include <map>

namespace samplefab {

namespace {

std::map<std::string, std::string> const& symbols() {
    static std::map<std::string, std::string> const all{
        {"sfBend", "bend"},
        {"sfCombiner", "combiner"},
        {"sfCoupler2x2", "coupler"},
        {"sfEdgeCoupler", "edge-coupler"},
        {"sfGrating", "grating"},
        {"sfPhaseModulator", "phase-modulator"},
        {"sfPhotodiode", "detector"},
        {"sfPushPullArms", "modulator"},
        {"sfSplitter", "splitter"},
        {"sfStarCoupler1x10", "star-coupler"},
        {"sfStarCoupler3x10", "star-coupler"},
        {"sfStraight", "straight"},
        {"sfTaper", "taper"},
    };
    return all;
}

std::string symbolOf(std::string const& kind) {
    auto const found = symbols().find(kind);
    return found == symbols().end() ? "" : found->second;
}

}  // namespace

SymbolView::SymbolView(vrl::BB* block) : TypeView(block, kName) {
    getViewData().addString("symbol", block ? symbolOf(block->getName()) : "", "name of the symbol in a picture");
}

SymbolView::~SymbolView() = default;

std::string SymbolView::describe() const {
    std::string const symbol = getViewData().getString("symbol");
    return symbol.empty() ? "no symbol" : "symbol: " + symbol;
}

bool SymbolView::applyOn(std::string const& kind) const { return symbols().count(kind) > 0; }

}  // namespace samplefab
