#include "vrllib/attributes/attributes.h"

#include <iostream>
#include <limits>
#include <sstream>
#include <type_traits>

#include "vrllib/attributes/plain_value.h"
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

/// Never throws: std::cerr may be set to throw when it fails, and there is nowhere left to say so.
void report(std::string const& name, char const* what) {
    try {
        std::cerr << "  -- param " << name << what;
    } catch (...) {
    }
}
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
#define VRL_REGISTER_(T, Word, Name) registerKind<Value<T>>(factory);
        VRL_FOR_VALUE_TYPES(VRL_REGISTER_)
#undef VRL_REGISTER_
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
    std::string name = a->getName();
    if (attrOrder.empty()) attrOrder.reserve(4);  // as most kinds have at least
    attrOrder.push_back(name);
    // A taken name stays, and the handle made here deletes `a`.
    attributes.try_emplace(std::move(name), shared_ptr<Attribute>(a));
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
#define VRL_ADD_(T, Word, Name)                                                                                        \
    Attribute* Attributes::add##Name(std::string const& name, T const& value, std::string const& descr,                \
                                     std::string const& units) {                                                       \
        return addValue(name, value, descr, units);                                                                    \
    }
VRL_FOR_VALUE_TYPES(VRL_ADD_)
#undef VRL_ADD_

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

/// The parameter if it is a value of that type, null if it is not.
template <class T>
Value<T>* Attributes::valueOf(std::string const& name) const {
    Attribute* const attribute = _find(name)->second.get();
    Value<T>* const plain = detail::asPlainValue<T>(attribute);
    return plain ? plain : dynamic_cast<Value<T>*>(attribute);
}

/// The value of a parameter of type T, or what can be taken for one.
template <class T>
T Attributes::converted(std::string const& name) const {
    if (auto const* const value = valueOf<T>(name)) return value->getValue();
    if constexpr (std::is_same_v<T, bool>) {
        return getInteger(name) != 0;
    } else if constexpr (std::is_same_v<T, int>) {
        if (auto const* const number = valueOf<double>(name)) return truncate(number->getValue());
    } else if constexpr (std::is_same_v<T, double>) {
        if (auto const* const number = valueOf<int>(name)) return number->getValue();
    } else if constexpr (std::is_same_v<T, std::complex<double>>) {
        return getDouble(name);
    }
    typerr(name);
}

#define VRL_TYPED_ACCESS_(T, Word, Name)                                                                               \
    template <>                                                                                                        \
    T Attributes::get<T>(std::string const& name) const {                                                              \
        auto const* const value = valueOf<T>(name);                                                                    \
        if (!value) typerr(name);                                                                                      \
        return value->getValue();                                                                                      \
    }                                                                                                                  \
    template <>                                                                                                        \
    void Attributes::set<T>(std::string const& name, T const& value) {                                                 \
        Value<T>* const target = valueOf<T>(name);                                                                     \
        if (!target) typerr(name);                                                                                     \
        target->setValue(value);                                                                                       \
    }                                                                                                                  \
    T Attributes::get##Name(std::string const& name) const { return converted<T>(name); }
VRL_FOR_VALUE_TYPES(VRL_TYPED_ACCESS_)
#undef VRL_TYPED_ACCESS_

namespace {

/// Sets a parameter through its gate; a complex value also where the list takes its real part for a double.
template <class T>
void setNamed(Attributes& list, std::string const& name, T const& value, bool doubleAsComplex) {
    if constexpr (std::is_same_v<T, std::complex<double>>) {
        if (doubleAsComplex && !dynamic_cast<Value<T> const*>(list.get(name)))
            return list.set<double>(name, value.real());
    }
    list.set<T>(name, value);
}

}  // namespace

#define VRL_SET_(T, Word, Name)                                                                                        \
    void Attributes::set##Name(std::string const& name, T const& value) {                                              \
        setNamed<T>(*this, name, value, doubleAsComplex);                                                              \
    }
VRL_FOR_VALUE_TYPES(VRL_SET_)
#undef VRL_SET_

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
