#pragma once

#include <complex>
#include <iostream>
#include <limits>
#include <stdexcept>
#include <string>

#include "vrllib/vrllib.h"

// Kinds that have what the sample plug-ins lack: the faults that rules are to find. The plug-in 'checkProbes'
// registers them for the tool; tests make them to save them.

namespace vrl_test {

/// A block of tests under a kind.
class Probe : public vrl::BB {
public:
    Probe(vrl::Foundry const* foundry, char const* name) : BB(foundry), kind(name) {}
    std::string getName() const override { return kind; }

private:
    std::string kind;
};

/// Declares "in0" three times and "out0" once.
class TwinPorts : public Probe {
public:
    static constexpr char const* kKind = "probeTwinPorts";
    explicit TwinPorts(vrl::Foundry const* foundry) : Probe(foundry, kKind) {
        for (char const* const name : {"in0", "in0", "in0", "out0"}) addPort(name, vrl::EnumList::Optics);
    }
};

/// Is made with ribs only.
class RibOnly : public Probe {
public:
    static constexpr char const* kKind = "probeRibOnly";
    explicit RibOnly(vrl::Foundry const* foundry) : Probe(foundry, kKind) { pin(1, 1); }
    bool isAllowed(vrl::Foundry::CSInfo const& choice) const override { return choice.getCSName() == "rib"; }
};

/// Its gap and its width have to fit a pitch; that check throws for some gaps.
class PitchedPair : public Probe {
public:
    static constexpr char const* kKind = "probePitchedPair";
    explicit PitchedPair(vrl::Foundry const* foundry) : Probe(foundry, kKind) {
        for (char const* const name : {"gap", "width"})
            addAttribute(new ValueRange<double, vrl::Value<double>>(name, 0.5, 0.0, 1.0, "of the pair", "um"));
    }
    bool inSpec(std::ostream& os) const override {
        if (getDouble("gap") == 0) throw std::runtime_error("no gap");
        if (getDouble("gap") == 0.25) throw 42;
        if (getDouble("gap") == 0.125) throw static_cast<char*>(nullptr);
        bool const fits = getDouble("gap") + getDouble("width") <= 1.0;
        if (!fits) os << "gap and width exceed the pitch of 1 um\nand more";
        return fits && Attributes::inSpec(os);
    }
};

/**@{*/
/// Cannot be made. The kinds are as long as that of PitchedPair, for which tests put them into files.
class ThrowsAnInt : public Probe {
public:
    static constexpr char const* kKind = "probeThrowsAnInt";
    explicit ThrowsAnInt(vrl::Foundry const* foundry) : Probe(foundry, kKind) { throw 42; }
};

class ThrowsANull : public Probe {
public:
    static constexpr char const* kKind = "probeThrowsANull";
    explicit ThrowsANull(vrl::Foundry const* foundry) : Probe(foundry, kKind) { throw static_cast<char*>(nullptr); }
};
/**@}*/

/// A number that has to be even.
class EvenNumber : public vrl::Value<int> {
public:
    explicit EvenNumber(std::string const& name, int value = 0) : Value<int>(name, value) {}
    bool inSpec(std::ostream& os) const override {
        if (getValue() % 2 == 0) return true;
        os << getValue() << " is odd\n";
        return false;
    }
};

/// A number of a type that no plug-in registers.
class Spline : public vrl::Value<double> {
public:
    explicit Spline(std::string const& name) : Value<double>(name, 1.0) {}

protected:
    std::string getSerTypeName() override { return "probeSpline"; }
};

/// A netlist of a kind that no plug-in registers.
class OtherNetlist : public vrl::Netlist {
public:
    std::string getName() const override { return "probeNetlist"; }

protected:
    std::string getSerTypeName() override { return "probeNetlist"; }
};

/// Has parameters that no sample block has: one of a type with a check of its own, ranges that hold nothing or
/// everything, a complex number, and one without a range.
class OddParameters : public Probe {
public:
    static constexpr char const* kKind = "probeOddParameters";
    explicit OddParameters(vrl::Foundry const* foundry) : Probe(foundry, kKind) {
        using Number = ValueRange<double, vrl::Value<double>>;
        using Complex = ValueRange<std::complex<double>, vrl::Value<std::complex<double>>>;
        double const infinity = std::numeric_limits<double>::infinity();
        addAttribute(new EvenNumber("even"));
        addAttribute(new Number("reversed", 5.0, 9.0, 1.0, "bounds the wrong way round", "um"));
        addAttribute(new Number("open", 5.0, -infinity, infinity, "no bounds at all", "1"));
        addAttribute(new Complex("index", {2.0, 0.0}, {1.0, 0.0}, {4.0, 0.0}, "of the core", "1"));
        addDouble("free", 1.0, "without a range", "um");
    }
};

/// A composite with two inputs outside and one inside, an electrode outside and none inside.
class Lopsided : public vrl::CBB {
public:
    static constexpr char const* kKind = "probeLopsided";
    explicit Lopsided(vrl::Foundry const* foundry) : BB(foundry), CBB(foundry) {
        pin(2, 1);
        addPort("heater", vrl::EnumList::DC);
        addBB(vrl::BB::create(foundry, "sfStraight"), "path");
        setInputNode(addNode("path", "in0"));
        setOutputNode(addNode("path", "out0"));
    }
    std::string getName() const override { return kKind; }
};

/// A waveguide in the domain of a plug-in that says nothing of it.
class Vague : public Probe {
public:
    static constexpr char const* kKind = "probeVague";
    explicit Vague(vrl::Foundry const* foundry) : Probe(foundry, kKind) {
        addPort("in0", vrl::EnumList::Unknown);
        addPort("out0", vrl::EnumList::Unknown);
    }
};

/// A waveguide of a foundry without process flows.
class BareSection : public vrl::CrossSection {
public:
    BareSection(double widthUm, double radiusUm) : CrossSection(widthUm, radiusUm) {}
    std::string getName() const override { return "bare"; }
    std::string describe() const override { return "a waveguide"; }
};

/// A foundry with a cross section and no process flow. It talks while it is asked.
class BareFab : public vrl::Foundry {
public:
    static constexpr char const* kName = "BareFab";
    BareFab() { crossSections.Register<BareSection>("bare"); }
    std::string getName() const override { return kName; }
    std::string describe() const override { return "no flows"; }
    vrl::CrossSection* createCS(std::string const& name, double const& width, double radius) const override {
        std::cout << "BareFab is asked\n";
        std::cerr << "BareFab complains\n";
        return Foundry::createCS(name, width, radius);
    }
};

/// A foundry that cannot be made.
class BrokenFab : public vrl::Foundry {
public:
    static constexpr char const* kName = "BrokenFab";
    BrokenFab() { throw std::runtime_error("no licence"); }
    std::string getName() const override { return kName; }
    std::string describe() const override { return "never made"; }
};

}  // namespace vrl_test
