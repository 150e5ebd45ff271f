#pragma once

#include <complex>
#include <cstddef>
#include <iosfwd>
#include <map>
#include <string>
#include <vector>

#include "vrllib/attributes/annotations.h"
#include "vrllib/attributes/value.h"
#include "vrllib/core/change_counter.h"
#include "vrllib/core/factory.h"
#include "vrllib/core/shared_ptr.h"
#include "vrllib/serialisation/containers.h"

namespace Vorlane_v1_0 {

namespace detail {

/// Keeps a function template's argument from being deduced.
template <class T>
struct Identity {
    using type = T;
};

}  // namespace detail

/// The named parameters of a design object, with notes of their own.
///
/// The list owns its parameters through handles. It knows them by name, and remembers the order of adding: iterators,
/// indices and size() follow that order, while printing and checking go by name. Two exceptions are part of the design:
/// a name that is added twice is in the order twice and among the parameters once, and a parameter that was made
/// while reading has no place in the order.
///
/// A copy is shallow: both lists then hold the same parameters.
///
/// Errors: an unknown name throws the `std::string` "variable 'NAME' not found\n", a parameter of another type
/// "variable 'NAME' type mismatch\n". The operations that write from a string or from another attribute never throw;
/// they report on std::cerr. Indices are the caller's duty unless said otherwise.
///
/// Change counter: add counts 1, addAttribute 2, writing from a string 1 if it changed the value, by index always,
/// writing from an attribute 1 through set and 2 through setAttribute (less 1 on failure); the typed setters count
/// nothing. So a difference says that something happened, and its size says nothing.
class VRL_API Attributes : public Annotations {
public:
    /// The parameters by name.
    using AttributeMap = std::map<std::string, shared_ptr<Attribute>>;
    /// The names in the order of adding.
    using Order = std::vector<std::string>;
    /**@{*/
    /// Refers to a name; valid until the next parameter is added.
    using iterator = Order::iterator;
    using const_iterator = Order::const_iterator;
    /**@}*/

    Attributes();
    /// Shares the parameters and copies everything else; the serialisation register starts empty.
    Attributes(Attributes const& other);
    /// As the copy, but the target keeps its change counter and its register.
    Attributes& operator=(Attributes const& other);
    ~Attributes() override;
    VRL_PERSISTENT(Attributes)

public:
    /// Whether every parameter is within its range. If not, a heading and all complaints go to `os`.
    virtual bool inSpec(std::ostream& os) const;

    /**@{*/
    /// Adds a parameter under its present name and takes it over; null is ignored. Returns the parameter.
    ///
    /// If the name is taken, the new parameter is deleted, the first one stays, the name is in the order twice, and
    /// the result points to the deleted object. Ask find first.
    Attribute* add(Attribute* a);
    Attribute* addAttribute(Attribute* a);
    /**@}*/

    /**@{*/
    /// addBool, addInteger, addDouble, addComplex, addString: adds a new parameter of that type. Returns it, by the
    /// rules of add: ask find first.
#define VRL_ADD_(T, Word, Name)                                                                                        \
    Attribute* add##Name(std::string const& name, T const& value, std::string const& descr = "",                       \
                         std::string const& units = "");
    VRL_FOR_VALUE_TYPES(VRL_ADD_)
#undef VRL_ADD_
    /**@}*/

    bool find(std::string const& name) const;
    /**@{*/
    /// The parameter of that name, which the list goes on owning.
    Attribute* get(std::string const& name);
    Attribute* get(std::string const& name) const;
    Attribute* getAttribute(std::string const& name);
    Attribute* getAttribute(std::string const& name) const;
    /**@}*/

    /**@{*/
    /// The parameter at a place in the order of adding.
    Attribute const& get(std::size_t const& i);
    Attribute const& get(std::size_t const& i) const;
    /**@}*/
    std::string getDescr(std::string const& name) const;
    std::string getUnits(std::string const& name) const;

    /// The number of names in the order of adding.
    std::size_t size() const { return attrOrder.size(); }
    /**@{*/
    /// The names in the order of adding.
    iterator begin() { return attrOrder.begin(); }
    iterator end() { return attrOrder.end(); }
    const_iterator begin() const { return attrOrder.begin(); }
    const_iterator end() const { return attrOrder.end(); }
    iterator beginAttribute() { return attrOrder.begin(); }
    iterator endAttribute() { return attrOrder.end(); }
    const_iterator beginAttribute() const { return attrOrder.begin(); }
    const_iterator endAttribute() const { return attrOrder.end(); }
    /**@}*/

