#include "vrllib/model/port_choice.h"

#include <utility>

namespace Vorlane_v1_0::detail {

using CSInfo = Foundry::CSInfo;

PortChoice::PortChoice(PortChoice const& other) { *this = other; }
PortChoice& PortChoice::operator=(PortChoice const& other) {
    if (other.made || other.registerFilled) {
        get() = other.get();
    } else {
        if (made) *made = CSInfo(nullptr);
        registerFilled = false;
    }
    return *this;
}

// A moved choice starts with an empty register.
PortChoice::PortChoice(PortChoice&& other) noexcept { *this = std::move(other); }
PortChoice& PortChoice::operator=(PortChoice&& other) noexcept {
    if (other.made)
        get() = std::move(*other.made);
    else if (made)
        *made = CSInfo(nullptr);
    registerFilled = false;
    return *this;
}

PortChoice::~PortChoice() = default;

CSInfo& PortChoice::get() const {
    if (!made) {
        made = std::make_unique<CSInfo>(nullptr);
        if (registerFilled) made->getSerRegister();
    }
    return *made;
}

}  // namespace Vorlane_v1_0::detail
