#pragma once

#include <iostream>
#include <string>

#include "vrllib/vrllib.h"

// The smallest classes that a plug-in can register.

namespace vrl_test {

class PlainFoundry : public Vorlane_v1_0::Foundry {
public:
    std::string getName() const override { return "PlainFoundry"; }
    std::string describe() const override { return "A foundry for tests"; }
};

class PlainBlock : public Vorlane_v1_0::BB {
public:
    explicit PlainBlock(Vorlane_v1_0::Foundry const* foundry) : BB(foundry) {}
    std::string getName() const override { return "PlainBlock"; }
};

class PlainNetlist : public Vorlane_v1_0::Netlist {
public:
    std::string getName() const override { return "PlainNetlist"; }
};

/// A view of any component; made by each of the three kinds of view factory.
class PlainView : public Vorlane_v1_0::View {
public:
    explicit PlainView(Vorlane_v1_0::Component* object) : View(object, "Plain") {}
    PlainView(Vorlane_v1_0::Component* object, std::string const& name) : View(object, name) {}
    std::string describe() const override { return "A view for tests"; }
};

}  // namespace vrl_test
