#include <cmath>
#include <set>
#include <sstream>

#include "check/findings.h"
#include "guard/thrown.h"
#include "text/phrases.h"

// Rules that look at parameters, those of elements and those of the design itself.

namespace vrltool::check {

namespace {

/// Shows each parameter of a scope to a function; of elements without any of those oddities none, if there are any.
template <class Function>
void eachParameter(Scope const& scope, Findings& findings, unsigned oddities, Function visit) {
    auto const visitAll = [&](CheckedElement const& checked) {
        if (!checked.list || (oddities && !(checked.oddities & oddities))) return;
        for (Parameter const& parameter : parametersOf(*checked.list)) visit(checked, parameter);
    };
    visitAll(scope.own);
    for (CheckedElement const& checked : scope.checkedElements)
        if (findings.covers(checked)) visitAll(checked);
}

Place placeOf(CheckedElement const& checked, Parameter const& parameter) {
    return {checked.path, "", parameter.name, 0};
}

/// "parameter 'length' is 5 um".
std::string valueSentence(Parameter const& parameter) {
    return "parameter " + inQuotes(parameter.name) + " is " + parameter.text +
           (parameter.unit.empty() || parameter.unit == "1" ? "" : " " + parameter.unit);
}

std::string withUnit(std::string const& text, std::string const& unit) {
    return unit.empty() || unit == "1" ? text : text + " " + unit;
}

bool emptyRange(Parameter const& parameter) {
    auto const above = [](auto const& min, auto const& max) { return min > max; };
    if (auto const* const min = std::get_if<int>(&parameter.min)) return above(*min, std::get<int>(parameter.max));
    if (auto const* const min = std::get_if<double>(&parameter.min))
        return above(*min, std::get<double>(parameter.max));
    if (auto const* const min = std::get_if<std::complex<double>>(&parameter.min))
        return above(min->real(), std::get<std::complex<double>>(parameter.max).real());
    return false;
}

std::string firstLine(std::string const& text) { return text.substr(0, text.find('\n')); }

/// The complaint of a parameter of a type whose bounds only its plug-in knows.
std::string complaintOf(Parameter const& parameter) {
    std::ostringstream complaint;
    quietlyThrownBy([&] { parameter.attribute->inSpec(complaint); });
    return firstLine(complaint.str());
}

void valueOutOfRange(Scope const& scope, Findings& findings) {
    eachParameter(scope, findings, kNotInRange, [&](CheckedElement const& checked, Parameter const& parameter) {
        if (parameter.inRange) return;
        std::string const value = valueSentence(parameter);
        std::string const range = withUnit(rangeText(parameter), parameter.unit);
        if (!parameter.hasRange)
            findings.add(placeOf(checked, parameter), value + ", which its type refuses: " + complaintOf(parameter),
                         "give it a value that its type accepts", {parameter});
        else if (emptyRange(parameter))
            findings.add(placeOf(checked, parameter), value + ", and its range " + range + " contains no value",
                         "mend the range in the plug-in", {parameter});
        else
            findings.add(placeOf(checked, parameter), value + ", outside its range " + range,
                         "give it a value from " + range, {parameter});
    });
}

enum class Finite { kYes, kNotANumber, kInfinite };

Finite finiteness(ParameterValue const& value) {
    std::complex<double> number = 0;
    if (auto const* const real = std::get_if<double>(&value)) number = *real;
    if (auto const* const complex = std::get_if<std::complex<double>>(&value)) number = *complex;
    if (std::isnan(number.real()) || std::isnan(number.imag())) return Finite::kNotANumber;
    return std::isinf(number.real()) || std::isinf(number.imag()) ? Finite::kInfinite : Finite::kYes;
}

// Bounds that let infinity in are intended; those of a stand-in are not known.
void valueNotFinite(Scope const& scope, Findings& findings) {
    eachParameter(scope, findings, kMayBeInfinite, [&](CheckedElement const& checked, Parameter const& parameter) {
        Finite const finite = finiteness(parameter.value);
        if (finite == Finite::kNotANumber || (finite == Finite::kInfinite && !parameter.hasRange && !checked.standIn))
            findings.add(placeOf(checked, parameter), valueSentence(parameter) + ", which is no finite number",
                         "give it a number", {parameter});
    });
}

void unknownParameterType(Scope const& scope, Findings& findings) {
    std::set<std::string> missing;
    for (MissingKind const& kind : scope.design->missing)
        if (kind.what == MissingKind::What::kParameter) missing.insert(kind.name);
    if (missing.empty()) return;
    eachParameter(scope, findings, 0, [&](CheckedElement const& checked, Parameter const& parameter) {
        if (missing.count(parameter.type))
            findings.add(placeOf(checked, parameter),
                         "parameter " + inQuotes(parameter.name) + " is of the type " + inQuotes(parameter.type) +
                             ", which no loaded plug-in has",
                         "load the plug-in that brings it; 'vrl plugins' shows what is loaded");
    });
}

void undeclaredParameter(CheckedElement const& checked, Findings& findings) {
    if (!(checked.oddities & kHasUndeclared)) return;
    std::vector<std::string> const declared(checked.list->beginAttribute(), checked.list->endAttribute());
    for (ListedParameter const& listed : listedParameters(*checked.list))
        if (!listed.declared)
            findings.add({checked.path, "", listed.name, 0},
                         "parameter " + inQuotes(listed.name) + " came with the file; the kind " +
                             inQuotes(checked.element->kind) + " does not have it",
                         namesHint(listed.name, declared, "its parameters"));
}

void expressionNotCalculated(Scope const& scope, Findings& findings) {
    eachParameter(scope, findings, kHasExpression, [&](CheckedElement const& checked, Parameter const& parameter) {
        auto const* const holder = dynamic_cast<vrl::AttributeWithExpr const*>(parameter.attribute);
        if (parameter.expression.empty() || !holder || holder->isCalculated()) return;
        findings.add(placeOf(checked, parameter),
                     valueSentence(parameter) + ", which was not calculated from its expression " +
                         inQuotes(parameter.expression),
                     "let the host calculate it, or set the value, which takes the expression away", {parameter});
    });
}

// The check of a composite hands on what the blocks inside say, and those are asked by themselves.
void ownCheck(CheckedElement const& checked, Findings& findings) {
    if ((checked.oddities & kNotInRange) || dynamic_cast<vrl::CBB const*>(checked.element->block)) return;
    vrl::Attributes const& list = *checked.element->block;
    static std::ostringstream complaint;  // made only once, which is most of its cost
    if (complaint.tellp() != 0) complaint = std::ostringstream();
    bool good = true;
    std::string const thrown = quietlyThrownBy([&] { good = list.inSpec(complaint); });
    if (!thrown.empty()) complaint << "it threw " << thrown;
    if (!good || !thrown.empty())
        findings.add({checked.path, "", "", 0},
                     "the check of the kind " + inQuotes(checked.element->kind) +
                         " itself complains: " + firstLine(complaint.str()),
                     "set the parameters so that they go together; 'vrl describe' shows them");
}

}  // namespace

Rules const& parameterRules() {
    static Rules const rules{
        {"value-out-of-range",
         "a parameter is outside its range",
         Severity::kError,
         kKind,
         valueOutOfRange,
         {"The value of a parameter is less than the least or greater than the greatest that its block declares. The "
          "bounds belong to the range. Such a value can be set and saved by any program: 'vrl import' carries it over "
          "with "
          "a warning, and 'vrl set' refuses it unless it is forced.",
          "The range is what the foundry can print and what the model of the block is valid for. Outside, a bend "
          "radiates, a gap is not resolved, or a simulation returns numbers that mean nothing.",
          "ring: parameter 'radius' is 2 um, outside its range 5 to 500 um [value-out-of-range]",
          "Give it a value from the range, or take another block that is made for this value."}},
        {"value-not-finite",
         "a parameter is no finite number",
         Severity::kError,
         kNothing,
         valueNotFinite,
         {"The value of a parameter is nan, or it is infinite and its range does not ask for that.",
          "No range stops nan: it is neither too small nor too great, passes every check, and turns everything "
          "that is calculated from it, a whole layout at worst, into nan.",
          "upper: parameter 'length' is nan um, which is no finite number [value-not-finite]",
          "Set the parameter to a number. Mostly an expression or a script before divided by zero."}},
        {"unknown-parameter-type",
         "a parameter is of a type that no loaded plug-in has",
         Severity::kError,
         kNothing,
         unknownParameterType,
         {"The file holds a parameter of a type that comes from a plug-in, and no loaded plug-in has it. Its value "
          "cannot be read; its name, unit and description can.",
          "What the parameter says is lost to everybody who works with the design without that plug-in.",
          "awg: parameter 'profile' is of the type 'Spline', which no loaded plug-in has [unknown-parameter-type]",
          "Install and configure the plug-in. 'vrl plugins' shows which files were tried and why one failed."}},
        {"undeclared-parameter",
         "a parameter that the kind of its block does not have",
         Severity::kWarning,
         kKind,
         undeclaredParameter,
         {"The file holds a parameter that blocks of this kind, as the loaded plug-in makes them, do not declare.",
          "Nothing reads it. Mostly the plug-in renamed the parameter since the design was saved: then the "
          "value of the designer is under the old name without effect, and the new one has its default.",
          "ring: parameter 'rad' came with the file; the kind 'sfBend' does not have it; did you mean 'radius'? "
          "[undeclared-parameter]",
          "Carry the value over to the parameter that the kind has now, and save the design with a new block."}},
        {"expression-not-calculated",
         "a parameter was not calculated from its expression",
         Severity::kNote,
         kNothing,
         expressionNotCalculated,
         {"The parameter has an expression, and its value is not marked as calculated. The library stores expressions; "
          "to calculate them is left to the program that works on the design.",
          "The value that layout and simulation use may have nothing to do with the expression that the designer "
          "reads.",
          "upper: parameter 'length' is 100 um, which was not calculated from its expression 'L0 + dL' "
          "[expression-not-calculated]",
          "Open the design in the program that calculates expressions, or set the value: that takes the expression "
          "away."}},
        {"own-check",
         "the check of a kind itself complains",
         Severity::kError,
         kKind,
         ownCheck,
         {"A kind can have a check of its own, of parameters that have to go together. It complains, though each "
          "parameter is within its range.",
          "A coupler whose gap and width are both allowed may still be one that the foundry cannot print; only the "
          "author of the block knows.",
          "dc: the check of the kind 'fabCoupler' itself complains: gap and width exceed the pitch [own-check]",
          "Follow what the block says. 'vrl describe KIND' shows its parameters."}},
    };
    return rules;
}

}  // namespace vrltool::check
