#include "vrllib/attributes/attribute.h"

#include <cstring>
#include <ostream>

namespace Vorlane_v1_0 {

namespace {

// Functions that destroy nothing, since attributes may be made before and used after the static objects of this file.
std::string const& nameKey() {
    static auto const& key = *new std::string("vrl::attrName");
    return key;
}
std::string const& descrKey() {
    static auto const& key = *new std::string("vrl::attrDescr");
    return key;
}
std::string const& unitsKey() {
    static auto const& key = *new std::string("vrl::attrUnitName");
    return key;
}

/// What one of the texts of an attribute is, empty if it throws: saving goes on without a missing annotation, and also
/// without what a plug-in's own operation throws at.
std::string textOrEmpty(Attribute const& attribute, std::string (Attribute::*text)() const) {
    try {
        return (attribute.*text)();
    } catch (...) {
        return {};
    }
}

}  // namespace

std::string detail::nameAndUnits(Attribute const& attribute) {
    return textOrEmpty(attribute, &Attribute::getName) + "[" + textOrEmpty(attribute, &Attribute::getUnits) + "]";
}

Attribute::Attribute(std::string const& name, std::string const& descr, std::string const& units)
    : Annotations(detail::AnnotationBag{{descrKey(), descr}, {nameKey(), name}, {unitsKey(), units}}) {}

Attribute::Attribute(Attribute const& other) = default;
Attribute& Attribute::operator=(Attribute const& other) = default;
Attribute::~Attribute() = default;

VRL_DEFINE_PERSISTENCE(Attribute, Annotations)

SerFormat<Attribute> const& Attribute::serFormat() {
    static auto const format = SerFormat<Attribute>("Attribute", 1);
    return format;
}

std::string Attribute::getType() const { return "Attribute"; }
std::string Attribute::getFactoryName() const { return getType(); }
std::string Attribute::getName() const { return getAnnotation(nameKey(), true); }
std::string Attribute::getDescr() const { return getAnnotation(descrKey(), true); }
std::string Attribute::getUnits() const { return getAnnotation(unitsKey(), true); }
bool Attribute::hasRange() const { return false; }
bool Attribute::setStringValue(std::string const&) { return false; }
std::string Attribute::getStringValue() const { return {}; }
void Attribute::setValue(Attribute const*) {}
std::ostream& Attribute::operator<<(std::ostream& os) const { return Annotations::operator<<(os); }
texstream& Attribute::toTex(texstream& tex) const { return tex; }
bool Attribute::canBeAutoChangeable() const { return false; }
bool Attribute::isAutoChangeable() const { return false; }
void Attribute::setAutoChangeable(bool) {}
int Attribute::compare(Attribute const&) const { return 0; }
bool Attribute::inSpec(std::ostream&) const { return true; }

std::ostream& operator<<(std::ostream& os, Attribute const& attribute) { return attribute.operator<<(os); }

AttributeWithExpr::AttributeWithExpr(std::string const& name) : Attribute(name) {}
AttributeWithExpr::AttributeWithExpr(std::string const& name, std::string const& expression, std::string const& descr,
                                     std::string const& units)
    : Attribute(name, descr, units), expr(expression) {}
AttributeWithExpr::AttributeWithExpr(AttributeWithExpr const& other) = default;
AttributeWithExpr& AttributeWithExpr::operator=(AttributeWithExpr const& other) = default;
AttributeWithExpr::~AttributeWithExpr() = default;

VRL_DEFINE_PERSISTENCE(AttributeWithExpr, Annotations)

SerFormat<AttributeWithExpr> const& AttributeWithExpr::serFormat() {
    static auto const format = SerFormat<AttributeWithExpr>("AttributeWithExpr", 1)
                                   .doc([](AttributeWithExpr& attribute) { return detail::nameAndUnits(attribute); })
                                   .member(1, "expr", &AttributeWithExpr::expr)
                                   .member(2, "calc", &AttributeWithExpr::calc);
    return format;
}

void AttributeWithExpr::setExpression(std::string const& text) { expr = text; }
void AttributeWithExpr::resetExpression() { expr.clear(); }
std::string AttributeWithExpr::getExpression() const { return expr; }
bool AttributeWithExpr::isCalculated() const { return calc; }
void AttributeWithExpr::setCalculated(bool on) { calc = on; }

int AttributeWithExpr::compare(Attribute const& other) const {
    auto const* const peer = dynamic_cast<AttributeWithExpr const*>(&other);
    if (!peer) return 0;
    int const order = std::strcmp(expr.c_str(), peer->expr.c_str());
    return order < 0 ? -1 : order > 0 ? 1 : 0;
}

template class Serialisable<Attribute>;
template class Serialisable<AttributeWithExpr>;

}  // namespace Vorlane_v1_0
