#include "draw/symbols.h"

#include <algorithm>
#include <iterator>

namespace vrltool::draw {

namespace {

// By name. Lines are what light follows, or the edges of what it passes; what leads outside ends at 20 to the side.
constexpr Symbol kSymbols[] = {
    {"add-drop", "M-20,10H20M-20,-10H20M7,0A7,7,0,1,1,-7,0A7,7,0,1,1,7,0Z"},
    {"amplifier", "M-20,0H-11M-11,-10V10L12,0ZM12,0H20"},
    {"attenuator", "M-20,0H-11M11,0H20M-11,-8H11V8H-11ZM-5,5L5,-5"},
    {"bend", "M-12,10H-2A14,14,0,0,0,12,-4V-10M-12,4H-2A8,8,0,0,0,6,-4V-10"},
    {"combiner", "M20,0H8C-2,0,-2,-8,-14,-8H-20M8,0C-2,0,-2,8,-14,8H-20"},
    {"coupler", "M-20,-9C-9,-9,-10,-2,-4,-2H4C10,-2,9,-9,20,-9M-20,9C-9,9,-10,2,-4,2H4C10,2,9,9,20,9"},
    {"crossing", "M-20,-2H-2V-10M2,-10V-2H20M20,2H2V10M-2,10V2H-20"},
    {"delay", "M-20,8H20M2,1A7,7,0,1,1,-12,1A7,7,0,1,1,2,1ZM7,1A7,7,0,1,1,-7,1A7,7,0,1,1,7,1Z"
              "M12,1A7,7,0,1,1,-2,1A7,7,0,1,1,12,1Z"},
    {"demultiplexer", "M-20,0H-10M-10,-5L10,-10V10L-10,5ZM10,-6H20M10,0H20M10,6H20"},
    {"detector", "M-20,-4H-9M-12,-7L-9,-4L-12,-1M-20,4H-9M-12,1L-9,4L-12,7M-3,6H13L5,-5ZM-3,-5H13M5,-10V-5M5,6V10"},
    {"edge-coupler", "M-17,-10V10M-13,0L6,-4H20M-13,0L6,4H20", true},
    {"filter", "M-20,0H-11M11,0H20M-11,-10H11V10H-11ZM-8,6H-5C-2,6,-2,-6,0,-6C2,-6,2,6,5,6H8"},
    {"grating", "M-20,-4H-14V-8H-10V-4H-6V-8H-2V-4H2V-8H6V-4H10V-8H14V-4H20"
                "M-20,4H-14V8H-10V4H-6V8H-2V4H2V8H6V4H10V8H14V4H20"},
    {"grating-coupler", "M20,0H14L-16,-10M14,0L-16,10M4,-3V3M-2,-5V5M-8,-7V7M-14,-9V9", true},
    {"heater", "M-20,8H20M-20,3H20M-14,-3L-11,-10L-7,-3L-3,-10L1,-3L5,-10L9,-3L12,-10"},
    {"interferometer", "M-20,0H-15C-10,0,-12,-7,-6,-7H6C12,-7,10,0,15,0H20M-15,0C-10,0,-12,7,-6,7H6C12,7,10,0,15,0"},
    {"isolator", "M-20,0H-11M11,0H20M-11,-8H11V8H-11ZM-7,0H7M3,-4L7,0L3,4"},
    {"laser", "M-13,6H3L-5,-5ZM-13,-5H3M-5,-10V-5M-5,6V10M8,-4H20M17,-7L20,-4L17,-1M8,4H20M17,1L20,4L17,7"},
    {"mirror", "M-20,0H-8C0,0,2,-9,10,-9A9,9,0,0,1,10,9C2,9,0,0,-8,0"},
    {"mmi", "M-20,-5H-12M-20,5H-12M12,-5H20M12,5H20M-12,-9H12V9H-12Z"},
    {"modulator", "M-20,0H-15L-9,-6H9L15,0H20M-15,0L-9,6H9L15,0M-7,-10H7M-7,-2H7M-7,2H7M-7,10H7"},
    {"multiplexer", "M20,0H10M10,-5L-10,-10V10L10,5ZM-10,-6H-20M-10,0H-20M-10,6H-20"},
    {"pad", "M-10,-10H10V10H-10ZM-6,-6H6V6H-6Z"},
    {"phase-modulator", "M-20,-2H20M-20,2H20M-13,-6H13V-10H-13ZM-13,6H13V10H-13Z"},
    {"phase-shifter", "M-20,0H-11M11,0H20M-11,-10H11V10H-11ZM5,0A5,5,0,1,1,-5,0A5,5,0,1,1,5,0ZM0,-8V8"},
    {"ring", "M-20,10H20M8,-2A8,8,0,1,1,-8,-2A8,8,0,1,1,8,-2Z"},
    {"splitter", "M-20,0H-8C2,0,2,-8,14,-8H20M-8,0C2,0,2,8,14,8H20"},
    {"star-coupler", "M-20,0H-8M-10,-5C-7,-2,-7,2,-10,5L10,10C6,4,6,-4,10,-10ZM8,-7H20M7,0H20M8,7H20"},
    {"straight", "M-20,-3H20M-20,3H20"},
    {"switch", "M-20,0H-8L10,-8H20M8,8H20M-8,0L-1,3M3,5L8,8"},
    {"taper", "M-20,-2L20,-9V9L-20,2Z"},
    {"termination", "M-20,0H0M0,-10V10M6,-6V6M12,-2V2"},
};

}  // namespace

Symbol const* findSymbol(std::string const& name) {
    auto const found = std::find_if(std::begin(kSymbols), std::end(kSymbols),
                                    [&](Symbol const& symbol) { return name == symbol.name; });
    return found == std::end(kSymbols) ? nullptr : found;
}

std::vector<std::string> symbolNames() {
    std::vector<std::string> names;
    for (Symbol const& symbol : kSymbols) names.emplace_back(symbol.name);
    return names;
}

}  // namespace vrltool::draw
