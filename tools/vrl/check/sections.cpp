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
    if (!checked.list->find(name)) return false;
    vrl::Attribute const* const parameter = checked.list->getAttribute(name);
    if (auto const* const real = dynamic_cast<vrl::Value<double> const*>(parameter))
        number = real->getValue();
    else if (auto const* const whole = dynamic_cast<vrl::Value<int> const*>(parameter))
        number = whole->getValue();
    else
        return false;
    if (unit) *unit = unitOf(*parameter);
    return std::isfinite(number);
}

double widthAt(CheckedElement const& checked, std::string const& port, std::string& unit) {
    static std::string const byDirection[] = {"width", "widthIn", "widthOut"};
    double width = 0;
    if (numberOf(checked, byDirection[0], width, &unit)) return width;
    if (numberOf(checked, byDirection[static_cast<int>(directionOf(port))], width, &unit)) return width;
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

Section Sections::at(CheckedElement const& checked, vrl::BB::Port const& port) {
    vrl::BB const& block = *checked.element->block;
    vrl::Foundry::CSInfo const* choice = &port.getCS();
    if (choice->getCSName().empty() && choice->getFlowName().empty())
        quietlyThrownBy([&] { choice = &block.getCS(port); });
    vrl::Foundry const* const foundry = choice->getFoundry() ? choice->getFoundry() : checked.foundry;
    Section section;
    double const width = widthAt(checked, port.getName(), section.unit);
    section.csName = choice->getCSName();
    section.flowName = choice->getFlowName();
    if (!foundry) return section;
    double radius = 0;
    if (!numberOf(checked, "radius", radius, nullptr)) radius = 0;
    Key const key{checked.element->foundry, section.csName, section.flowName, width, radius};
    auto const found = made.find(key);
    if (found != made.end()) {
        Section known = found->second;
        known.unit = section.unit;  // of the block that asks; other blocks with this section may use another
        return known;
    }
    vrl::Foundry::CSInfo asked = *choice;
    asked.setFoundry(foundry);
    make(section, asked, width, radius);
    return made.emplace(key, section).first->second;
}

}  // namespace vrltool::check
