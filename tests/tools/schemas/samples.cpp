// Writes the saved objects of the tests into a folder, NAME.vrl each.

#include <exception>
#include <iostream>

#include "tests/support/files.h"
#include "tests/tools/design/saved_objects.h"

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "Usage: vrl_schema_samples FOLDER\n";
        return 2;
    }
    try {
        for (auto const& object : vrl_test::savedObjects())
            vrl_test::writeFile(std::string(argv[1]) + "/" + object.first + ".vrl", object.second);
    } catch (std::exception const& error) {
        std::cerr << "vrl_schema_samples: " << error.what() << '\n';
        return 2;
    }
    return 0;
}
