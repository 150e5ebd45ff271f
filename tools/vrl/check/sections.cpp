#include "check/sections.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <memory>

#include "check/scope.h"
#include "circuit/direction.h"
#include "guard/thrown.h"
#include "text/number.h"

namespace vrltool::check {

namespace {

/// The number of a parameter. False if the element has none of that name that is a finite number.
bool numberOf(CheckedElement const& checked, std::string const& name, double& number, std::string* unit) {
    auto const found = std::find_if(checked.parameters.begin(), checked.parameters.end(),
                                    [&](Parameter const& parameter) { return parameter.name == name; });
    if (found == checked.parameters.end()) return false;
    if (auto const* const real = std::get_if<double>(&found->value))
        number = *real;
    else if (auto const* const whole = std::get_if<int>(&found->value))
        number = *whole;
    else
        return false;
    if (unit) *unit = found->unit;
    return std::isfinite(number);
}

double widthAt(CheckedElement const& checked, std::string const& port, std::string& unit) {
    static char const* const byDirection[] = {"width", "widthIn", "widthOut"};
    double width = 0;
    for (char const* const name : {"width", byDirection[static_cast<int>(directionOf(port))]})
        if (numberOf(checked, name, width, &unit)) return width;
    unit.clear();
    return -1.0;
}

// A foundry that throws makes no section: the names of the choices are compared then.
void make(Section& section, vrl::Foundry::CSInfo const& choice, double width, double radius) {
    quietlyThrownBy([&] {
        std::unique_ptr<vrl::CrossSection> const cs(choice.createCS(width, radius));
        if (!cs) return;
        section.kind = cs->getName();
        section.width = cs->getWidth();
        section.made = true;
    });
}

bool bothAndDifferent(std::string const& a, std::string const& b) { return !a.empty() && !b.empty() && a != b; }

bool sameWidth(double a, double b) {
    constexpr double kTolerance = 1e-6;  // of the greater one: the unit is left to the foundry
    return a == b || std::fabs(a - b) <= kTolerance * std::max(std::fabs(a), std::fabs(b));
}

}  // namespace

bool differ(Section const& a, Section const& b) {
    if (a.made && b.made) return a.kind != b.kind || !sameWidth(a.width, b.width);
    return bothAndDifferent(a.csName, b.csName) || bothAndDifferent(a.flowName, b.flowName);
}

std::string sectionText(Section const& section, std::string const& unit) {
    if (!section.made) {
        vrl::Foundry::CSInfo choice(nullptr);
        choice.setCS(section.csName);
        choice.setFlow(section.flowName);
        return choiceText(choice);
    }
    std::string const& named = section.unit.empty() ? unit : section.unit;
    return section.kind + " of width " + numberText(section.width) + (named.empty() ? "" : " " + named);
}

std::string choiceText(vrl::Foundry::CSInfo const& choice) {
    std::string const cs = choice.getCSName().empty() ? "" : "cross section '" + choice.getCSName() + "'";
    std::string const flow = choice.getFlowName().empty() ? "" : "process flow '" + choice.getFlowName() + "'";
    return cs + (cs.empty() || flow.empty() ? "" : " by ") + flow;
}

vrl::Foundry::CSInfo choiceOf(CheckedElement const& checked, vrl::BB::Port const& port) {
    vrl::Foundry::CSInfo choice = port.getCS();
    vrl::BB const& block = *checked.element->block;
    if (choice == vrl::Foundry::CSInfo(nullptr)) quietlyThrownBy([&] { choice = block.getCS(port); });
    if (!choice.getFoundry()) choice.setFoundry(checked.foundry);
    return choice;
}

Section Sections::at(CheckedElement const& checked, vrl::BB::Port const& port) {
    vrl::Foundry::CSInfo const choice = choiceOf(checked, port);
    Section section;
    double const width = widthAt(checked, port.getName(), section.unit);
    double radius = 0;
    if (!numberOf(checked, "radius", radius, nullptr)) radius = 0;
    section.csName = choice.getCSName();
    section.flowName = choice.getFlowName();
    if (!choice.getFoundry()) return section;
    Key const key{checked.element->foundry, section.csName, section.flowName, width, radius};
    auto const found = made.find(key);
    if (found != made.end()) {
        Section known = found->second;
        known.unit = section.unit;  // of the block that asks; other blocks with this section may use another
        return known;
    }
    make(section, choice, width, radius);
    return made.emplace(key, section).first->second;
}

}  // namespace vrltool::check
