#include "vrllib/attributes/value.h"

#include <complex>
#include <iomanip>
#include <ostream>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "tests/attributes/probes.h"
#include "tests/doc/tex_file.h"
#include "tests/support/sample_design.h"
#include "vrllib/attributes/value_range.h"
#include "vrllib/core/messages.h"

namespace {

using probes::cppOf;
using probes::streamed;
using sample::printed;
using Vorlane_v1_0::Value;

using Complex = std::complex<double>;

TEST(Value, PrintsItsValueAlone) {
    EXPECT_EQ(printed(Value<bool>("v", true, "2*h", "descr", "um")), "1");
    EXPECT_EQ(printed(Value<bool>("v", false)), "0");
    EXPECT_EQ(printed(Value<int>("v", -7, "2*h", "descr", "um")), "-7");
    EXPECT_EQ(printed(Value<double>("v", 1.23456789, "descr", "um")), "1.23457");
    EXPECT_EQ(printed(Value<Complex>("v", {1.5, -2}, "descr", "um")), "(1.5,-2)");
    EXPECT_EQ(printed(Value<std::string>("v", "a \"b\"\n", "descr", "um")), "a \"b\"\n");
    EXPECT_EQ(printed(Value<std::string>("v")), "");
}

TEST(Value, PrintsWithTheFormatOfTheStream) {
    std::ostringstream os;
    os << std::boolalpha << std::hex << std::setprecision(9);
    Value<bool>("v", true).operator<<(os) << " ";
    Value<int>("v", 255).operator<<(os) << " ";
    Value<double>("v", 1.23456789).operator<<(os) << " ";
    Value<Complex>("v", {1.23456789, 2}).operator<<(os) << " ";
    os << std::setw(5);
    EXPECT_EQ(&Value<std::string>("v", "ab").operator<<(os), &os);

    EXPECT_EQ(os.str(), "true ff 1.23456789 (1.23456789,2)    ab");
}

TEST(Value, ABoolIsPrintedOtherwiseThanItsString) {
    Value<bool> const value("v", true);
    EXPECT_EQ(value.getStringValue(), "true");
    EXPECT_EQ(streamed(value), "1");
}

TEST(Value, WritesSource) {
    EXPECT_EQ(cppOf(Value<bool>("v", true, "descr", "um"), "b"), "vrl::Value<bool >(\"b\",1)");
    EXPECT_EQ(cppOf(Value<bool>("v", false), "b"), "vrl::Value<bool >(\"b\",0)");
    EXPECT_EQ(cppOf(Value<int>("v", -7), "n"), "vrl::Value<Int >(\"n\",-7)");
    EXPECT_EQ(cppOf(Value<double>("v", 1.5), "w"), "vrl::Value<Double >(\"w\",1.5)");
    EXPECT_EQ(cppOf(Value<double>("v", 1.23456789), "w"), "vrl::Value<Double >(\"w\",1.23457)");
    EXPECT_EQ(cppOf(Value<Complex>("v", {1, -2}), "c"), "vrl::Value<Complex >(\"c\",(1,-2))");
}

TEST(Value, WritesStringsWithoutQuotesAsSource) {
    EXPECT_EQ(cppOf(Value<std::string>("v", "text"), "s"), "vrl::Value<String >(\"s\",text)");
    EXPECT_EQ(cppOf(Value<std::string>("v", "a \"b\"\\"), "s"), "vrl::Value<String >(\"s\",a \"b\"\\)");
    EXPECT_EQ(cppOf(Value<std::string>("v", ""), "s"), "vrl::Value<String >(\"s\",\"\")");
}

TEST(Value, WritesSourceUnderTheGivenNameAsItIs) {
    EXPECT_EQ(cppOf(Value<int>("own", 1), ""), "vrl::Value<Int >(\"\",1)");
    EXPECT_EQ(cppOf(Value<int>("own", 1), "a\"b"), "vrl::Value<Int >(\"a\"b\",1)");
}

TEST(Value, WritesSourceWithTheFormatOfTheStream) {
    std::ostringstream os;
    os << std::boolalpha << std::setprecision(9);
    Value<bool>("v", true).toCpp(os, "b");
    Value<double>("v", 1.23456789).toCpp(os, "w");

    EXPECT_EQ(os.str(), "vrl::Value<bool >(\"b\",true)vrl::Value<Double >(\"w\",1.23456789)");
}

template <class T>
std::string texOf(T const& held) {
    return texWrittenBy([&](texstream& tex) {
        Value<T> const value("v", held, "descr", "um");
        EXPECT_EQ(&value.toTex(tex), &tex);
    });
}

TEST(Value, WritesItsValueAloneToADocument) {
    EXPECT_EQ(texOf<bool>(true), "1");
    EXPECT_EQ(texOf<int>(-7), "-7");
    EXPECT_EQ(texOf<double>(1.23456789), "1.23457");
    EXPECT_EQ(texOf<Complex>({1, -2}), "(1,-2)");
    EXPECT_EQ(texOf<std::string>("a_b$%"), "a_b$%");
    EXPECT_EQ(texOf<std::string>(""), "");
}

}  // namespace
