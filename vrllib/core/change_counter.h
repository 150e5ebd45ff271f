#pragma once

#include <cstdint>

#include "vrllib/base/export.h"

namespace Vorlane_v1_0 {

/// A change counter that the changing object owns.
///
/// That it moved says that something happened; its distance says nothing.
/// Threads: belongs to the thread that owns the object; the increment is a plain one.
class VRL_API Version {
public:
    /// Begins at 0.
    Version() = default;

    /// Counts one change.
    void update() { update(true); }
    /// Counts one change if there was one.
    void update(bool const& changed) {
        // In unsigned numbers, since a count past the largest one has to wrap without harm.
        if (changed) counter = static_cast<std::int32_t>(static_cast<std::uint32_t>(counter) + 1U);
    }

    /// The count so far.
    int get() const { return counter; }

private:
    std::int32_t counter = 0;
};

/// What a watcher holds: the count that it saw last of a Version.
///
/// It does not own the Version, which has to outlive it. A count that is greater than that of the Version counts as no
/// change.
class VRL_API VersionClient {
public:
    /// Begins at the present count, so that a new client sees no change.
    VersionClient(Version const& v);
    /// Watches the same Version, from the count that the source saw last.
    VersionClient(VersionClient const&) = default;

    /// Takes over the count that was seen and nothing else: the client goes on watching its own Version, by design.
    VersionClient& operator=(VersionClient const& other);

    /// Whether there was a change. It stays so until checkUpdate.
    bool check() const { return seenCount < watched.get(); }

    /// Whether there was a change, which then counts as seen.
    bool checkUpdate() const;

private:
    mutable std::int32_t seenCount;
    Version const& watched;
};

}  // namespace Vorlane_v1_0
