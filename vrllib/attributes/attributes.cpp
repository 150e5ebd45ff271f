#include "vrllib/attributes/attributes.h"

#include <iostream>
#include <limits>
#include <sstream>
#include <type_traits>

#include "vrllib/core/messages.h"
#include "vrllib/core/type_factory.h"

namespace Vorlane_v1_0 {

namespace {

/// Toward zero; what no int can hold becomes the nearest one, and NaN becomes 0.
int truncate(double value) {
    using Limits = std::numeric_limits<int>;
    if (value != value) return 0;
    if (value <= Limits::min()) return Limits::min();
    if (value >= Limits::max()) return Limits::max();
    return static_cast<int>(value);
}

void report(std::string const& name, char const* what) { std::cerr << "  -- param " << name << what; }
/// The index in decimal, whatever the number format of std::cerr is.
void report(std::size_t i, char const* what) { report(std::to_string(i), what); }
constexpr char kSetFailed[] = " : set failed\n";
constexpr char kUnknown[] = " : unknown!\n";

template <class T>
void registerKind(FactoryNoArg<std::string, Attribute>& factory) {
    factory.Register<T>(T("").getFactoryName());
}

}  // namespace

Attributes::Attributes() = default;
Attributes::Attributes(Attributes const& other)
    : Annotations(other),
      attributes(other.attributes),
      versionInfo(other.versionInfo),
      doubleAsComplex(other.doubleAsComplex),
      attrOrder(other.attrOrder) {}
Attributes& Attributes::operator=(Attributes const& other) {
    Annotations::operator=(other);
    attributes = other.attributes;
    attrOrder = other.attrOrder;
    doubleAsComplex = other.doubleAsComplex;
    return *this;
}
Attributes::~Attributes() = default;

VRL_DEFINE_PERSISTENCE(Attributes, Annotations)

SerFormat<Attributes> const& Attributes::serFormat() {
    static auto const format =
        SerFormat<Attributes>("Attributes", 1)
            .member<SerialisableAttrMap<std::string, Attribute>>(1, "attributes", &Attributes::attributes);
    return format;
}

template <>
Attribute* detail::createStored<Attribute>(std::string const& type) {
    return type.empty() ? nullptr : Attributes::factory().create(type);
}

template <>
shared_ptr<Attribute> detail::defaultObject<Attribute>() {
    return firstKeyObject<Attribute>();
}

FactoryNoArg<std::string, Attribute>& Attributes::factory() {
    auto& factory = detail::typeFactory<Attribute>();
    if (!factory.hasData()) {
        registerKind<Value<bool>>(factory);
        registerKind<Value<int>>(factory);
        registerKind<Value<double>>(factory);
        registerKind<Value<std::complex<double>>>(factory);
        registerKind<Value<std::string>>(factory);
    }
    return factory;
}

bool Attributes::inSpec(std::ostream& os) const {
    std::ostringstream complaints;
    bool good = true;
    for (auto const& entry : attributes)
        if (entry.second && !entry.second->inSpec(complaints)) good = false;
    if (!good) os << "*** The attribute list contains errors: ***\n" << complaints.str() << "\n";
    return good;
}

Attribute* Attributes::add(Attribute* a) {
    if (!a) return nullptr;
    versionInfo.update();
    std::string const name = a->getName();
    attrOrder.push_back(name);
    attributes.emplace(name, shared_ptr<Attribute>(a));  // a taken name stays, and the handle made here deletes `a`
    return a;
}

Attribute* Attributes::addAttribute(Attribute* a) {
    versionInfo.update();
    return add(a);
}

template <class T>
Attribute* Attributes::addValue(std::string const& name, T const& value, std::string const& descr,
                                std::string const& units) {
    return add(new Value<T>(name, value, descr, units));
}
Attribute* Attributes::addBool(std::string const& name, bool const& value, std::string const& descr,
                               std::string const& units) {
    return addValue(name, value, descr, units);
}
Attribute* Attributes::addInteger(std::string const& name, int const& value, std::string const& descr,
                                  std::string const& units) {
    return addValue(name, value, descr, units);
}
Attribute* Attributes::addDouble(std::string const& name, double const& value, std::string const& descr,
                                 std::string const& units) {
    return addValue(name, value, descr, units);
}
Attribute* Attributes::addComplex(std::string const& name, std::complex<double> const& value, std::string const& descr,
                                  std::string const& units) {
    return addValue(name, value, descr, units);
}
Attribute* Attributes::addString(std::string const& name, std::string const& value, std::string const& descr,
                                 std::string const& units) {
    return addValue(name, value, descr, units);
}

void Attributes::typerr(std::string const& name) const {
    std::string const text = "variable '" + name + "' type mismatch\n";
    vrlbreaker();
    throw text;
}

Attributes::AttributeMap::const_iterator Attributes::_find(std::string const& name) const {
    auto const found = attributes.find(name);
    if (found != attributes.end()) return found;
    std::string const text = "variable '" + name + "' not found\n";
    vrlbreaker();
    throw text;
}
Attributes::AttributeMap::iterator Attributes::_find(std::string const& name) {
    auto const found = static_cast<Attributes const*>(this)->_find(name);
    return attributes.erase(found, found);  // erases nothing: turns the iterator into one that may change the map
}

bool Attributes::find(std::string const& name) const { return attributes.find(name) != attributes.end(); }
Attribute* Attributes::get(std::string const& name) { return _find(name)->second.get(); }
Attribute* Attributes::get(std::string const& name) const { return _find(name)->second.get(); }
Attribute* Attributes::getAttribute(std::string const& name) { return get(name); }
Attribute* Attributes::getAttribute(std::string const& name) const { return get(name); }
Attribute const& Attributes::get(std::size_t const& i) { return *get(attrOrder[i]); }
Attribute const& Attributes::get(std::size_t const& i) const { return *get(attrOrder[i]); }
std::string Attributes::getDescr(std::string const& name) const { return get(name)->getDescr(); }
std::string Attributes::getUnits(std::string const& name) const { return get(name)->getUnits(); }

void Attributes::allowDoubleAsComplex() { doubleAsComplex = true; }

/// The parameter if it is of that class, null if it is of another one.
template <class T>
T const* Attributes::valueOf(std::string const& name) const {
    return dynamic_cast<T const*>(get(name));
}

template <class Number>
bool Attributes::getNumber(std::string const& name, Number& number) const {
    Attribute const* const attribute = get(name);
    if (auto const* const asInt = dynamic_cast<Value<int> const*>(attribute)) {
        number = static_cast<Number>(asInt->getValue());
        return true;
    }
    if (auto const* const asDouble = dynamic_cast<Value<double> const*>(attribute)) {
        if constexpr (std::is_same_v<Number, int>)
            number = truncate(asDouble->getValue());
        else
            number = asDouble->getValue();
        return true;
    }
    return false;
}

#define VRL_TYPED_ACCESS_(T)                                                                                           \
    template <>                                                                                                        \
    T Attributes::get<T>(std::string const& name) const {                                                              \
        auto const* const value = valueOf<Value<T>>(name);                                                             \
        if (!value) typerr(name);                                                                                      \
        return value->getValue();                                                                                      \
    }                                                                                                                  \
    template <>                                                                                                        \
    void Attributes::set<T>(std::string const& name, T const& value) {                                                 \
        auto* const target = dynamic_cast<Value<T>*>(get(name));                                                       \
        if (!target) typerr(name);                                                                                     \
        target->setValue(value);                                                                                       \
    }
VRL_TYPED_ACCESS_(bool)
VRL_TYPED_ACCESS_(int)
VRL_TYPED_ACCESS_(double)
VRL_TYPED_ACCESS_(std::complex<double>)
VRL_TYPED_ACCESS_(std::string)
#undef VRL_TYPED_ACCESS_

bool Attributes::getBool(std::string const& name) const {
    auto const* const value = valueOf<Value<bool>>(name);
    return value ? value->getValue() : getInteger(name) != 0;
}
int Attributes::getInteger(std::string const& name) const {
    int number = 0;
    if (!getNumber(name, number)) typerr(name);
    return number;
}
double Attributes::getDouble(std::string const& name) const {
    double number = 0;
    if (!getNumber(name, number)) typerr(name);
    return number;
}
std::complex<double> Attributes::getComplex(std::string const& name) const {
    auto const* const value = valueOf<Value<std::complex<double>>>(name);
    return value ? value->getValue() : std::complex<double>(getDouble(name));
}
std::string Attributes::getString(std::string const& name) const { return get<std::string>(name); }

void Attributes::setBool(std::string const& name, bool const& value) { set<bool>(name, value); }
void Attributes::setInteger(std::string const& name, int const& value) { set<int>(name, value); }
void Attributes::setDouble(std::string const& name, double const& value) { set<double>(name, value); }
void Attributes::setComplex(std::string const& name, std::complex<double> const& value) {
    if (auto* const target = dynamic_cast<Value<std::complex<double>>*>(get(name)))
        target->setValue(value);
    else if (doubleAsComplex)
        set<double>(name, value.real());
    else
        typerr(name);
}
void Attributes::setString(std::string const& name, std::string const& value) { set<std::string>(name, value); }

// The catch-alls below swallow what the parameter's own operation throws, plug-ins' included: these ways of writing
// report and never throw.

bool Attributes::setAttribute(std::string const& name, std::string const& text) {
    try {
        Attribute* const attribute = get(name);
        if (attribute) {
            bool const changed = attribute->setStringValue(text);
            versionInfo.update(changed);
            return changed;
        }
        report(name, kUnknown);
    } catch (...) {
        report(name, kSetFailed);
    }
    return false;
}

bool Attributes::set(std::size_t const& i, std::string const& text) {
    if (i >= size()) {
        report(i, kUnknown);
        return false;
    }
    try {
        Attribute* const attribute = get(attrOrder[i]);
        if (attribute) {
            bool const changed = attribute->setStringValue(text);
            versionInfo.update();
            return changed;
        }
        report(i, kUnknown);
    } catch (...) {
        report(i, kSetFailed);
    }
    return false;
}
bool Attributes::setAttribute(std::size_t const& i, std::string const& text) { return set(i, text); }

Attribute* Attributes::set(std::string const& name, Attribute* a) {
    try {
        Attribute* const attribute = get(name);
        if (attribute) {
            attribute->setValue(a);
            versionInfo.update();
            return a;
        }
        report(name, kUnknown);
    } catch (...) {
        report(name, kSetFailed);
    }
    return nullptr;
}
Attribute* Attributes::setAttribute(std::string const& name, Attribute* a) {
    versionInfo.update();
    return set(name, a);
}
Attribute* Attributes::set(std::size_t const& i, Attribute* a) {
    set(attrOrder[i], a);
    return a;
}
Attribute* Attributes::setAttribute(std::size_t const& i, Attribute* a) {
    versionInfo.update();
    return set(i, a);
}

Attributes& Attributes::setExpression(std::string const& name, std::string const& expr) {
    auto* const attribute = dynamic_cast<AttributeWithExpr*>(get(name));
    if (!attribute) typerr(name);
    attribute->setExpression(expr);
    return *this;
}

std::ostream& Attributes::operator<<(std::ostream& os) const {
    for (auto const& entry : attributes) {
        os << "  " << entry.first << "= ";
        if (entry.second) entry.second->operator<<(os);
        os << "\n";
    }
    return os;
}
std::ostream& operator<<(std::ostream& os, Attributes const& attributes) { return attributes.operator<<(os); }

template class Serialisable<Attributes>;
template class SerialisablePtrMap<std::string, Attribute>;
template class SerialisableAttrMap<std::string, Attribute>;

}  // namespace Vorlane_v1_0
