#pragma once

#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "tests/support/sample_design.h"

namespace sample {

/// Cross sections that report under which creator they were made.
class Rib : public Section {
public:
    Rib(double w, double r) : Section(w, r, "rib") {}
};
class Wire : public Section {
public:
    Wire(double w, double r) : Section(w, r, "wire") {}
};

inline std::vector<std::string> steps;
inline int flowsAlive = 0;

inline std::string asked(std::string const& what, double width, double radius) {
    std::ostringstream text;
    text << what << " " << width << " " << radius;
    return text.str();
}

/// A flow that notes what it is asked and makes nothing.
class NotingFlow : public ProcessFlow {
public:
    explicit NotingFlow(std::string n) : name(std::move(n)) { ++flowsAlive; }
    ~NotingFlow() override { --flowsAlive; }
    std::string getName() const override { return name; }
    CrossSection* createCS(double const& width, double radius) const override {
        steps.push_back(asked("flow " + name, width, radius));
        return nullptr;
    }

private:
    std::string name;
};
class FlowA : public NotingFlow {
public:
    FlowA() : NotingFlow("A") {}
};
class FlowB : public NotingFlow {
public:
    FlowB() : NotingFlow("B") {}
};
class MakingFlow : public NotingFlow {
public:
    MakingFlow() : NotingFlow("making") {}
    CrossSection* createCS(double const& width, double radius) const override {
        NotingFlow::createCS(width, radius);
        return new Section(width, radius, "made by a flow");
    }
};
class ThrowingFlow : public NotingFlow {
public:
    ThrowingFlow() : NotingFlow("throwing") {}
    CrossSection* createCS(double const&, double) const override { throw std::runtime_error("no waveguide"); }
};

/// A foundry that notes what it is asked; with `barren` it makes no cross section itself.
class NotingFab : public Fab {
public:
    bool barren = false;
    using Foundry::createCS;
    CrossSection* createCS(std::string const& kind, double const& width, double radius) const override {
        steps.push_back(asked("cs '" + kind + "'", width, radius));
        return barren ? nullptr : Fab::createCS(kind, width, radius);
    }
};

}  // namespace sample
