#include <exception>
#include <iostream>
#include <string>

#include "demo.h"

// One saved design in two processes: "build" makes a circuit and saves it, "check" reads it back and works
// on it. The library and two plug-ins are all that they share; no code of the plug-ins is linked here.

namespace {

constexpr char const* kUsage = "Usage: vrl_demo build CONFIG DESIGN\n"
                               "       vrl_demo check CONFIG DESIGN\n";
constexpr char const* kHelp =
    "\n"
    "build  starts the library on the configuration file CONFIG, builds a Mach-Zehnder modulator of SampleFab\n"
    "       blocks, checks and prints it, and saves it to the file DESIGN\n"
    "check  reads DESIGN back, attaches it to its foundry, finds the parameter that is out of range, asks cross\n"
    "       sections for their modes, attaches views, and prints the same netlist\n"
    "\n"
    "CONFIG has to name the plug-ins vrlDemoDll and foundrySampleFab; scripts/demo writes such a file.\n";

int refuse(std::string const& text) {
    std::cout.flush();
    std::cerr << "vrl_demo: " << text << (text.empty() || text.back() != '\n' ? "\n" : "");
    return 2;
}

}  // namespace

int main(int argc, char** argv) {
    std::string const verb = argc > 1 ? argv[1] : "";
    if (argc == 2 && verb == "--help") {
        std::cout << kUsage << kHelp;
        return 0;
    }
    if (argc != 4 || (verb != "build" && verb != "check")) {
        std::cerr << kUsage;
        return 2;
    }
    // Besides its own failures, a host meets the texts that the library throws.
    try {
        (verb == "build" ? build : check)(argv[2], argv[3]);
    } catch (Failure const& failure) {
        return refuse(failure.text);
    } catch (std::string const& text) {
        return refuse(text);
    } catch (char const* text) {
        return refuse(text);
    } catch (std::exception const& error) {
        return refuse(error.what());
    }
    return std::cout.flush() ? 0 : refuse("the standard output cannot be written.");
}
