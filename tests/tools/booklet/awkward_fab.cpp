// A foundry whose every text is awkward for LaTeX: special characters, ligatures, control characters, bytes that are no
// UTF-8, long words, empty names. Its creators are beside those of blocks with many ports and of a composite.

#include <utility>

#include "vrllib/vrllib.h"

namespace {

constexpr char kSpecials[] = "\\{}$&#^_~%\"'`<>|--,,?`!`[]*@=/";
constexpr char kTexCommands[] = "\\input{/etc/passwd}\\end{document}%$\\\\[9cm]\n\n& \\par";
constexpr char kBytes[] = "caf\xC3\xA9 \xFF\x80 \x01\x7F \xE4\xB8\xAD \xC0\x80 \xED\xA0\x80 \xF4\x90\x80\x80 \xE2\x82";
constexpr char kSymbols[] = "\xC2\xB5m \xCE\xA9 \xC2\xB0 \xC2\xB1 \xC3\x97 \xE2\x80\x93 \xE2\x86\x92 \xE2\x89\xA4 "
                            "\xC5\x82\xC3\x9F \xC2\xB2";

std::string longWord() { return std::string(90, 'w'); }

class Section : public vrl::CrossSection {
public:
    Section(double const& w, double r) : CrossSection(w, r) { addDouble("n_eff", 3.5, kSpecials, "1/\xC2\xB5m"); }
    std::string getName() const override { return "a_section"; }
    std::string describe() const override { return kSpecials; }
};

class Flow : public vrl::ProcessFlow {
public:
    std::string getName() const override { return "a_flow"; }
    vrl::CrossSection* createCS(double const& width, double radius) const override {
        return new Section(width < 0 ? 0.25 : width, radius);
    }
};

class EmptyFlow : public vrl::ProcessFlow {
public:
    std::string getName() const override { return "empty"; }
};

class AwkwardFab : public vrl::Foundry {
public:
    AwkwardFab() {
        flows.Register<Flow>("flow 100% & more");
        flows.Register<EmptyFlow>("empty");
        crossSections.Register<Section>("section_{1}");
        setCS("section_{1}");
        setFlow("flow 100% & more");
    }
    std::string getName() const override { return std::string("Fab ") + kSpecials; }
    std::string describe() const override { return kTexCommands; }
};

class Named : public vrl::BB {
public:
    Named(vrl::Foundry const* foundry, std::string k) : BB(foundry), kind(std::move(k)) {}
    std::string getName() const override { return kind; }

private:
    std::string kind;
};

class Awkward : public Named {
public:
    explicit Awkward(vrl::Foundry const* foundry) : Named(foundry, "aw_kward{}$") {
        setAnnotation("description", kTexCommands);
        addPort("in_0^{2}", vrl::EnumList::Optics);
        addPort("out%", vrl::EnumList::Optics);
        addPort("", vrl::EnumList::Acoustic);
        addPort(longWord(), vrl::EnumList::RF);
        addPort(kSpecials, vrl::EnumList::DC);
        addBool("yes/no", true, kTexCommands, "");
        addString("text", kTexCommands, kSpecials, kSymbols);
        addComplex("crossCouplingCoefficientOfTheBody", {1, -0.5}, kBytes, "%");
        addInteger(longWord(), 7, longWord(), longWord());
        Attributes::add(new ValueDistribution<double, vrlGaussianDistribution, vrl::Value<double>>(
            "spread", 0.1, -1e-300, 1e300, vrlGaussianDistribution(), "a description that fills more than one line",
            "um"));
    }
};

class Many : public Named {
public:
    explicit Many(vrl::Foundry const* foundry) : Named(foundry, "many") {
        pin(40, 14);
        for (int i = 0; i < 30; ++i) addPort("pad" + std::to_string(i), i % 2 ? vrl::EnumList::DC : vrl::EnumList::RF);
        for (int i = 0; i < 6; ++i) addPort("vent" + std::to_string(i), vrl::EnumList::Fluidics);
    }
};

class Nothing : public Named {
public:
    explicit Nothing(vrl::Foundry const*) : Named(nullptr, "nothing") {}
};

class Inside : public vrl::CBB {
public:
    explicit Inside(vrl::Foundry const* foundry) : BB(foundry), CBB(foundry) {
        pin(1, 1);
        addBB(new Awkward(foundry), "a & b");
        addBB(new Many(foundry), "c_d");
        setInputNode(addNode("a & b", "in_0^{2}"));
        addNode("c_d", "in0", addNode("a & b", "out%"));
        setOutputNode(addNode("c_d", "out0"));
    }
    std::string getName() const override { return "awkward$"; }
};

/// A view that applies to one kind.
class AwkwardView : public vrl::TypeView<vrl::BB> {
public:
    explicit AwkwardView(vrl::BB* block) : TypeView(block, "the \\view") {}
    std::string describe() const override { return "50 % & \\more"; }
    bool applyOn(std::string const& kind) const override { return kind == "awkward$"; }
};

}  // namespace

VRL_PLUGIN_EXPORT void initLibraryFoundry(FactoryNoArg<std::string, vrl::Foundry>* factory) {
    factory->Register<AwkwardFab>("Awkward_Fab");
}

VRL_PLUGIN_EXPORT void initLibraryBB(FactoryArg<std::string, vrl::BB, vrl::Foundry const*>* factory) {
    factory->Register<Awkward>("aw_kward{}$");
    factory->Register<Inside>("awkward$");
    factory->Register<Many>("many");
    factory->Register<Nothing>("nothing");
}

VRL_PLUGIN_EXPORT void initLibraryBBView(FactoryArg<std::string, vrl::View, vrl::BB*>* factory) {
    factory->Register<AwkwardView>("the \\view");
}
