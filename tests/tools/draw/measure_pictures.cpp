// Measures the pictures of circuits that are named as arguments, and prints a table of them; their faults follow, and
// the status is 1 if there are any.

#include <algorithm>
#include <exception>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <sstream>

#include "tests/tools/draw/measure.h"

namespace {

bool measure(std::string const& path) {
    std::ostringstream svg;
    svg << std::ifstream(path, std::ios::binary).rdbuf();
    auto const picture = vrl_test::measured(svg.str());
    std::cout << "| " << path << " | " << picture.width << " x " << picture.height << " | " << picture.blocks << " | "
              << picture.wires << " | " << picture.faults.size() << " | " << picture.crossings << " | "
              << std::setprecision(2)
              << static_cast<double>(picture.bends) / static_cast<double>(std::max<std::size_t>(picture.wires, 1))
              << " | " << static_cast<int>(100 * picture.empty) << " % |\n";
    for (std::string const& fault : picture.faults) std::cerr << path << ": " << fault << '\n';
    return picture.faults.empty();
}

}  // namespace

int main(int argc, char** argv) {
    std::cout << "| picture | size | blocks | wires | faults | crossings | bends a wire | empty |\n"
                 "|---|---|---|---|---|---|---|---|\n";
    bool fine = true;
    for (int i = 1; i < argc; ++i) try {
            fine &= measure(argv[i]);
        } catch (std::exception const& error) {
            std::cerr << argv[i] << ": " << error.what() << '\n';
            fine = false;
        }
    return fine ? 0 : 1;
}
