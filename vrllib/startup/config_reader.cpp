#include "vrllib/startup/config_reader.h"

#include <algorithm>
#include <cctype>

#include "vrllib/attributes/attributes.h"
#include "vrllib/core/messages.h"
#include "vrllib/platform/platform.h"
#include "vrllib/startup/configuration_state.h"
#include "vrllib/startup/macros.h"
#include "vrllib/startup/startup.h"

namespace Vorlane_v1_0::detail {

namespace {

constexpr unsigned kMostStreams = 509;     // as many as the C run-time library of Windows leaves to a program
constexpr unsigned kMostIncludes = 10000;  // opened in one reading, besides the file that it begins with
constexpr char kInclude[] = "#include ";

bool isSpace(char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; }

// A "#" in the first column stays: it may start an include.
void cutComment(std::string& line) {
    line.resize(std::min(line.size(), line.find('\n')));
    line.resize(std::min(line.size(), line.find('\r')));
    line.resize(std::min(line.size(), line.find(';')));
    line.resize(std::min(line.size(), line.find('#', 1)));
}

}  // namespace

void ConfigReader::Close::operator()(std::FILE* file) const {
    std::fclose(file);
    --configuration().openStreams;
}

bool ConfigReader::open(std::string const& path) {
    if (reading.opened > kMostIncludes || configuration().openStreams >= kMostStreams) return false;
    std::FILE* const file = platform::openForReading(path.c_str());
    if (!file) return false;
    ++reading.opened;
    ++configuration().openStreams;
    streams.emplace_back(file);
    return true;
}

std::optional<std::string> ConfigReader::nextLine() {
    while (!streams.empty()) {
        if (!readPiece()) {
            streams.pop_back();
            continue;
        }
        std::string line = prepared();
        if (line.empty()) continue;
        if (line.front() != '#') return line;
        include(line);
    }
    return std::nullopt;
}

bool ConfigReader::readPiece() {
    std::FILE* const file = streams.back().get();
    buffer.resize(kLineArray);
    buffer[0] = '\0';
    return !std::feof(file) && std::fgets(buffer.data(), static_cast<int>(buffer.size()), file);
}

std::string ConfigReader::prepared() const {
    std::string line(buffer.data());
    if (order == LineOrder::kCutFirst) cutComment(line);
    expandMacros(line, kLineArray);
    if (order == LineOrder::kExpandFirst) cutComment(line);
    return line;
}

void ConfigReader::include(std::string const& line) {
    std::size_t begin = sizeof kInclude - 1;
    if (line.compare(0, begin, kInclude) != 0) return;
    while (begin < line.size() && isSpace(line[begin])) ++begin;
    std::string name = line.substr(begin);
    if (name.empty()) return;
    if (name.front() == '~') name.replace(0, 1, configFolder(reading));
    if (!open(name)) vrlCout() << "-- warning: can not find VRLConfig.ini include: <" << name << ">.\n";
}

std::optional<std::string> takeValue(std::string& line) {
    std::size_t begin = line.find('=');
    if (begin == std::string::npos) return std::nullopt;
    ++begin;
    while (begin < line.size() && isSpace(line[begin])) ++begin;
    while (line.size() > begin && isSpace(line.back())) line.pop_back();
    return line.substr(begin);
}

std::vector<std::string> readValues(std::string const& key, Reading& reading) {
    std::vector<std::string> values;
    std::string const path = vrlConfigFile();
    Attributes::factory();
    ConfigReader reader(LineOrder::kExpandFirst, reading);
    if (!reader.open(path)) {
        vrlCout() << "-- warning: no dll/so being loaded, no config file\n";
        return values;
    }
    while (auto line = reader.nextLine()) {
        auto value = takeValue(*line);
        if (value && line->compare(0, key.size(), key) == 0) values.push_back(std::move(*value));
    }
    return values;
}

std::string configFolder(Reading& reading) {
    std::string& cache = configuration().configPathCache;
    if (!cache.empty()) return cache;
    auto const values = readValues("ConfigPath", reading);
    if (values.empty()) {
        std::string const file = vrlConfigFile();
        cache = file.substr(0, file.find_last_of("/\\"));
    } else {
        cache = values.front();
    }
    return cache;
}

}  // namespace Vorlane_v1_0::detail
