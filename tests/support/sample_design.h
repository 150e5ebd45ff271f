#pragma once

#include <memory>
#include <sstream>
#include <string>

#include "vrllib/vrllib.h"

// Small concrete classes of the design model for tests, and helpers for streams.

namespace sample {

using namespace Vorlane_v1_0;

/// A cross section of any kind.
class Section : public CrossSection {
public:
    Section(double w, double r, std::string k = "wg") : CrossSection(w, r), kind(std::move(k)) {}
    Section(Section const& o) : Attributes(o), RegisterView(o), CrossSection(o), kind(o.kind) {}
    Section& operator=(Section const&) = default;
    std::string getName() const override { return kind; }
    std::string describe() const override { return "section " + kind; }

private:
    std::string kind;
};

/// A flow that makes nothing, as the base does.
class EmptyFlow : public ProcessFlow {
public:
    std::string getName() const override { return "emptyFlow"; }
};

/// A flow that makes sections of the kind "flowWg".
class StripFlow : public ProcessFlow {
public:
    std::string getName() const override { return "stripFlow"; }
    CrossSection* createCS(double const& width, double radius) const override {
        return new Section(width, radius, "flowWg");
    }
};

/// A foundry whose flows and cross sections the test registers.
class Fab : public Foundry {
public:
    explicit Fab(std::string n = "Fab") : name(std::move(n)) {}
    Fab(Fab const& o) : Attributes(o), RegisterView(o), Foundry(o), name(o.name) {}
    Fab& operator=(Fab const&) = default;
    ~Fab() override = default;
    std::string getName() const override { return name; }
    std::string describe() const override { return "foundry " + name; }
    using Foundry::crossSections;
    using Foundry::flows;

private:
    std::string name;
};

/// A block with one optical input, one output and a ranged length.
class Mmi : public BB {
public:
    explicit Mmi(Foundry const* foundry = nullptr) : BB(foundry) {
        pin(1, 1);
        Attributes::add(new ValueRange<double, Value<double>>("length", 10.0, 0.0, 100.0, "length of the body", "um"));
    }
    ~Mmi() override = default;
    std::string getName() const override { return "mmi"; }
};

/// A block with an electrical port and no parameters.
class Pad : public BB {
public:
    explicit Pad(Foundry const* foundry = nullptr) : BB(foundry) { addPort("dc0", EnumList::DC); }
    ~Pad() override = default;
    std::string getName() const override { return "pad"; }
};

/// Registers the kinds "mmi" and "pad" for the lifetime of this object.
class Kinds {
public:
    Kinds() {
        FactoryLoader<BB>::factory().Register<Mmi>("mmi");
        FactoryLoader<BB>::factory().Register<Pad>("pad");
    }
    ~Kinds() {
        FactoryLoader<BB>::factory().UnRegister("mmi");
        FactoryLoader<BB>::factory().UnRegister("pad");
    }
    Kinds(Kinds const&) = delete;
    Kinds& operator=(Kinds const&) = delete;
};

/// Keeps a class registered under a key of a factory.
template <class Factory>
class Registration {
public:
    Registration(Factory& f, std::string k) : factory(f), key(std::move(k)) {}
    Registration(Registration const&) = delete;
    Registration& operator=(Registration const&) = delete;
    ~Registration() { factory.UnRegister(key); }

private:
    Factory& factory;
    std::string key;
};

/// Registers the class U under a key for the lifetime of the result.
template <class U, class Factory>
[[nodiscard]] Registration<Factory> registered(Factory& factory, std::string const& key) {
    factory.template Register<U>(key);
    return Registration<Factory>(factory, key);
}

/// The bytes that an object writes.
template <class T>
std::string saved(T& object) {
    std::ostringstream stream;
    BinaryStreamSerialiser writer(stream);
    return object.write(&writer) ? stream.str() : "write failed";
}

/// Reads an object from bytes and returns the result of read.
template <class T>
bool readBack(T& object, std::string const& bytes) {
    std::istringstream stream(bytes);
    BinaryStreamDeSerialiser reader(stream);
    return object.read(&reader);
}

/// The text of an object that has the member operator<<.
template <class T>
std::string printed(T const& object) {
    std::ostringstream stream;
    object.operator<<(stream);
    return stream.str();
}

/// A choice of cross section by name.
inline Foundry::CSInfo choiceOf(std::string const& csName, std::string const& flowName = "") {
    Foundry::CSInfo info(nullptr);
    info.setCS(csName);
    info.setFlow(flowName);
    return info;
}

}  // namespace sample
