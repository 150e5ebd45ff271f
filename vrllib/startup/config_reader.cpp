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

constexpr unsigned kMostStreams = 509;  // as many as the C run-time library of Windows leaves to a program
constexpr char kInclude[] = "#include ";

constexpr std::size_t kMostFiles = 10001;  // the one that a reading begins with, and its includes
constexpr std::size_t kMostBytes = std::size_t{64} << 20;
constexpr std::size_t kMostLines = 1000000;
constexpr std::size_t kMostMessages = std::size_t{8} << 20;

std::size_t messageBytes() {
    auto const end = vrlCout().tellp();
    return end < 0 ? 0 : static_cast<std::size_t>(end);
}

bool isSpace(char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; }

// A "#" in the first column stays: it may start an include.
void cutComment(std::string& line) {
    line.resize(std::min(line.size(), line.find('\n')));
    line.resize(std::min(line.size(), line.find('\r')));
    line.resize(std::min(line.size(), line.find(';')));
    line.resize(std::min(line.size(), line.find('#', 1)));
}

}  // namespace

Reading::Reading() : messagesBefore(messageBytes()) {}

char const* Reading::limitPassed() const {
    if (filesSpent) return "10000 included files";
    if (bytes > kMostBytes) return "64 MiB of text";
    if (lines > kMostLines) return "1000000 lines";
    if (loadsSpent) return "35000 loads of libraries";
    return messageBytes() > messagesBefore + kMostMessages ? "8 MiB of messages" : nullptr;
}

void ConfigReader::Close::operator()(std::FILE* file) const {
    std::fclose(file);
    --configuration().openStreams;
}

bool ConfigReader::open(std::string const& path) {
    if (configuration().openStreams >= kMostStreams) return false;
    std::FILE* const file = platform::openForReading(path.c_str());
    if (!file) return false;
    ++reading.files;
    ++configuration().openStreams;
    sources.push_back({{}, path});
    sources.back().stream.reset(file);
    return true;
}

// The line is that of a file which may still wait for an include of its own to end.
bool ConfigReader::isOver() {
    char const* const limit = reading.limitPassed();
    if (!limit) return sources.empty();
    if (!reading.isReported)
        vrlCout() << "-- warning: the configuration is read no further than line " << currentLine << " of <"
                  << currentFile << ">: it asks for more than " << limit << ".\n";
    reading.isReported = true;
    sources.clear();
    return true;
}

std::optional<std::string> ConfigReader::nextLine() {
    while (!isOver()) {
        if (!readPiece()) {
            sources.pop_back();
            continue;
        }
        if (piece.empty()) continue;
        std::string line = prepared();
        if (line.empty()) continue;
        if (line.front() != '#') return line;
        include(line);
    }
    return std::nullopt;
}

// Text after a zero byte of a line is lost, as in all texts of the system.
bool ConfigReader::readPiece() {
    Source& source = sources.back();
    std::FILE* const stream = source.stream.get();
    piece.clear();
    int next = std::feof(stream) ? EOF : std::getc(stream);
    if (next == EOF) return false;
    currentFile = source.path;
    currentLine = source.lineEnds + 1;
    while (next != EOF) {
        piece += static_cast<char>(next);
        if (next == '\n' || piece.size() == kLineArray - 1) break;
        next = std::getc(stream);
    }
    if (piece.back() == '\n') ++source.lineEnds;
    reading.bytes += piece.size();
    ++reading.lines;
    piece.resize(std::min(piece.size(), piece.find('\0')));
    return true;
}

std::string ConfigReader::prepared() const {
    std::string line = piece;
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
    // The search for the folder may read the file again, which counts to the limits of this reading.
    if (name.front() == '~') name.replace(0, 1, configFolder(reading));
    reading.filesSpent = reading.files == kMostFiles;
    if (!reading.limitPassed() && !open(name))
        vrlCout() << "-- warning: can not find VRLConfig.ini include: <" << name << ">.\n";
}

std::optional<std::string> takeValue(std::string& line) {
    std::size_t begin = line.find('=');
    if (begin == std::string::npos) return std::nullopt;
    while (isSpace(line.back())) line.pop_back();  // ends at the "=" at the latest
    ++begin;
    while (begin < line.size() && isSpace(line[begin])) ++begin;
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
