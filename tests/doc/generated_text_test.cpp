#include "vrllib/vrllib.h"

#include <complex>
#include <filesystem>
#include <sstream>
#include <string>
#include <type_traits>
#include <utility>

#include <gtest/gtest.h>

#include "tests/doc/tex_file.h"
#include "tests/plugins/samples/kinds.h"
#include "tests/support/sample_design.h"
#include "tests/support/slots.h"

// What the classes of all folders write to a document and to generated source.

namespace {

using namespace Vorlane_v1_0;
using Complex = std::complex<double>;
template <class T>
using Range = ValueRange<T, Value<T>>;
template <class T>
using AutoRange = AutoValueRange<T, Value<T>>;
template <class T, class D>
using Distribution = ValueDistribution<T, D, Value<T>>;
template <class T>
using Array = ValueArray<T>;

/// An attribute with the least that a class has to define.
class Bare : public Attribute {
public:
    Bare() : Attribute("bare") {}
    std::ostream& toCpp(std::ostream& os, std::string const& name) const override { return os << "bare " << name; }
};

/// Objects of all classes of the two families.
struct Samples {
    Bare bare;
    Value<bool> flag{"flag", true};
    Value<int> count{"count", -7};
    Value<double> width{"width", 0.1234567};
    Value<Complex> index{"index", Complex(3.5, -0.25)};
    Value<std::string> text{"text", "a_$b \\%"};
    Value<std::string> nothing{"nothing"};
    Range<int> countRange{"count", 2, 1, 4};
    Range<double> widthRange{"width", 1.5, 1, 2};
    Range<Complex> indexRange{"index", Complex(1, 2), Complex(0, 0), Complex(5, 0)};
    AutoRange<int> countAuto{"count", 2, 1, 4};
    AutoRange<double> widthAuto{"width", 1.5, 1, 2};
    AutoRange<Complex> indexAuto{"index", Complex(1, 2), Complex(0, 0), Complex(5, 0)};
    Distribution<int, vrlGaussianDistribution> countGauss{"count", 2, 1, 4, {}};
    Distribution<int, vrlUniformDistribution> countUniform{"count", 3, 1, 4, {}};
    Distribution<double, vrlGaussianDistribution> widthGauss{"width", 1.5, 1, 2, {}};
    Distribution<double, vrlUniformDistribution> widthUniform{"width", 9.5, 1, 2, {}};
    Distribution<Complex, vrlGaussianDistribution> indexGauss{"index", Complex(1, 2), Complex(), Complex(5, 0), {}};
    Distribution<Complex, vrlUniformDistribution> indexUniform{"index", Complex(), Complex(), Complex(5, 0), {}};
    Array<int> counts{"counts", {}, "", ""};
    Array<double> widths{"widths", {}, "", ""};
    Array<Complex> indices{"indices", {}, "", ""};
    Array<std::string> texts{"texts", {}, "", ""};
    vrlLength_mm length{"length", 1.5, 0, 10};
    vrlAngle_deg angle{"angle", 180, -180, 180};
    vrlGaussianDistribution gauss;
    vrlUniformDistribution uniform;
    vrl_test::PlainView view{nullptr};
    BB::Port port{"in_0$", nullptr, EnumList::Optics};
    BB::Port noPort;
};

/// Writes each brick in a line of its own, after a label. A brick has to return the stream that it was passed.
class Lines {
public:
    explicit Lines(texstream& t) : tex(t) {}

    template <class Object>
    Lines& line(char const* label, Object const& object) {
        return end(label, object.toTex(begin(label)));
    }
    template <class Id>
    Lines& enumLine(char const* label, Id const& id) {
        return end(label, EnumList::toTex(begin(label), id));
    }

private:
    texstream& begin(char const* label) {
        tex.os() << label << ": [";
        return tex;
    }
    Lines& end(char const* label, texstream& returned) {
        EXPECT_EQ(&returned, &tex) << label;
        tex.os() << "]\n";
        return *this;
    }

