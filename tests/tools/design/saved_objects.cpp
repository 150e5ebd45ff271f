#include "tests/tools/design/saved_objects.h"

#include <complex>
#include <sstream>

#include "tests/tools/sample_circuit.h"

namespace vrl_test {

namespace {

template <class T>
std::string bytesOf(T& object) {
    std::ostringstream bytes;
    vrl::BinaryStreamSerialiser writer(bytes);
    return object.write(&writer) ? bytes.str() : "";
}

template <class T>
std::string bytesAndEnd(T* object) {
    std::string const bytes = bytesOf(*object);
    T::destroy(object);
    return bytes;
}

// Kinds that no plug-in has.

/// A parameter with points, of which nobody else knows how they are saved.
class Curve : public vrl::AttributeWithExpr {
public:
    explicit Curve(std::string const& name) : AttributeWithExpr(name, "sin(x)", "a curve", "um") {}
    std::ostream& toCpp(std::ostream& os, std::string const&) const override { return os; }

protected:
    std::string getSerTypeName() override { return "ForeignCurve"; }
};

void fillForeign(vrl::BB& block) {
    block.addPort("in0", vrl::EnumList::Optics);
    block.addPort("bias", vrl::EnumList::DC);
    block.addDouble("gain", 1.5, "gain of the section", "dB");
    block.Attributes::add(new Curve("profile"));
}

class ForeignBlock : public vrl::BB {
public:
    ForeignBlock() { fillForeign(*this); }
    std::string getName() const override { return "foreignBlock"; }
};

class ForeignComposite : public vrl::CBB {
public:
    ForeignComposite() : BB(nullptr), CBB(nullptr) {
        fillForeign(*this);
        addBB(new ForeignBlock, "source");
        addBB(vrl::BB::create(nullptr, "sfBend"), "bend");
        setInputNode(addNode("bend", "in0"));
        addNode("source", "in0", addNode("bend", "out0"));
    }
    std::string getName() const override { return "foreignComposite"; }
};

class ForeignNetlist : public vrl::Netlist {
public:
    std::string getName() const override { return "ForeignNetlist"; }

protected:
    std::string getSerTypeName() override { return "ForeignNetlist"; }
};

std::string netlist() {
    SampleCircuit circuit;
    circuit.add("in", "sfEdgeCoupler").add("mod", "sfPhaseModulator").join("in,out0", "mod,in0");
    circuit.input("in,in0").output("mod,out0").dc("mod,signal").dc("mod,ground");
    circuit.netlist().getBB("mod")->addAnnotation("reviewed", "yes");
    circuit.netlist().addString("author", "a designer", "who drew it", "");
    circuit.netlist().addAnnotation("project", "receiver 3");
    return bytesOf(circuit.netlist());
}

std::string netlistWithForeignBlocks() {
    SampleCircuit circuit;
    circuit.add("line", "demoDelayLine").add("bend", "sfBend").add("laser", new ForeignBlock);
    circuit.add("second", new ForeignBlock).add("chip", static_cast<vrl::BB*>(new ForeignComposite));
    circuit.join("laser,in0", "bend,in0").join("bend,out0", "line,in0").dc("laser,bias");
    return bytesOf(circuit.netlist());
}

std::string block() {
    vrl::BB* const bend = vrl::BB::create(nullptr, "sfBend");
    bend->setDouble("radius", 25);
    bend->getPort("out0")->getCS().setCS("rib");
    bend->addAnnotation("note", "tight");
    return bytesAndEnd(bend);
}

std::string composite() {
    resetUniqueIDs();
    return bytesAndEnd(vrl::BB::create(nullptr, "sfPushPullArms"));
}

template <class T>
std::string value(std::string const& name, T const& held, std::string const& unit) {
    vrl::Value<T> parameter(name, held, "what '" + name + "' means", unit);
    return bytesOf(parameter);
}

std::string valueWithExpression() {
    vrl::Value<double> parameter("length", 2.5, "length of the arm", "um");
    parameter.setExpression("2*pitch");
    parameter.setCalculated(true);
    return bytesOf(parameter);
}

template <class T>
std::string flagged(T const& held, T const& least, T const& most) {
    AutoValueRange<T, vrl::Value<T>> parameter("tuned", held, least, most, "what is tuned", "nm");
    parameter.setAutoChangeable(true);
    return bytesOf(parameter);
}

std::string list() {
    vrl::Attributes all;
    all.addBool("enabled", false, "whether it is on");
    all.addInteger("periods", 12, "number of periods", "1");
    all.addString("layer", "M1\nand \xC2\xB5", "the layer", "");
    all.addComplex("index", {3.4, -0.01}, "complex index", "1");
    all.addDouble("big", 1e300, "", "");
    return bytesOf(all);
}

std::string component() {
    vrlEmptyComponent part;
    part.addDouble("height", 0.22, "height of the core", "um");
    return bytesOf(part);
}

std::string annotations() {
    vrl::Annotations notes;
    notes.addAnnotation("author", "a designer").addAnnotation("empty", "");
    return bytesOf(notes);
}

std::string choice() {
    vrl::Foundry::CSInfo chosen(nullptr);
    chosen.setCS("strip");
    chosen.setFlow("passive");
    return bytesOf(chosen);
}

std::string port() {
    vrl::BB::Port end("in0", nullptr, vrl::EnumList::Optics);
    end.getCS().setCS("rib");
    return bytesOf(end);
}

template <class T>
std::string foreign() {
    resetUniqueIDs();
    T* const object = new T;
    return bytesAndEnd(static_cast<vrl::BB*>(object));
}

std::string foreignNetlist() {
    resetUniqueIDs();
    ForeignNetlist object;
    object.addBB(vrl::BB::create(nullptr, "sfBend"), "bend");
    return bytesOf(object);
}

std::string foreignParameter() {
    Curve curve("profile");
    return bytesOf(curve);
}

}  // namespace

std::map<std::string, std::string> const& savedObjects() {
    static std::map<std::string, std::string> const objects = [] {
        SampleCircuit const started;
        return std::map<std::string, std::string>{
            {"netlist", netlist()},
            {"netlist_with_foreign_blocks", netlistWithForeignBlocks()},
            {"block", block()},
            {"composite", composite()},
            {"bool", value("enabled", true, "")},
            {"integer", value("periods", 12, "1")},
            {"double", value("length", 0.1, "um")},
            {"double_with_expression", valueWithExpression()},
            {"complex", value("index", std::complex<double>(3.4, -0.01), "1")},
            {"string", value("layer", std::string("M1\x1B[31m"), "")},
            {"flagged_integer", flagged(3, 1, 9)},
            {"flagged_double", flagged(1.5, 1.0, 2.0)},
            {"flagged_complex",
             flagged(std::complex<double>(1, 1), std::complex<double>(0, 0), std::complex<double>(2, 2))},
            {"list", list()},
            {"component", component()},
            {"annotations", annotations()},
            {"choice", choice()},
            {"port", port()},
            {"foreign_block", foreign<ForeignBlock>()},
            {"foreign_composite", foreign<ForeignComposite>()},
            {"foreign_netlist", foreignNetlist()},
            {"foreign_parameter", foreignParameter()},
        };
    }();
    return objects;
}

}  // namespace vrl_test
