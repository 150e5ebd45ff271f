#include "vrllib/model/port_choice.h"

#include <utility>

namespace Vorlane_v1_0::detail {

using CSInfo = Foundry::CSInfo;

PortChoice::PortChoice(PortChoice const& other) { *this = other; }
PortChoice& PortChoice::operator=(PortChoice const& other) {
    if (!other.isFresh())
        get() = other.get();
    else if (!isFresh())
        get() = CSInfo(nullptr);
    return *this;
}

PortChoice::PortChoice(PortChoice&& other) noexcept { *this = std::move(other); }
// A choice that is made stays at its place, where references may lead. Its register is emptied on each way.
PortChoice& PortChoice::operator=(PortChoice&& other) noexcept {
    if (made)
        *made = other.made ? std::move(*other.made) : CSInfo(nullptr);
    else if ((made = std::move(other.made)))
        *made = CSInfo(std::move(*made));
    wasStreamed = false;
    return *this;
}

PortChoice::~PortChoice() = default;

CSInfo& PortChoice::get() const {
    if (!made) {
        made = std::make_unique<CSInfo>(nullptr);
        if (wasStreamed) made->getSerRegister();
    }
    return *made;
}

}  // namespace Vorlane_v1_0::detail
