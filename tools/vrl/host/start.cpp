#include "host/start.h"

#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>

#include "guard/foreign_work.h"
#include "guard/quiet_output.h"
#include "guard/thrown.h"
#include "host/load_watch.h"
#include "text/failure.h"
#include "vrllib/vrllib.h"

namespace vrltool {

namespace {

/// The warnings of the configuration; the reports of single libraries are left to those who miss a kind. One that
/// ends in the path of the file has no line end of its own.
void showWarnings(std::string const& messages, std::string const& configFile) {
    std::istringstream lines(messages);
    for (std::string line; std::getline(lines, line);) {
        if (line.compare(0, 12, "-- warning: ") != 0) continue;
        auto const path = line.find(" one in " + configFile);
        if (path != std::string::npos) line.resize(path + 8 + configFile.size());
        std::cerr << "vrl: warning: " << line.substr(12) << '\n';
    }
}

}  // namespace

void checkConfig(std::string const& config) {
    std::error_code error;
    auto const status = std::filesystem::status(config, error);
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status))
        throw Failure(config, "is not a regular file", "give a configuration file with --config FILE");
    std::ifstream file(config);
    if (!file || file.peek() == std::ifstream::traits_type::eof())
        throw Failure(config, file.eof() ? "the configuration file is empty" : "cannot read this configuration file",
                      "give a readable file with --config FILE, or none");
}

void startLibrary(std::string const& config) {
    if (!config.empty()) {
        checkConfig(config);
        vrlConfigFile(config.c_str());
    }
    QuietOutput const quiet;
    if (!watchesLoads()) {
        WatchOptions options;
        options.enduresThrows = true;
        watchLoads(options);
        tellCrashes();
    }
    std::string const thrown = thrownBy([] { vrlInit_vrllib(false, true); });
    watchedLoads();  // the last of them is over
    if (!thrown.empty())
        throw Failure(
            lastWork(), "the plug-in threw " + thrown,
            "take it out of the configuration until it is mended; 'vrl plugins' and 'vrl validate' show more");
    std::string const messages = vrlGetCoutMsg();
    showWarnings(messages, vrlConfigFile());
}

}  // namespace vrltool
