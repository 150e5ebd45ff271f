#pragma once

#include <string>

#include "fault.h"
#include "vrllib/vrllib.h"

// What a plug-in of these tests registers: one of each kind, right except for its fault.

namespace broken {

/// A parameter type whose value is a length in its own form: "5 um".
class Reach : public vrl::AttributeWithExpr {
public:
    explicit Reach(std::string const& name);
    std::string getType() const override { return "Reach"; }
    std::string getFactoryName() const override { return "brReach"; }
    std::string getStringValue() const override { return text; }
    bool setStringValue(std::string const& value) override;
    void setValue(vrl::Attribute const* other) override;
    texstream& toTex(texstream& tex) const override;
    std::ostream& toCpp(std::ostream& os, std::string const& name) const override;
    VRL_PERSISTENT(Reach)

private:
    std::string text = "5 um";
    vrl::SerRegister serRegister;
    vrl::SerrDoneFlag serDone;
};

class Block : public vrl::BB {
public:
    explicit Block(vrl::Foundry const* foundry);
    Block(Block const&) = delete;
    Block& operator=(Block const&) = delete;
    ~Block() override;
    std::string getName() const override;

protected:
    std::string getSerTypeName() override;
    vrl::SerRegister* getSerRegister() override;
};

class Section : public vrl::CrossSection {
public:
    Section(double w, double r) : CrossSection(w, r) {}
    std::string getName() const override { return "brStrip"; }
    std::string describe() const override { return "a strip"; }
};

class Flow : public vrl::ProcessFlow {
public:
    std::string getName() const override { return "brFlow"; }
    vrl::CrossSection* createCS(double const& width, double radius) const override;
};

class Fab : public vrl::Foundry {
public:
    Fab();
    using Foundry::createCS;
    std::string getName() const override { return "BrokenFab"; }
    std::string describe() const override { return kFault == Fault::kUndescribed ? "" : "a foundry for tests"; }
    vrl::CrossSection* createCS(std::string const& name, double const& width, double radius) const override;
};

class BlockView : public vrl::TypeView<vrl::BB> {
public:
    explicit BlockView(vrl::BB* block);
    std::string describe() const override { return "a view for tests"; }
    bool applyOn(std::string const&) const override { return true; }
};

}  // namespace broken
