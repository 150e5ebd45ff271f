#include <yaml-cpp/depthguard.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <nlohmann/json.hpp>

#include "exchange/node.h"
#include "text/failure.h"
#include "text/json.h"
#include "text/table.h"
#include "text/utf8.h"

namespace vrltool::exchange {

namespace {

constexpr std::uintmax_t kLargest = 512 * 1024 * 1024;
constexpr std::size_t kMostCopied = 1000000;  // values that aliases may make
char const* const kHint = "give the path of a file of JSON or YAML";

bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// A decimal number of YAML in the spelling of JSON; empty for what is none.
std::string decimal(std::string const& text) {
    bool const sign = text[0] == '-' || text[0] == '+';
    double value = 0;
    bool const begins = isDigit(text[sign]) || text[sign] == '.';
    char const* const end = text.data() + text.size();
    if (!begins || std::from_chars(text.data() + sign, end, value).ptr != end) return {};
    std::string digits = text.substr(sign);
    digits.erase(0, std::min(digits.find_first_not_of('0'), digits.size()));
    if (!isDigit(digits[0])) digits.insert(0, "0");
    auto const point = digits.find('.');
    if (point != std::string::npos && !isDigit(digits[point + 1])) digits.insert(point + 1, "0");
    return (text[0] == '-' ? "-" : "") + digits;
}

/// The walk over what yaml-cpp read, which makes our values of it. It refuses what is nested too deeply, too large or
/// ambiguous, and resolves the plain scalars.
struct Check {
    std::string const& path;
    Mark last = {};  ///< the furthest place so far: a node before it comes from an alias
    std::size_t copied = 0;

    [[noreturn]] void failDeep(Mark const& mark) const {
        fail(path, mark, "is nested deeper than " + std::to_string(kDeepest) + " levels");
    }

    Node value(YAML::Node const& node, std::size_t depth) {
        if (node.Mark().pos >= last.pos)
            last = node.Mark();
        else if (++copied > kMostCopied)
            fail(path, last, "its aliases make more than " + std::to_string(kMostCopied) + " values", "write them out");
        bool const plain = isPlainTag(node);
        if (node.IsScalar()) return scalar(node, plain);
        if (node.IsNull()) return Node{Kind::kNull, "", node.Mark()};
        if (depth > kDeepest) failDeep(node.Mark());
        Node result{node.IsMap() ? Kind::kMap : Kind::kList, "", node.Mark()};
        std::map<std::string, int> lines;
        for (auto const& part : node) {
            Node const key = node.IsMap() ? name(part.first, lines) : Node();
            result.add(key, value(node.IsMap() ? part.second : part, depth + 1));
        }
        return result;
    }

    /// Whether the value is written plainly, so that the schema decides what it is.
    bool isPlainTag(YAML::Node const& node) const {
        std::string const& tag = node.Tag();
        bool const standard = tag.compare(0, 18, "tag:yaml.org,2002:") == 0, plain = tag.empty() || tag == "?";
        if (!standard && !plain && tag != "!")
            fail(path, node.Mark(), "the tag '" + printable(tag) + "' is not known here", "write a plain value");
        return plain || (standard && tag != "tag:yaml.org,2002:str");
    }

    Node scalar(YAML::Node const& node, bool plain) const {
        std::string const& text = node.Scalar();
        if (text.find('\0') != std::string::npos)  // by an escape; names in the library end there
            fail(path, node.Mark(), "a string holds a zero byte", "remove it");
        std::string const spelling = plain ? resolved(text) : "";
        if (spelling.empty()) return stringNode(text, node.Mark());
        if (std::isinf(std::strtod(spelling.c_str(), nullptr)))
            fail(path, node.Mark(), "the number " + printable(text) + " is too large",
                 "no number of a program holds it");
        return plainNode(spelling, node.Mark());
    }