    /**@{*/
    /// The change counter.
    Version& getVersionInfo() { return versionInfo; }
    Version const& getVersionInfo() const { return versionInfo; }
    /**@}*/

    /// From now on setComplex stores the real part in a parameter of type double. Nothing takes this back.
    void allowDoubleAsComplex();

    /// The factory of attribute types. If it has no key at all, the value types are registered first.
    static FactoryNoArg<std::string, Attribute>& factory();

    /// The value of a parameter of exactly this type (a type of VRL_FOR_VALUE_TYPES).
    template <class T>
    T get(std::string const& name) const;
    /**@{*/
    /// getBool, getInteger, getDouble, getComplex, getString: the value of a parameter of that type, or of one that it
    /// can be taken from. An int is also taken from a double, truncated toward zero, a double from an int, a complex
    /// value from either as the real part, and a bool from what getInteger takes: 0.5 is false.
#define VRL_GET_(T, Word, Name) T get##Name(std::string const& name) const;
    VRL_FOR_VALUE_TYPES(VRL_GET_)
#undef VRL_GET_
    /**@}*/

    /// Sets a parameter of exactly this type through its gate: warns on a range, empties the expression.
    template <class T>
    void set(std::string const& name, typename detail::Identity<T>::type const& value);
    /**@{*/
    /// setBool, setInteger, setDouble, setComplex, setString: the same. setComplex may also set a parameter of type
    /// double; see allowDoubleAsComplex.
#define VRL_SET_(T, Word, Name) void set##Name(std::string const& name, T const& value);
    VRL_FOR_VALUE_TYPES(VRL_SET_)
#undef VRL_SET_
    /**@}*/

    /**@{*/
    /// Sets a parameter from a string, without a look at its range or its expression. Returns whether the value
    /// changed. The index is checked.
    bool setAttribute(std::string const& name, std::string const& text);
    bool setAttribute(std::size_t const& i, std::string const& text);
    bool set(std::size_t const& i, std::string const& text);
    /**@}*/

    /**@{*/
    /// Sets a parameter to the value of another attribute, which stays with the caller. Returns `a`, or by name null on
    /// failure.
    Attribute* set(std::string const& name, Attribute* a);
    Attribute* set(std::size_t const& i, Attribute* a);
    Attribute* setAttribute(std::string const& name, Attribute* a);
    Attribute* setAttribute(std::size_t const& i, Attribute* a);
    /**@}*/

    /// Stores the text of an expression with a parameter; its value stays. Returns this list. Throws if the name is
    /// unknown or the parameter takes no expression.
    Attributes& setExpression(std::string const& name, std::string const& expr);

    /// Writes "  NAME= VALUE\n" for each parameter in order of the names.
    std::ostream& operator<<(std::ostream& os) const;

private:
    [[noreturn]] void typerr(std::string const& name) const;
    AttributeMap::iterator _find(std::string const& name);
    AttributeMap::const_iterator _find(std::string const& name) const;
    template <class T>
    Value<T>* valueOf(std::string const& name) const;
    template <class T>
    Attribute* addValue(std::string const& name, T const& value, std::string const& descr, std::string const& units);
    template <class T>
    T converted(std::string const& name) const;

    AttributeMap attributes;
    Version versionInfo;
    bool doubleAsComplex = false;
    SerrDoneFlag serDone;
    Order attrOrder;
    SerRegister serRegister;
};

/// Writes the parameters by their list's operator<<.
VRL_API std::ostream& operator<<(std::ostream& os, Attributes const& attributes);

/// @cond
#define VRL_TYPED_ACCESS_(T, Word, Name)                                                                               \
    template <>                                                                                                        \
    VRL_API T Attributes::get<T>(std::string const& name) const;                                                       \
    template <>                                                                                                        \
    VRL_API void Attributes::set<T>(std::string const& name, T const& value);
VRL_FOR_VALUE_TYPES(VRL_TYPED_ACCESS_)
#undef VRL_TYPED_ACCESS_
/// @endcond

extern template class VRL_INSTANCE Serialisable<Attributes>;
extern template class VRL_INSTANCE SerialisablePtrMap<std::string, Attribute>;
extern template class VRL_INSTANCE SerialisableAttrMap<std::string, Attribute>;

}  // namespace Vorlane_v1_0
