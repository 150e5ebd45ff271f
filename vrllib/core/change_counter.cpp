#include "vrllib/core/change_counter.h"

namespace Vorlane_v1_0 {

VersionClient::VersionClient(Version const& v) : seenCount(v.get()), watched(v) {}

// `watched` stays: a client watches one Version all its life.
VersionClient& VersionClient::operator=(VersionClient const& other) {
    seenCount = other.seenCount;
    return *this;
}

bool VersionClient::checkUpdate() const {
    if (!check()) return false;
    seenCount = watched.get();
    return true;
}

}  // namespace Vorlane_v1_0