    Node name(YAML::Node const& node, std::map<std::string, int>& lines) const {
        Kind const kind = node.IsMap() ? Kind::kMap : node.IsSequence() ? Kind::kList : Kind::kNull;
        if (!node.IsScalar())
            fail(path, node.Mark(), std::string("the name of a member is ") + kindWord(kind), "names are strings");
        Node const name = scalar(node, false);
        if (node.Scalar().size() > kLongestName)
            fail(path, node.Mark(), "a name is longer than 400 bytes", "shorten it");
        auto const twin = lines.emplace(node.Scalar(), node.Mark().line + 1);
        if (twin.second) return name;
        fail(path, node.Mark(),  // one of the two values would be lost
             "'" + printable(node.Scalar()) + "' is duplicated; the first is in line " +
                 std::to_string(twin.first->second),
             "rename or remove one of them");
    }
};

Node parsed(std::string const& path, std::string const& text) {
    Check check{path};
    try {
        std::vector<YAML::Node> const documents = YAML::LoadAll(text);
        if (documents.size() > 1)
            fail(path, documents[1].Mark(), "a second document begins here", "keep one document in a file");
        if (documents.empty()) return {};
        return check.value(documents[0], 1);
    } catch (YAML::DeepRecursion const& error) {
        check.failDeep(error.mark);
    } catch (YAML::Exception const& error) {
        fail(path, error.mark, error.msg);
    }
}

/// JSON as YAML that means the same. YAML has no pairs of escapes for characters beyond 16 bits, and looks for the
/// colon after a name in its line only, and not far, unless the name is marked.
std::string asYaml(std::string const& json) {
    std::string result;
    std::size_t done = 0;
    for (auto begin = json.find('"'); begin != std::string::npos; begin = json.find('"', done)) {
        std::size_t end = begin + 1;
        while (end < json.size() && json[end] != '"') end += json[end] == '\\' ? 2 : 1;
        auto const colon = json.find_first_not_of(" \t\r\n", end + 1);
        bool const name = colon != std::string::npos && json[colon] == ':';
        result.append(json, done, begin - done);
        if (name && (end - begin > 1000 || json.find_first_of("\n:", end) != colon)) result += "? ";
        done = std::min(end + 1, json.size());
        std::string const text = json.substr(begin, done - begin);
        Json const string = text.find("\\ud") == std::string::npos ? Json() : Json::parse(text, nullptr, false);
        result += string.is_string() ? string.dump() : text;
    }
    return result.append(json, done);
}

std::string readText(std::string const& path) {
    std::error_code problem;
    auto const status = std::filesystem::status(path, problem);
    if (!std::filesystem::exists(status)) throw Failure(path, "cannot be read: " + problem.message(), kHint);
    if (!std::filesystem::is_regular_file(status)) throw Failure(path, "is not a regular file", kHint);
    if (std::filesystem::file_size(path, problem) > kLargest)
        throw Failure(path, "is larger than 512 MiB", "split it into smaller ones");
    std::ifstream file(path, std::ios::binary);
    if (!file) throw Failure(path, "cannot be read: " + std::generic_category().message(errno), kHint);
    std::string text((std::istreambuf_iterator<char>(file)), {});
    if (file.bad()) throw Failure(path, "cannot be read to its end", kHint);
    return text.compare(0, 3, "\xEF\xBB\xBF") == 0 ? text.substr(3) : text;
}

/// The place of a byte that the parser does not get to see.
std::string placeOf(std::string const& path, std::string const& text, std::size_t at) {
    auto const line = std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(at), '\n');
    auto const start = at == 0 ? std::string::npos : text.rfind('\n', at - 1);
    return path + ":" + std::to_string(line + 1) + ":" + std::to_string(at - (start + 1) + 1);
}

}  // namespace

std::string resolved(std::string const& text) {
    static std::map<std::string, std::string> const words{
        {"true", "true"},   {"True", "true"},   {"TRUE", "true"},   {"false", "false"}, {"False", "false"},
        {"FALSE", "false"}, {".nan", ".nan"},   {".NaN", ".nan"},   {".NAN", ".nan"},   {".inf", ".inf"},
        {".Inf", ".inf"},   {".INF", ".inf"},   {"+.inf", ".inf"},  {"+.Inf", ".inf"},  {"+.INF", ".inf"},
        {"-.inf", "-.inf"}, {"-.Inf", "-.inf"}, {"-.INF", "-.inf"},
    };
    auto const word = words.find(text);
    return word == words.end() ? decimal(text) : word->second;
}

Node readFile(std::string const& path) {
    std::string const text = readText(path);
    std::size_t const begin = text.find_first_not_of(" \t\r\n"), zero = text.find('\0'), stray = firstStrayByte(text);
    if (begin == std::string::npos) throw Failure(path, "is empty", kHint);
    if (zero != std::string::npos) throw Failure(placeOf(path, text, zero), "holds a zero byte", kHint);
    if (stray < text.size())
        throw Failure(placeOf(path, text, stray), "is no UTF-8", "save it as UTF-8, for names with accents");
    std::string const ending = std::filesystem::path(path).extension();
    bool const json = text[begin] == '{' && ending != ".yml" && ending != ".yaml";
    return parsed(path, json ? asYaml(text) : text);
}

Node valueOfLine(std::string const& line) {
    if (line.empty()) return {};
    try {
        return parsed("", line);
    } catch (Failure const&) {
        return {};
    }
}

}  // namespace vrltool::exchange
