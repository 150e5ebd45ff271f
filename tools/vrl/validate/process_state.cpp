#include "validate/process_state.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cfenv>
#include <clocale>
#include <csignal>
#include <filesystem>
#include <iostream>
#include <locale>

namespace vrltool::validate {

namespace {

std::string signalState() {
    std::string state;
    for (int number = 1; number < NSIG; ++number) {
        struct sigaction action = {};
        if (sigaction(number, nullptr, &action) != 0) continue;
        auto const handler = reinterpret_cast<std::uintptr_t>(action.sa_handler);
        state += std::to_string(handler) + " ";
    }
    return state;
}

std::string maskState() {
    mode_t const mask = umask(0);
    umask(mask);
    return std::to_string(mask);
}

std::string folderState() {
    std::error_code error;
    return std::filesystem::current_path(error).string();
}

std::string environmentState() {
    std::string state;
    for (char** variable = environ; *variable; ++variable) state += std::string(*variable) + '\n';
    return state;
}

std::string streamState() {
    std::string state;
    for (std::ostream* const stream : {&std::cout, &std::cerr, &std::clog}) {
        auto const buffer = reinterpret_cast<std::uintptr_t>(stream->rdbuf());
        for (auto const part :
             {static_cast<std::uintptr_t>(stream->flags()), buffer, static_cast<std::uintptr_t>(stream->precision()),
              static_cast<std::uintptr_t>(stream->exceptions())})
            state += std::to_string(part) + " ";
        state += stream->getloc().name() + " ";
    }
    return state;
}

}  // namespace

std::vector<ProcessProperty> processState() {
    char const* const locale = std::setlocale(LC_ALL, nullptr);
    return {{"the locale of C", locale ? locale : ""},
            {"the locale of C++", std::locale().name()},
            {"the handlers of signals", signalState()},
            {"the working folder", folderState()},
            {"the mask of new files", maskState()},
            {"the environment", environmentState()},
            {"the rounding of numbers", std::to_string(std::fegetround())},
            {"the settings of std::cout, std::cerr or std::clog", streamState()}};
}

}  // namespace vrltool::validate
