#pragma once

#include <functional>
#include <string>

#include "system/pipe.h"
#include "system/process.h"

namespace vrltool {

/// A copy of this program that goes on in its place, while this one watches: it may be ended before it has done
/// anything that users see, and be started anew.
///
/// Until the copy says that it is ready, what it writes to standard error reaches its parent only.
class Supervised {
public:
    /// What the parent saw of the time until the copy was ready, or ended.
    struct Start {
        bool ready = false;
        ProcessResult ended;  ///< if it is not ready
        std::string reports;  ///< lines
        std::string errors;   ///< what it wrote to standard error
    };

    /// Starts the copy, which returns from here as well. Errors: a Failure where the system starts no process.
    Supervised();
    Supervised(Supervised const&) = delete;
    Supervised& operator=(Supervised const&) = delete;
    ~Supervised();

    bool isCopy() const { return child == 0; }

    /// In the copy: sends a line to the parent.
    void report(std::string const& line) const;
    /// In the copy: writes to standard error as before, and is no longer limited.
    void beReady();

    /// In the parent: waits until the copy is ready, and ends it if that takes longer. `waiting` is called now and then
    /// with the seconds that have passed.
    Start waitUntilReady(unsigned seconds, std::function<void(std::size_t)> const& waiting);
    /// In the parent: waits for the end of a copy that is ready. Signals that ask this program to end are handed on.
    ProcessResult waitForEnd();

private:
    bool hasEnded(ProcessResult& ended);
    /// Takes what the copy has written by then. False if it wrote nothing.
    bool takeOutput(Start& start, int milliseconds);

    pid_t child = -1;
    Pipe reports;
    Pipe errors;
    Pipe proceed;  // the copy goes on once the parent has handed on what it wrote
    Descriptor keptErrors;
};

}  // namespace vrltool
