#pragma once

#include <memory>
#include <string>

#include "vrllib/model/foundry.h"

namespace Vorlane_v1_0::detail {

/// The choice of cross section of a port. Few ports have one, so an empty choice becomes an object only when somebody
/// asks for it.
class VRL_API PortChoice {
public:
    /// An empty choice without a foundry.
    PortChoice() = default;
    /**@{*/
    /// As copying and moving the choice itself.
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
    /// It was written or read while unmade.
    void streamedUnmade() { wasStreamed = true; }

    /**@{*/
    /// The walks, in the form of Serialisable.
    using WalkOf = PortChoice;
    template <class Writer>
    static bool writeTo(Writer s, PortChoice& choice, std::string const& name) {
        if (choice.made) return Serialisable<Foundry::CSInfo>::writeTo(s, *choice.made, name);
        Foundry::CSInfo none(nullptr);
        choice.streamedUnmade();
        return Serialisable<Foundry::CSInfo>::writeTo(s, none, name);
    }
    template <class Reader>
    static bool readFrom(Reader d, PortChoice& choice) {
        return Serialisable<Foundry::CSInfo>::readFrom(d, choice.get());
    }
    /**@}*/

private:
    bool isFresh() const { return !made && !wasStreamed; }

    mutable std::unique_ptr<Foundry::CSInfo> made;
    bool wasStreamed = false;  // its register counts as filled then, which a copy can tell
};

}  // namespace Vorlane_v1_0::detail
