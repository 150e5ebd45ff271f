#include "exchange/reader.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstring>
#include <fstream>
#include <iterator>

#include "exchange/scalar.h"
#include "text/failure.h"

namespace vrltool::exchange {

namespace {

constexpr off_t kLargest = 512 * 1024 * 1024;
char const* const kCure = "give the path of a file of JSON or YAML";

bool endsIn(std::string const& path, std::string const& end) {
    return path.size() >= end.size() && path.compare(path.size() - end.size(), end.size(), end) == 0;
}

std::string readBytes(std::string const& path) {
    struct stat kind {};
    if (stat(path.c_str(), &kind) != 0)
        throw Failure(path, std::string("cannot be read: ") + std::strerror(errno), kCure);
    if (!S_ISREG(kind.st_mode)) throw Failure(path, "is not a regular file", kCure);
    if (kind.st_size > kLargest) throw Failure(path, "is larger than 512 MiB", "split it into smaller ones");
    std::ifstream file(path, std::ios::binary);
    if (!file) throw Failure(path, std::string("cannot be read: ") + std::strerror(errno), kCure);
    std::string bytes((std::istreambuf_iterator<char>(file)), {});
    if (file.bad()) throw Failure(path, "cannot be read to its end", kCure);
    return bytes;
}

Mark placeOf(std::string const& text, std::size_t at) {
    Mark mark{1, 1};
    for (std::size_t i = 0; i < at; ++i) {
        ++mark.column;
        if (text[i] == '\n') mark = {mark.line + 1, 1};
    }
    return mark;
}

void refuseNoText(std::string const& path, std::string const& text) {
    if (text.find_first_not_of(" \t\r\n") == std::string::npos) throw Failure(path, "is empty", kCure);
    std::size_t const zero = text.find('\0');
    if (zero != std::string::npos) throw Failure(placeText(path, placeOf(text, zero)), "holds a zero byte", kCure);
    std::size_t wrong = 0;
    if (!isUtf8(text, &wrong))
        throw Failure(placeText(path, placeOf(text, wrong)), "is no UTF-8", "save it as UTF-8, for names with accents");
}

TextFormat formatOf(std::string const& path, std::string const& text) {
    if (endsIn(path, ".json")) return TextFormat::kJson;
    if (endsIn(path, ".yml") || endsIn(path, ".yaml")) return TextFormat::kYaml;
    return text[text.find_first_not_of(" \t\r\n")] == '{' ? TextFormat::kJson : TextFormat::kYaml;
}

}  // namespace

Tree readTree(std::string const& path, TextFormat* format) {
    std::string text = readBytes(path);
    if (text.compare(0, 3, "\xEF\xBB\xBF") == 0) text.erase(0, 3);
    refuseNoText(path, text);
    TextFormat const language = formatOf(path, text);
    if (format) *format = language;
    return language == TextFormat::kJson ? readJson(path, text) : readYaml(path, text);
}

std::string placeText(std::string const& path, Mark const& mark) {
    if (mark.line == 0) return path;
    return path + ":" + std::to_string(mark.line) + ":" + std::to_string(mark.column);
}

}  // namespace vrltool::exchange
