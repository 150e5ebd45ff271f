#pragma once

#include <string>

#include "vrllib/core/factory.h"
#include "vrllib/model/component.h"

namespace Vorlane_v1_0 {

namespace detail {
class PortChoice;
}

/// One fabrication house: it names the process flows and the cross sections that exist there, and makes them.
///
/// Concrete foundries come from plug-ins, which fill the two factories in their constructor. First in key order is the
/// default flow and the default cross section. A foundry is freed with destroy.
/// A foundry is not saved: a block keeps the foundry's name only.
class VRL_API Foundry : public Component {
public:
    /// Makes process flows by name.
    using FlowFactory = FactoryNoArg<std::string, ProcessFlow>;
    /// Makes cross sections by name, width and radius.
    using CSFactory = FactoryArg2<std::string, CrossSection, double, double>;

    /// A choice of cross section: the names of a cross section and a process flow, and the foundry to ask. It is what
    /// blocks and ports carry until a width and a radius are known.
    ///
    /// The foundry is not owned and not saved; nothing tracks its end.
    class VRL_API CSInfo final {
        VRL_PERSISTENT_ROOT(CSInfo)

    public:
        /// Both names empty; the foundry may be null.
        explicit CSInfo(Foundry const* f);
        /// Copies the names, the foundry and the serialisation register as it is.
        CSInfo(CSInfo const& other) = default;
        CSInfo& operator=(CSInfo const& other) = default;
        /// Moves the names; the register starts empty, since it would point into the source.
        CSInfo(CSInfo&& other) noexcept;
        /// As the move: the register is emptied.
        CSInfo& operator=(CSInfo&& other) noexcept;
        ~CSInfo() = default;

        /**@{*/
        /// Compares the two names; the foundry does not count.
        bool operator==(CSInfo const& other) const;
        bool operator!=(CSInfo const& other) const;
        /**@}*/

        /// Sets the name of the cross section; nothing tests that it exists.
        void setCS(std::string const& name) { csName = name; }
        /// Sets the name of the process flow; nothing tests that it exists.
        void setFlow(std::string const& name) { flowName = name; }
        /// The name of the cross section; empty if none was chosen.
        std::string const& getCSName() const { return csName; }
        /// The name of the process flow; empty if none was chosen.
        std::string const& getFlowName() const { return flowName; }
        /// Sets the foundry to ask, which may be null; the names stay.
        void setFoundry(Foundry const* f) { foundry = f; }
        /// The foundry to ask, or null.
        Foundry const* getFoundry() const { return foundry; }

        /// A new cross section, which the caller owns, from the first of these that makes one: the named flow, the
        /// named cross section, the foundry's default flow, its default cross section.
        ///
        /// Null with a line on std::cout if none does. A foundry without flows throws "No default cross-section
        /// specified" (`char*`) when its default flow is asked, even if it has cross sections. The foundry must not be
        /// null.
        CrossSection* createCS(double const& width, double radius) const;

    private:
        friend class detail::PortChoice;

        std::string csName;
        std::string flowName;
        Foundry const* foundry;
        SerRegister serRegister;
        SerrDoneFlag serDone;
    };

    /// Takes the next number of the process, from 1.
    Foundry();
    /// The copy has the number of its source and shares its creators; its choice goes on naming the source's foundry.
    Foundry(Foundry const& other);
    /// As the copy: the target takes over the number, too.
    Foundry& operator=(Foundry const& other);

    /// A new foundry of that name for the caller, or null for an unknown one. For the empty name it is the default
    /// foundry of FactoryLoader, which stays with the loader and must not be destroyed; throws as getDefault does.
    static Foundry* create(std::string const& name);
    /// Runs the on-destroy callbacks, then deletes the foundry; null only runs the callbacks.
    static void destroy(Foundry* foundry);
    /**@{*/
    /// Adds a callback for all foundries after the present ones; nothing removes it. The library itself never runs
    /// those for changes.
    static void registerOnCreate(void (*callback)(Foundry*));
    static void registerOnChange(void (*callback)(Foundry*));
    static void registerOnDestroy(void (*callback)(Foundry*));
    /**@}*/

    /// The foundry's name, by which blocks find it again.
    std::string getName() const override = 0;
    /// One line of text for a person.
    virtual std::string describe() const = 0;
    /// A new cross section, which the caller owns. Null for an unknown name; the empty name means the first one in
    /// key order, and throws "No default cross-section specified" (`char*`) if there is none.
    virtual CrossSection* createCS(std::string const& name, double const& width, double radius) const;
    /// The same with the width -1, which means a width that was not given, and the radius 0.
    CrossSection* createCS(std::string const& name) const;
    /// A new process flow, which the caller owns. Names as for createCS, with the same text thrown.
    ProcessFlow* createFlow(std::string const& name) const;

    /// The number of the foundry.
    unsigned int getID() const { return id; }
    /**@{*/
    /// Compares the numbers and nothing else.
    bool operator==(Foundry const& other) const { return id == other.id; }
    bool operator!=(Foundry const& other) const { return id != other.id; }
    /**@}*/

    /**@{*/
    /// The default choice, which new blocks take over. createCS and createFlow do not look at it.
    void setCS(std::string const& name) { csFlow.setCS(name); }
    void setFlow(std::string const& name) { csFlow.setFlow(name); }
    CSInfo const& getCSFlow() const { return csFlow; }
    /**@}*/

    /**@{*/
    /// The keys and creators, in key order.
    FlowFactory::const_iterator beginFlow() const { return flows.begin(); }
    FlowFactory::const_iterator endFlow() const { return flows.end(); }
    CSFactory::const_iterator beginCrossSection() const { return crossSections.begin(); }
    CSFactory::const_iterator endCrossSection() const { return crossSections.end(); }
    /**@}*/

protected:
    ~Foundry() override;

private:
    friend class ::FactoryFunctions<Foundry>;

    unsigned int id;

protected:
    FlowFactory flows;        ///< filled by the constructors of concrete foundries
    CSFactory crossSections;  ///< likewise; the arguments are width and radius

private:
    CSInfo csFlow;

    static unsigned int mFoundryNr;
};

extern template class VRL_INSTANCE Serialisable<Foundry::CSInfo>;

}  // namespace Vorlane_v1_0
