// Works for a while and counts, as a command does.

#include <chrono>
#include <cstring>
#include <iostream>
#include <thread>

#include "text/progress.h"

namespace {

void work(vrltool::Progress& progress, int steps) {
    for (int i = 0; i < steps; ++i) progress.step();
}

}  // namespace

int main(int argc, char** argv) {
    char const* const scenario = argc > 1 ? argv[1] : "";
    bool const longWork = std::strncmp(scenario, "long", 4) == 0;
    {
        vrltool::Progress progress("reading", "blocks", std::strcmp(scenario, "longOfKnownSize") == 0 ? 1024 : 0);
        work(progress, 255);
        if (longWork) std::this_thread::sleep_for(std::chrono::milliseconds(1100));
        work(progress, 1);
        work(progress, 256);  // right after the first: not shown
        if (longWork) std::this_thread::sleep_for(std::chrono::milliseconds(250));
        work(progress, 256);
        if (std::strcmp(scenario, "longWithItsOwnCount") == 0) {
            std::this_thread::sleep_for(std::chrono::milliseconds(250));
            progress.at(7);
        }
    }
    std::cout << "done\n";
    return 0;
}
