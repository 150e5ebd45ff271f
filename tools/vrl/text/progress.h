#pragma once

#include <chrono>
#include <cstddef>
#include <string>

namespace vrltool {

/// A counter on the terminal for work that takes more than a second, such as "reading 4096 blocks". Where standard
/// error is no terminal it shows nothing. Its destructor wipes the line.
class Progress {
public:
    /// `total` 0: not known.
    Progress(std::string doing, std::string things, std::size_t total = 0);
    Progress(Progress const&) = delete;
    Progress& operator=(Progress const&) = delete;
    ~Progress();

    /// Counts one more. Cheap: the clock is asked for every 256th only.
    void step() {
        if ((++count & 255) == 0) show();
    }

    /// The count as it is now, for work that counts by itself.
    void at(std::size_t now) {
        count = now;
        show();
    }

private:
    void show();

    std::string doing;
    std::string things;
    std::size_t total;
    std::size_t count = 0;
    bool onTerminal;
    bool shown = false;
    std::chrono::steady_clock::time_point next;
};

}  // namespace vrltool
