#pragma once

#include <memory>

#include "vrllib/model/foundry.h"

namespace Vorlane_v1_0::detail {

/// The choice of cross section of a port. Few ports have one, so an empty choice becomes an object only when somebody
/// asks for it; until then it may count as one whose register is filled, because its port was saved or read.
class VRL_API PortChoice {
public:
    /// An empty choice without a foundry.
    PortChoice() = default;
    /**@{*/
    /// As copying and moving the choice itself, which stays where it is, with both ports.
    PortChoice(PortChoice const& other);
    PortChoice& operator=(PortChoice const& other);
    PortChoice(PortChoice&& other) noexcept;
    PortChoice& operator=(PortChoice&& other) noexcept;
    /**@}*/
    ~PortChoice();

    /// The choice; valid as long as this object.
    Foundry::CSInfo& get() const;

    /// Whether nobody has asked for it: it is empty.
    bool isUnmade() const { return !made; }
    /// The register of a choice that is not made counts as filled, which a copy can tell.
    void fillRegister() { registerFilled = true; }

private:
    mutable std::unique_ptr<Foundry::CSInfo> made;
    bool registerFilled = false;  // of a choice that is not made
};

}  // namespace Vorlane_v1_0::detail
