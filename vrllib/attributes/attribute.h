#pragma once

#include <iosfwd>
#include <string>

#include "vrllib/attributes/annotations.h"
#include "vrllib/core/forward.h"

namespace Vorlane_v1_0 {

/// The base of every parameter: an annotated object with a name, a description and a unit.
///
/// These three are annotations under reserved keys, so whatever copies, saves or clears annotations does it to them:
/// assigning one attribute to another renames the target. After clear() or delAnnotation() of its key, getName and its
/// kin throw the `std::string` "annotation 'vrl::attrName' not found\n" and its kin.
class VRL_API Attribute : public Annotations {
public:
    explicit Attribute(std::string const& name = "", std::string const& descr = "", std::string const& units = "");
    Attribute(Attribute const& other);
    Attribute& operator=(Attribute const& other);
    ~Attribute() override;
    VRL_PERSISTENT(Attribute)

public:
    virtual std::string getType() const;
    /// The name under which the attribute factory makes objects of this class.
    virtual std::string getFactoryName() const;
    virtual std::string getName() const;
    virtual std::string getDescr() const;
    virtual std::string getUnits() const;
    virtual bool hasRange() const;
    /// Sets the value from a text and yields whether it changed. The base changes nothing and yields false.
    virtual bool setStringValue(std::string const& text);
    /// The value as a text; empty in the base.
    virtual std::string getStringValue() const;
    /// Takes over the value of another attribute, and nothing else of it. The base does nothing.
    virtual void setValue(Attribute const* other);
    /// Writes the value; "-X-" in the base.
    virtual std::ostream& operator<<(std::ostream& os) const;
    /// Writes the value to a document, with no escaping and no line end; nothing in the base.
    virtual texstream& toTex(texstream& tex) const;
    /// Writes one source-like expression that rebuilds the value under a name.
    virtual std::ostream& toCpp(std::ostream& os, std::string const& name) const = 0;
    virtual bool canBeAutoChangeable() const;
    virtual bool isAutoChangeable() const;
    virtual void setAutoChangeable(bool on);
    /// Orders two attributes; 0 in the base. See AttributeWithExpr and Value, whose senses differ.
    virtual int compare(Attribute const& other) const;
    /// Whether the value is within its range. If not, a complaint goes to `os`.
    virtual bool inSpec(std::ostream& os) const;

private:
    SerRegister serRegister;
    SerrDoneFlag serDone;
};

/// Writes the attribute by its virtual operator<<.
VRL_API std::ostream& operator<<(std::ostream& os, Attribute const& attribute);

/// An attribute with the text of an expression and a flag that says that the value was calculated.
///
/// The library stores both, and neither parses the text nor looks at the flag: expressions are the affair of hosts and
/// plug-ins. The one rule: a value that is set through the typed path loses its expression.
class VRL_API AttributeWithExpr : public Attribute {
public:
    explicit AttributeWithExpr(std::string const& name = "");
    AttributeWithExpr(std::string const& name, std::string const& expression, std::string const& descr,
                      std::string const& units);
    AttributeWithExpr(AttributeWithExpr const& other);
    AttributeWithExpr& operator=(AttributeWithExpr const& other);
    ~AttributeWithExpr() override;
    VRL_PERSISTENT(AttributeWithExpr)

public:
    /// Stores the text; the value stays.
    void setExpression(std::string const& text);
    void resetExpression();
    std::string getExpression() const;

    bool isCalculated() const;
    void setCalculated(bool on);

protected:
    /// Compares the expressions as zero-terminated bytes: -1 if this one sorts first, 1 if the other does. 0 if they
    /// are equal, or if the other has no expression.
    int compare(Attribute const& other) const override;

private:
    std::string expr;
    bool calc = false;
    SerRegister serRegister;
    SerrDoneFlag serDone;
};

extern template class VRL_INSTANCE Serialisable<Attribute>;
extern template class VRL_INSTANCE Serialisable<AttributeWithExpr>;

namespace detail {

/// The comment of a parameter in a listing: getName, "[", getUnits, "]". It never throws: a missing annotation gives an
/// empty text.
VRL_API std::string nameAndUnits(Attribute const& attribute);

}  // namespace detail
}  // namespace Vorlane_v1_0
