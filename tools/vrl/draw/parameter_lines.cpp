#include "draw/parameter_lines.h"

#include <map>

#include "circuit/parameters.h"
#include "design/stand_in.h"
#include "guard/quiet_output.h"
#include "guard/thrown.h"

namespace vrltool::draw {

namespace {

constexpr std::size_t kLines = 10;

/// The parameters of a new block of the kind, by name.
std::map<std::string, std::string> defaultsOf(vrl::BB& block) {
    std::map<std::string, std::string> values;
    if (isStandIn(block)) return values;
    QuietOutput const quiet;
    vrl::BB* fresh = nullptr;
    quietlyThrownBy([&] { fresh = vrl::BB::create(block.getFoundry(), block.getName()); });
    if (!fresh) return values;
    for (Parameter const& parameter : parametersOf(*fresh)) values[parameter.name] = parameter.text;
    vrl::BB::destroy(fresh);
    return values;
}

std::string lineOf(Parameter const& parameter) {
    bool const bare = parameter.unit.empty() || parameter.unit == "1";
    return parameter.name + " = " + parameter.text + (bare ? "" : " " + parameter.unit);
}

}  // namespace

std::vector<std::string> parameterLines(Element const& element) {
    std::vector<std::string> lines;
    if (!element.block) return lines;
    auto const defaults = defaultsOf(*element.block);
    for (Parameter const& parameter : parametersOf(*element.block)) {
        auto const usual = defaults.find(parameter.name);
        if (usual == defaults.end() || usual->second != parameter.text) lines.push_back(lineOf(parameter));
    }
    if (lines.size() <= kLines) return lines;
    std::size_t const more = lines.size() - kLines;
    lines.resize(kLines);
    lines.push_back("and " + std::to_string(more) + " more");
    return lines;
}

}  // namespace vrltool::draw
