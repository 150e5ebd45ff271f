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

/// The number of a parameter. False if there is no parameter, or if it is no finite number.
bool isNumber(vrl::Attribute const* parameter, double& number) {
    if (auto const* const real = dynamic_cast<vrl::Value<double> const*>(parameter))
        number = real->getValue();
    else if (auto const* const whole = dynamic_cast<vrl::Value<int> const*>(parameter))
        number = whole->getValue();
    else
        return false;
    return std::isfinite(number);
}

/// The parameter that says the width at a port, or null.
vrl::Attribute const* widthAt(CheckedElement const& checked, std::string const& port, double& width) {
    Dimensions const& dimensions = checked.dimensions;
    if (isNumber(dimensions.width, width)) return dimensions.width;
    Direction const direction = directionOf(port);
    auto const* const other = direction == Direction::kInput    ? dimensions.widthIn
                              : direction == Direction::kOutput ? dimensions.widthOut
                                                                : nullptr;
    return isNumber(other, width) ? other : nullptr;
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

bool isUnchosen(vrl::BB::Port const& port) {
    return !port.hasCS() || (port.getCS().getCSName().empty() && port.getCS().getFlowName().empty());
}

bool bothAndDifferent(std::string const& a, std::string const& b) { return !a.empty() && !b.empty() && a != b; }

bool sameWidth(double a, double b) {
    constexpr double kTolerance = 1e-6;  // of the greater one: the unit is left to the foundry
    return a == b || std::fabs(a - b) <= kTolerance * std::max(std::fabs(a), std::fabs(b));
}

}  // namespace

void Dimensions::take(std::string const& name, vrl::Attribute const* parameter) {
    if (name == "width") width = parameter;
    if (name == "widthIn") widthIn = parameter;
    if (name == "widthOut") widthOut = parameter;
    if (name == "radius") radius = parameter;
}

bool differ(Section const& a, Section const& b) {
    if (a.made && b.made) return a.kind != b.kind || !sameWidth(a.width, b.width);
    return bothAndDifferent(a.csName, b.csName) || bothAndDifferent(a.flowName, b.flowName);
}

std::string sectionText(Section const& section, std::string const& unit) {
    if (section.made) return section.kind + " of width " + numberText(section.width) + (unit.empty() ? "" : " " + unit);
    vrl::Foundry::CSInfo choice(nullptr);
    choice.setCS(section.csName);
    choice.setFlow(section.flowName);
    return choiceText(choice);
}

std::string choiceText(vrl::Foundry::CSInfo const& choice) {
    std::string const cs = choice.getCSName().empty() ? "" : "cross section '" + choice.getCSName() + "'";
    std::string const flow = choice.getFlowName().empty() ? "" : "process flow '" + choice.getFlowName() + "'";
    return cs + (cs.empty() || flow.empty() ? "" : " by ") + flow;
}

std::string widthUnitAt(CheckedElement const& checked, std::string const& port) {
    double width = 0;
    auto const* const parameter = widthAt(checked, port, width);
    return parameter ? unitOf(*parameter) : std::string();
}

Section const& Sections::at(CheckedElement const& checked, vrl::BB::Port const& port) {
    vrl::BB const& block = *checked.element->block;
    vrl::Foundry::CSInfo const* choice = nullptr;
    if (isUnchosen(port)) quietlyThrownBy([&] { choice = &block.getCS(port); });
    if (!choice) choice = &port.getCS();
    vrl::Foundry const* const foundry = choice->getFoundry() ? choice->getFoundry() : checked.foundry;
    double width = 0;
    double radius = 0;
    if (foundry && !widthAt(checked, port.getName(), width)) width = -1.0;
    if (foundry && !isNumber(checked.dimensions.radius, radius)) radius = 0;
    auto const [entry, isNew] = made.try_emplace(
        {width, radius, foundry != nullptr, choice->getCSName(), choice->getFlowName(), checked.element->foundry});
    Section& section = entry->second;
    if (!isNew) return section;
    section.csName = choice->getCSName();
    section.flowName = choice->getFlowName();
    if (!foundry) return section;
    vrl::Foundry::CSInfo asked = *choice;
    asked.setFoundry(foundry);
    make(section, asked, width, radius);
    return section;
}

}  // namespace vrltool::check