    texstream& tex;
};

void writeAllClasses(texstream& tex) {
    Samples const s;
    Lines lines(tex);
    lines.enumLine("solver", EnumList::KestromSolver).enumLine("unbalanced solver", EnumList::IMECSolver);
    lines.enumLine("no solver", EnumList::UndefSolver);
    lines.enumLine("foundry", EnumList::SmartPhotonixFoundry).enumLine("foundry with a TAB", EnumList::IHPFoundry);
    lines.enumLine("no foundry", EnumList::UndefFoundry);
    lines.line("attribute", s.bare);
    lines.line("bool", s.flag).line("int", s.count).line("double", s.width).line("complex", s.index);
    lines.line("string", s.text).line("empty string", s.nothing);
    lines.line("int range", s.countRange).line("double range", s.widthRange).line("complex range", s.indexRange);
    lines.line("auto int", s.countAuto).line("auto double", s.widthAuto).line("auto complex", s.indexAuto);
    lines.line("gaussian int", s.countGauss).line("uniform int", s.countUniform);
    lines.line("gaussian double", s.widthGauss).line("uniform double", s.widthUniform);
    lines.line("gaussian complex", s.indexGauss).line("uniform complex", s.indexUniform);
    lines.line("gaussian", s.gauss).line("uniform", s.uniform);
    lines.line("ints", s.counts).line("doubles", s.widths).line("complexes", s.indices).line("strings", s.texts);
    lines.line("length", s.length).line("angle", s.angle);
    lines.line("view", s.view).line("port", s.port).line("default port", s.noPort);
}

/// What toCpp writes under the name "x", and a line end. It has to return the stream.
std::string cpp(Attribute const& attribute) {
    std::ostringstream os;
    EXPECT_EQ(&attribute.toCpp(os, "x"), &os);
    return os.str() + "\n";
}

TEST(GeneratedText, EveryClassWritesItselfToADocumentAndAsSource) {
    EXPECT_EQ(texWrittenBy(writeAllClasses), "solver: [\\href{https://www.kestrom.example}{Kestrom BV}]\n"
                                             "unbalanced solver: [\\textit{IMEC]\n"
                                             "no solver: []\n"
                                             "foundry: [\\textit{Cedova}]\n"
                                             "foundry with a TAB: [\textit{IHP}]\n"
                                             "no foundry: []\n"
                                             "attribute: []\n"
                                             "bool: [1]\n"
                                             "int: [-7]\n"
                                             "double: [0.123457]\n"
                                             "complex: [(3.5,-0.25)]\n"
                                             "string: [a_$b \\%]\n"
                                             "empty string: []\n"
                                             "int range: [2 $\\in [1,4 ]$ ]\n"
                                             "double range: [1.5 $\\in [1,2 ]$ ]\n"
                                             "complex range: [(1,2) $\\in [(0,0),(5,0) ]$ ]\n"
                                             "auto int: [2 $\\in [1,4 ]$ ]\n"
                                             "auto double: [1.5 $\\in [1,2 ]$ ]\n"
                                             "auto complex: [(1,2) $\\in [(0,0),(5,0) ]$ ]\n"
                                             "gaussian int: [2 $\\in [1,4 ]$  Uniform ]\n"
                                             "uniform int: [3 $\\in [1,4 ]$  Uniform ]\n"
                                             "gaussian double: [1.5 $\\in [1,2 ]$  Uniform ]\n"
                                             "uniform double: [9.5 $\\in [1,2 ]$  Uniform ]\n"
                                             "gaussian complex: [(1,2) $\\in [(0,0),(5,0) ]$  Uniform ]\n"
                                             "uniform complex: [(0,0) $\\in [(0,0),(5,0) ]$  Uniform ]\n"
                                             "gaussian: [ Uniform ]\n"
                                             "uniform: [ Uniform ]\n"
                                             "ints: [/*--- array of type T */\n]\n"
                                             "doubles: [/*--- array of type T */\n]\n"
                                             "complexes: [/*--- array of type T */\n]\n"
                                             "strings: [/*--- array of type T */\n]\n"
                                             "length: [1500 $\\in [0,10000 ]$ ]\n"
                                             "angle: [3.14159 $\\in [-3.14159,3.14159 ]$ ]\n"
                                             "view: [View\\{\\}]\n"
                                             "port: [in_0$]\n"
                                             "default port: [-none-]\n");

    Samples const s;
    EXPECT_EQ(cpp(s.bare) + cpp(s.flag) + cpp(s.count) + cpp(s.width) + cpp(s.index) + cpp(s.text) + cpp(s.nothing) +
                  cpp(s.countRange) + cpp(s.widthRange) + cpp(s.indexRange) + cpp(s.countAuto) + cpp(s.widthAuto) +
                  cpp(s.indexAuto) + cpp(s.countGauss) + cpp(s.countUniform) + cpp(s.widthGauss) + cpp(s.widthUniform) +
                  cpp(s.indexGauss) + cpp(s.indexUniform) + cpp(s.counts) + cpp(s.widths) + cpp(s.indices) +
                  cpp(s.texts) + cpp(s.length) + cpp(s.angle),
              "bare x\n"
              "vrl::Value<bool >(\"x\",1)\n"
              "vrl::Value<Int >(\"x\",-7)\n"
              "vrl::Value<Double >(\"x\",0.123457)\n"
              "vrl::Value<Complex >(\"x\",(3.5,-0.25))\n"
              "vrl::Value<String >(\"x\",a_$b \\%)\n"
              "vrl::Value<String >(\"x\",\"\")\n"
              "ValueRange<Int >(\"x\",2,1,4)\n"
              "ValueRange<Double >(\"x\",1.5,1,2)\n"
              "ValueRange<Complex >(\"x\",(1,2),(0,0),(5,0))\n"
              "ValueRange<Int >(\"x\",2,1,4)\n"
              "ValueRange<Double >(\"x\",1.5,1,2)\n"
              "ValueRange<Complex >(\"x\",(1,2),(0,0),(5,0))\n"
              "ValueRange<Int >(\"x\",2,1,4)\n"
              "ValueRange<Int >(\"x\",3,1,4)\n"
              "ValueRange<Double >(\"x\",1.5,1,2)\n"
              "ValueRange<Double >(\"x\",9.5,1,2)\n"
              "ValueRange<Complex >(\"x\",(1,2),(0,0),(5,0))\n"
              "ValueRange<Complex >(\"x\",(0,0),(0,0),(5,0))\n"
              "/*--- array of type T */\n\n"
              "/*--- array of type T */\n\n"
              "/*--- array of type T */\n\n"
              "/*--- array of type T */\n\n"
              "ValueRange<Double >(\"x\",1500,0,10000)\n"
              "ValueRange<Double >(\"x\",3.14159,-3.14159,3.14159)\n");
}

TEST(GeneratedText, FollowsTheFormatOfTheStream) {
    Samples const s;
    EXPECT_EQ(texWrittenBy([&](texstream& tex) {
                  tex.os().setf(std::ios_base::boolalpha);
                  tex.os().precision(3);
                  s.flag.toTex(tex).os() << " ";
                  s.width.toTex(tex).os() << " ";
                  s.angle.toTex(tex);
              }),
              "true 0.123 3.14 $\\in [-3.14,3.14 ]$ ");
}

TEST(GeneratedText, BricksChainOnOneStream) {
    Samples const s;
    EXPECT_EQ(texWrittenBy([&](texstream& tex) {
                  s.port.toTex(s.view.toTex(s.count.toTex(EnumList::toTex(tex, EnumList::HHIFoundry)))).docHdrInc();
              }),
              "\\textit{HHI}-7View\\{\\}in_0$");
}

TEST(GeneratedText, AChainOnAStreamThatFailedToOpenWritesNothingAndReportsNoError) {
    TexFile const file;
    std::string const path = file.path() + ".none/document.tex";
    vrlCoutReset();
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    texstream tex(path.c_str(), true);
    EXPECT_NO_THROW(writeAllClasses(tex));
    tex.pdf();

    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(vrlGetCoutMsg(), "");
    EXPECT_TRUE(tex.os().fail());
    EXPECT_FALSE(std::filesystem::exists(file.path() + ".none"));
}

TEST(GeneratedText, AnAttributeThatDoesNotOverrideToTexLeavesATableRowEmpty) {
    Attributes list;
    list.add(new Bare);
    list.addInteger("count", 3);
    EXPECT_EQ(texWrittenBy([&](texstream& tex) {
                  for (auto const& name : list) {
                      tex.os() << name << " & ";
                      EXPECT_EQ(&list.get(name)->toTex(tex), &tex);
                      tex.os() << " \\\\\n";
                  }
              }),
              "bare &  \\\\\ncount & 3 \\\\\n");
}

TEST(GeneratedText, OnlyTheStructureOfACallerEscapes) {
    sample::Mmi block;
    block.Attributes::addString("label_1", "a_b$");
    EXPECT_EQ(texWrittenBy([&](texstream& tex) {
                  tex.docHeader("m_i", 1).label("bb:", "m_i");
                  for (auto port = block.beginPort(); port != block.endPort(); ++port) port->toTex(tex).os() << ";";
                  for (auto name = block.beginAttribute(); name != block.endAttribute(); ++name) {
                      tex.os() << texstream::id2tex(*name) << "=";
                      block.getAttribute(*name)->toTex(tex).os() << ";";
                  }
                  tex.ref("bb:", "m_i").close(true);
              }),
              "\n\n\\section{m\\_i}\n\n\\label{bb:mi} in0;out0;length=10 $\\in [0,100 ]$ ;label\\_1=a_b$;"
              "\\ref{bb:mi} \\end{document}\n");
}

template <class T, class = void>
struct HasToTex : std::false_type {};
template <class T>
struct HasToTex<T, std::void_t<decltype(std::declval<T const&>().toTex(std::declval<texstream&>()))>> : std::true_type {
};
template <class T, class = void>
struct HasToCpp : std::false_type {};
template <class T>
struct HasToCpp<T, std::void_t<decltype(std::declval<T const&>().toCpp(std::declval<std::ostream&>(), ""))>>
    : std::true_type {};

TEST(GeneratedText, ListsAndDesignObjectsWriteNothingOfTheirOwn) {
    EXPECT_TRUE(HasToTex<Attribute>::value);
    EXPECT_FALSE(HasToTex<Annotations>::value);
    EXPECT_FALSE(HasToTex<Attributes>::value);
    EXPECT_FALSE(HasToTex<Component>::value);
    EXPECT_FALSE(HasToTex<BB>::value);
    EXPECT_FALSE(HasToTex<Netlist>::value);
    EXPECT_FALSE(HasToTex<CBB>::value);
    EXPECT_FALSE(HasToTex<Foundry>::value);
}

TEST(GeneratedText, OnlyAttributesWriteSource) {
    EXPECT_TRUE(HasToCpp<Attribute>::value);
    EXPECT_FALSE(HasToCpp<Attributes>::value);
    EXPECT_FALSE(HasToCpp<Component>::value);
    EXPECT_FALSE(HasToCpp<BB>::value);
    EXPECT_FALSE(HasToCpp<BB::Port>::value);
    EXPECT_FALSE(HasToCpp<View>::value);
    EXPECT_FALSE(HasToCpp<vrlGaussianDistribution>::value);
}

TEST(GeneratedText, OnlyTheOperationsOfAttributesAreVirtual) {
    EXPECT_NO_THROW(vrl_test::slotOf(&Attribute::toTex));
    EXPECT_NO_THROW(vrl_test::slotOf(&Attribute::toCpp));
    EXPECT_TRUE(std::is_abstract_v<Attribute>);
    EXPECT_TRUE(std::is_abstract_v<AttributeWithExpr>);
    EXPECT_THROW(vrl_test::slotOf(&View::toTex), std::logic_error);
    EXPECT_THROW(vrl_test::slotOf(&BB::Port::toTex), std::logic_error);
    EXPECT_THROW(vrl_test::slotOf(&vrlGaussianDistribution::toTex), std::logic_error);
    EXPECT_THROW(vrl_test::slotOf(&vrlUniformDistribution::toTex), std::logic_error);
}

TEST(GeneratedText, ReachesTheMostDerivedClassThroughTheBase) {
    Samples const s;
    EXPECT_EQ(texWrittenBy([&](texstream& tex) {
                  for (Attribute const* const attribute :
                       {static_cast<Attribute const*>(&s.count), static_cast<Attribute const*>(&s.countRange),
                        static_cast<Attribute const*>(&s.countGauss), static_cast<Attribute const*>(&s.counts)})
                      attribute->toTex(tex);
              }),
              "-72 $\\in [1,4 ]$ 2 $\\in [1,4 ]$  Uniform /*--- array of type T */\n");
}

}  // namespace
