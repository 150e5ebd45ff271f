#include "vrllib/model/foundry.h"

#include <iostream>
#include <memory>
#include <utility>

#include "vrllib/core/thrown_text.h"
#include "vrllib/core/type_factory.h"
#include "vrllib/model/cross_section.h"
#include "vrllib/model/process_flow.h"

namespace Vorlane_v1_0 {

namespace {

/// The name itself, or the first key of the factory for an empty one. The text speaks of a cross section in either
/// case.
template <class Factory>
std::string nameOrFirst(std::string const& name, Factory const& factory) {
    if (!name.empty()) return name;
    if (!factory.hasData()) {
        static char text[] = "No default cross-section specified";
        detail::throwText(text);
    }
    return factory.begin()->first;
}

CrossSection* createFrom(ProcessFlow* flow, double const& width, double radius) {
    std::unique_ptr<ProcessFlow> const temporary(flow);
    return flow ? flow->createCS(width, radius) : nullptr;
}

}  // namespace

VRL_DEFINE_PERSISTENCE_ROOT(Foundry::CSInfo)

SerFormat<Foundry::CSInfo> const& Foundry::CSInfo::serFormat() {
    static auto const format = SerFormat<CSInfo>("CSInfo", 1)
                                   .type("Foundry::CSInfo")
                                   .member(1, "default CS name", &CSInfo::csName)
                                   .member(2, "default Flow name", &CSInfo::flowName);
    return format;
}

Foundry::CSInfo::CSInfo(Foundry const* f) : foundry(f) {}
Foundry::CSInfo::CSInfo(CSInfo&& other) noexcept
    : csName(std::move(other.csName)), flowName(std::move(other.flowName)), foundry(other.foundry) {}
Foundry::CSInfo& Foundry::CSInfo::operator=(CSInfo&& other) noexcept {
    if (this == &other) return *this;
    csName = std::move(other.csName);
    flowName = std::move(other.flowName);
    foundry = other.foundry;
    serRegister = SerRegister();
    serDone = false;
    return *this;
}

bool Foundry::CSInfo::operator==(CSInfo const& other) const {
    return csName == other.csName && flowName == other.flowName;
}
bool Foundry::CSInfo::operator!=(CSInfo const& other) const { return !(*this == other); }

CrossSection* Foundry::CSInfo::createCS(double const& width, double radius) const {
    if (!flowName.empty())
        if (CrossSection* const cs = createFrom(foundry->createFlow(flowName), width, radius)) return cs;
    if (!csName.empty())
        if (CrossSection* const cs = foundry->createCS(csName, width, radius)) return cs;
    if (CrossSection* const cs = createFrom(foundry->createFlow(""), width, radius)) return cs;
    if (CrossSection* const cs = foundry->createCS("", width, radius)) return cs;
    std::cout << "No suitable CS found\n";
    return nullptr;
}

unsigned int Foundry::mFoundryNr = 1;

Foundry::Foundry() : id(mFoundryNr++), csFlow(this) {}
Foundry::Foundry(Foundry const& other)
    : Attributes(other),
      RegisterView(other),
      Component(other),
      id(other.id),
      flows(other.flows),
      crossSections(other.crossSections),
      csFlow(other.csFlow) {}
Foundry& Foundry::operator=(Foundry const& other) = default;
Foundry::~Foundry() = default;

template <>
void ptr_destroy<Foundry>(Foundry* foundry) {
    Foundry::destroy(foundry);
}
template <>
shared_ptr<Foundry> detail::defaultObject<Foundry>() {
    return firstKeyObject<Foundry>();
}

Foundry* Foundry::create(std::string const& name) {
    return name.empty() ? detail::defaultObject<Foundry>().get() : detail::typeFactory<Foundry>().create(name);
}
void Foundry::destroy(Foundry* foundry) { detail::typeFactory<Foundry>().destroy(foundry); }

void Foundry::registerOnCreate(void (*callback)(Foundry*)) {
    detail::typeFactory<Foundry>().registerOnCreate(callback);
}
void Foundry::registerOnChange(void (*callback)(Foundry*)) {
    detail::typeFactory<Foundry>().registerOnChange(callback);
}
void Foundry::registerOnDestroy(void (*callback)(Foundry*)) {
    detail::typeFactory<Foundry>().registerOnDestroy(callback);
}

CrossSection* Foundry::createCS(std::string const& name, double const& width, double radius) const {
    return crossSections.create(nameOrFirst(name, crossSections), width, radius);
}
CrossSection* Foundry::createCS(std::string const& name) const { return createCS(name, -1.0, 0.0); }
ProcessFlow* Foundry::createFlow(std::string const& name) const { return flows.create(nameOrFirst(name, flows)); }

template class Serialisable<Foundry::CSInfo>;

}  // namespace Vorlane_v1_0
