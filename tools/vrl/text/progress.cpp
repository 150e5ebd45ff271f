#include "text/progress.h"

#include <unistd.h>

#include <iostream>
#include <utility>

namespace vrltool {

Progress::Progress(std::string what, std::string ofWhat, std::size_t ofAll)
    : doing(std::move(what)),
      things(std::move(ofWhat)),
      total(ofAll),
      onTerminal(isatty(STDERR_FILENO) != 0),
      next(std::chrono::steady_clock::now() + std::chrono::seconds(1)) {}

Progress::~Progress() {
    if (shown) std::cerr << "\r\x1b[K" << std::flush;
}

void Progress::show() {
    if (!onTerminal) return;
    auto const now = std::chrono::steady_clock::now();
    if (now < next) return;
    next = now + std::chrono::milliseconds(200);
    shown = true;
    std::cerr << "\r\x1b[K" << doing << ' ' << count;
    if (total > 0) std::cerr << " of " << total;
    std::cerr << ' ' << things << std::flush;
}

}  // namespace vrltool
