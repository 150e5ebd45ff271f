#pragma once

#include <cxxabi.h>

#include <cstddef>
#include <cstring>
#include <sstream>
#include <string>
#include <type_traits>
#include <typeinfo>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "vrllib/attributes/attribute.h"
#include "vrllib/attributes/attributes.h"
#include "vrllib/attributes/value.h"

// What the tests of the attribute classes share: concrete classes, and ways to see the effects of an operation.

namespace probes {

using namespace Vorlane_v1_0;

/// How often vrlbreaker was called in this program, by whomever.
int breakerCalls();

/// An attribute with the least that a class has to define.
class Bare : public Attribute {
public:
    using Attribute::Attribute;
    std::ostream& toCpp(std::ostream& os, std::string const&) const override { return os << "bare"; }
};

/// The same with an expression; its comment in listings is open to tests.
class Formula : public AttributeWithExpr {
public:
    using AttributeWithExpr::AttributeWithExpr;
    using AttributeWithExpr::getSerDoc;
    std::ostream& toCpp(std::ostream& os, std::string const&) const override { return os << "formula"; }
};

/// A value that counts its own deaths.
class Mortal : public Value<double> {
public:
    Mortal(std::string const& name, int& deathCount) : Value<double>(name), deaths(deathCount) {}
    Mortal(Mortal const&) = delete;
    Mortal& operator=(Mortal const&) = delete;
    ~Mortal() override { ++deaths; }

private:
    int& deaths;
};

/// The names of a list in the order of adding.
inline std::vector<std::string> namesOf(Attributes const& list) { return {list.begin(), list.end()}; }

inline int countOf(Attributes const& list) { return list.getVersionInfo().get(); }

/// The string that an action throws as an object of exactly the type T. Any other outcome returns another string.
template <class T, class Action>
std::string thrownBy(Action action) {
    try {
        action();
    } catch (T const& text) {
        if (*abi::__cxa_current_exception_type() == typeid(T)) return text;
        return "(thrown as another type)";
    } catch (...) {
        return "(thrown as another type)";
    }
    return "(nothing thrown)";
}

/// What an action leaves on the standard error stream.
template <class Action>
std::string stderrOf(Action action) {
    testing::internal::CaptureStderr();
    try {
        action();
    } catch (...) {
        ADD_FAILURE() << "an exception came out";
    }
    return testing::internal::GetCapturedStderr();
}

/// What the operator<< for streams writes; it has to return the stream.
template <class T>
std::string streamed(T const& object) {
    std::ostringstream os;
    EXPECT_EQ(&(os << object), &os);
    return os.str();
}

/// What toCpp writes; it has to return the stream.
inline std::string cppOf(Attribute const& attribute, std::string const& name) {
    std::ostringstream os;
    EXPECT_EQ(&attribute.toCpp(os, name), &os);
    return os.str();
}

/// The place of a virtual operation in the table of its class, counted from 0; -1 if the operation is not virtual.
template <class Operation>
std::ptrdiff_t slotOf(Operation operation) {
    // A pointer to a virtual member begins with 1 + its offset in the table, any other one with an even address.
    std::ptrdiff_t word = 0;
    std::memcpy(&word, &operation, sizeof word);
    return word % 2 == 0 ? -1 : (word - 1) / static_cast<std::ptrdiff_t>(sizeof(void*));
}

/// The name of a case of a table: the label of its row.
inline constexpr auto labelOf = [](auto const& info) { return std::string(info.param.label); };

/// Whether code outside of T may call compare on it.
template <class T, class = void>
struct OffersCompare : std::false_type {};
template <class T>
struct OffersCompare<T, std::void_t<decltype(std::declval<T const&>().compare(std::declval<Attribute const&>()))>>
    : std::true_type {};

/// What the check writes; it has to be false if that is anything.
template <class Ranged>
std::string complaint(Ranged const& value) {
    std::ostringstream os;
    bool const good = value.inSpec(os);
    EXPECT_EQ(good, os.str().empty());
    return os.str();
}

}  // namespace probes
