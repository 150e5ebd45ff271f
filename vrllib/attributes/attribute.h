#pragma once

#include <iosfwd>
#include <string>

#include "vrllib/attributes/annotations.h"
#include "vrllib/base/forward.h"

namespace Vorlane_v1_0 {

/// The base of every parameter: an annotated object with a name, a description and a unit.
///
/// These three are annotations under reserved keys, so whatever copies, saves or clears annotations does it to them:
/// assigning one attribute to another renames the target. After clear() or delAnnotation() of its key, getName,
/// getDescr and getUnits throw the `std::string` "annotation 'KEY' not found\n".
class VRL_API Attribute : public Annotations {
public:
    /// Stores the three texts as annotations, empty ones too.
    explicit Attribute(std::string const& name = "", std::string const& descr = "", std::string const& units = "");
    /**@{*/
    /// Copies the annotations, name, description and unit included, and the serialisation register as it is.
    Attribute(Attribute const& other);
    Attribute& operator=(Attribute const& other);
    /**@}*/
    ~Attribute() override;
    VRL_PERSISTENT(Attribute)

public:
    /// The word for the type of the value, such as "Double"; a string of its own in the base.
    virtual std::string getType() const;
    /// The name under which the attribute factory makes objects of this class.
    virtual std::string getFactoryName() const;
    /// The name, by which a list knows the attribute. Throws if its annotation is gone.
    virtual std::string getName() const;
    /// The description. Throws if its annotation is gone.
    virtual std::string getDescr() const;
    /// The unit, a string that nothing interprets. Throws if its annotation is gone.
    virtual std::string getUnits() const;
    /// Whether the value has bounds; false in the base.
    virtual bool hasRange() const;
    /// Sets the value from a string and returns whether it changed. The base changes nothing and returns false.
    virtual bool setStringValue(std::string const& text);
    /// The value as a string; empty in the base.
    virtual std::string getStringValue() const;
    /// Takes over the value of another attribute, and nothing else of it. The base does nothing.
    virtual void setValue(Attribute const* other);
    /// Writes the value; "-X-" in the base.
    virtual std::ostream& operator<<(std::ostream& os) const;
    /// Writes the value to a document, with no escaping and no line end; nothing in the base.
    virtual texstream& toTex(texstream& tex) const;
    /// Writes one source-like expression that rebuilds the value under a name.
    virtual std::ostream& toCpp(std::ostream& os, std::string const& name) const = 0;
    /// Whether setAutoChangeable has an effect; false in the base.
    virtual bool canBeAutoChangeable() const;
    /// Whether a host may change the value by itself; false in the base.
    virtual bool isAutoChangeable() const;
    /// Sets that flag. The base does nothing.
    virtual void setAutoChangeable(bool on);
    /// Orders two attributes; 0 in the base. See AttributeWithExpr and Value, whose senses differ.
    virtual int compare(Attribute const& other) const;
    /// Whether the value is within its range. If not, a complaint goes to `os`.
    virtual bool inSpec(std::ostream& os) const;

private:
    SerrDoneFlag serDone;  // first, where the base leaves room
    SerRegister serRegister;
};

/// Writes the attribute by its virtual operator<<.
VRL_API std::ostream& operator<<(std::ostream& os, Attribute const& attribute);

/// An attribute with the text of an expression and a flag that says that the value was calculated.
///
/// The library stores both, and neither parses the text nor looks at the flag: expressions are left to hosts and
/// plug-ins. The one rule: a value that is set through the typed path loses its expression.
class VRL_API AttributeWithExpr : public Attribute {
public:
    /// Without expression, description and unit.
    explicit AttributeWithExpr(std::string const& name = "");
    /// Stores the texts; the value does not count as calculated.
    AttributeWithExpr(std::string const& name, std::string const& expression, std::string const& descr,
                      std::string const& units);
    /**@{*/
    /// Copies the annotations, the expression, the flag and the serialisation register as it is.
    AttributeWithExpr(AttributeWithExpr const& other);
    AttributeWithExpr& operator=(AttributeWithExpr const& other);
    /**@}*/
    ~AttributeWithExpr() override;
    VRL_PERSISTENT(AttributeWithExpr)

public:
    /// Stores the text; the value stays.
    void setExpression(std::string const& text);
    /// Empties the text; the value and the flag stay.
    void resetExpression();
    /// The text; empty without an expression.
    std::string getExpression() const;

    /**@{*/
    /// The flag that says that the value was calculated. Nothing but these and reading touches it.
    bool isCalculated() const;
    void setCalculated(bool on);
    /**@}*/

protected:
    /// Compares the expressions as zero-terminated bytes: -1 if this one sorts first, 1 if the other does. 0 if they
    /// are equal, or if the other has no expression.
    int compare(Attribute const& other) const override;

private:
    std::string expr;
    SerRegister serRegister;
    bool calc = false;
    SerrDoneFlag serDone;
};

extern template class VRL_INSTANCE Serialisable<Attribute>;
extern template class VRL_INSTANCE Serialisable<AttributeWithExpr>;

/// @cond
// Of most parameters only the value differs from others.
template <>
template <>
VRL_API bool Serialisable<Attribute>::writeTo(detail::BinaryWriter s, Attribute& parameter, std::string const& name);
template <>
template <>
VRL_API bool Serialisable<Attribute>::readFrom(detail::BinaryReader d, Attribute& parameter);
/// @endcond

namespace detail {

/// The comment of a parameter in a listing: getName, "[", getUnits, "]". It never throws: a missing annotation counts
/// as empty.
VRL_API std::string nameAndUnits(Attribute const& attribute);

}  // namespace detail
}  // namespace Vorlane_v1_0
