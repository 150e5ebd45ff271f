#include <yaml-cpp/depthguard.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>

#include "exchange/node.h"
#include "text/failure.h"
#include "text/table.h"
#include "text/utf8.h"

namespace vrltool::exchange {

namespace {

constexpr std::uintmax_t kLargest = 512 * 1024 * 1024;
constexpr std::size_t kDeepest = 100;         // far beyond what netlists need, far below what stacks hold
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

/// A plain scalar by the core schema of YAML; empty for a string.
std::string resolved(std::string const& text) {
    static std::map<std::string, std::string> const words{
        {"true", "true"},   {"True", "true"},   {"TRUE", "true"},   {"false", "false"}, {"False", "false"},
        {"FALSE", "false"}, {".nan", ".nan"},   {".NaN", ".nan"},   {".NAN", ".nan"},   {".inf", ".inf"},
        {".Inf", ".inf"},   {".INF", ".inf"},   {"+.inf", ".inf"},  {"+.Inf", ".inf"},  {"+.INF", ".inf"},
        {"-.inf", "-.inf"}, {"-.Inf", "-.inf"}, {"-.INF", "-.inf"},
    };
    auto const word = words.find(text);
    if (word != words.end()) return word->second;
    if (text.compare(0, 2, "0x") != 0 && text.compare(0, 2, "0o") != 0) return decimal(text);
    std::uint64_t value = 0;
    char const* const end = text.data() + text.size();
    auto const read = std::from_chars(text.data() + 2, end, value, text[1] == 'x' ? 16 : 8);
    return text.size() > 2 && read.ptr == end && read.ec == std::errc() ? std::to_string(value) : std::string();
}

/// The walk over a file that was read. It refuses what is nested too deeply, too large or ambiguous, and resolves the
/// plain scalars.
struct Check {
    std::string const& path;
    Mark last = {};  ///< the furthest place so far: a node before it comes from an alias
    std::size_t copied = 0;

    [[noreturn]] void fail(Mark const& mark, std::string const& what, std::string const& hint = "") const {
        throw Failure(placeText(path, mark), what, hint);
    }
    [[noreturn]] void failDeep(Mark const& mark) const {
        fail(mark, "is nested deeper than " + std::to_string(kDeepest) + " levels");
    }

    void value(Node node, std::size_t depth) {
        if (node.Mark().pos >= last.pos)
            last = node.Mark();
        else if (++copied > kMostCopied)
            fail(last, "its aliases make more than " + std::to_string(kMostCopied) + " values", "write them out");
        bool const plain = isPlainTag(node);
        if (node.IsScalar()) return scalar(node, plain);
        if (depth > kDeepest && !node.IsNull()) failDeep(node.Mark());
        std::map<std::string, int> lines;
        for (auto const& part : node) {
            if (node.IsMap()) name(part.first, lines);
            value(node.IsMap() ? part.second : part, depth + 1);
        }
    }

    /// Whether the value is written plainly, so that the schema decides what it is.
    bool isPlainTag(Node const& node) const {
        static std::string const standard = "tag:yaml.org,2002:";
        static std::set<std::string> const plain{
            "", "?", standard + "int", standard + "float", standard + "bool", standard + "seq", standard + "map"};
        std::string const& tag = node.Tag();
        if (plain.count(tag)) return true;
        if (tag != "!" && tag != standard + "str")
            fail(node.Mark(), "the tag '" + printable(tag) + "' is not known here", "write a plain value");
        return false;
    }

    void scalar(Node& node, bool plain) const {
        std::string const text = node.Scalar();
        if (text.find('\0') != std::string::npos)  // by an escape; names in the library end there
            fail(node.Mark(), "a string holds a zero byte", "remove it");
        std::string const spelling = plain ? resolved(text) : "";
        node.SetTag(spelling.empty() ? "!" : "");
        if (spelling.empty()) return;
        if (std::isinf(std::strtod(spelling.c_str(), nullptr)))
            fail(node.Mark(), "the number " + printable(text) + " is too large", "no number of a program holds it");
        node = spelling;
    }

    void name(Node node, std::map<std::string, int>& lines) const {
        if (!node.IsScalar())
            fail(node.Mark(), std::string("the name of a member is ") + kindWord(kindOf(node)), "names are strings");
        scalar(node, false);
        auto const twin = lines.emplace(node.Scalar(), node.Mark().line + 1);
        if (twin.second) return;
        fail(node.Mark(),  // one of the two values would be lost
             "'" + printable(node.Scalar()) + "' is duplicated; the first is in line " +
                 std::to_string(twin.first->second),
             "rename or remove one of them");
    }
};

Node parsed(std::string const& path, std::string const& text) {
    Check check{path};
    try {
        std::vector<Node> const documents = YAML::LoadAll(text);
        if (documents.size() > 1)
            check.fail(documents[1].Mark(), "a second document begins here", "keep one document in a file");
        if (documents.empty()) return {};
        check.value(documents[0], 1);
        return documents[0];
    } catch (YAML::DeepRecursion const& error) {
        check.failDeep(error.mark);
    } catch (YAML::Exception const& error) {
        check.fail(error.mark, error.msg);
    }
}

/// JSON with the pairs of escapes for characters beyond 16 bits written out, since YAML has other escapes for them.
std::string withoutPairs(std::string const& json) {
    std::string result;
    std::size_t done = 0;
    auto const unit = [&](std::size_t at) {
        unsigned number = 0;
        if (at + 6 <= json.size() && json.compare(at, 2, "\\u") == 0)
            std::from_chars(json.data() + at + 2, json.data() + at + 6, number, 16);
        return number;
    };
    for (auto at = json.find('\\'); at != std::string::npos; at = json.find('\\', at + 2)) {
        unsigned const high = unit(at), low = unit(at + 6);
        if (high >> 10 != 0x36 || low >> 10 != 0x37) continue;
        result.append(json, done, at - done);
        result += utf8(0x10000 + ((high & 0x3FF) << 10) + (low & 0x3FF));
        done = at + 12;
        at += 10;
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

Node readFile(std::string const& path) {
    std::string const text = readText(path);
    std::size_t const begin = text.find_first_not_of(" \t\r\n"), zero = text.find('\0'), stray = firstStrayByte(text);
    if (begin == std::string::npos) throw Failure(path, "is empty", kHint);
    if (zero != std::string::npos) throw Failure(placeOf(path, text, zero), "holds a zero byte", kHint);
    if (stray < text.size())
        throw Failure(placeOf(path, text, stray), "is no UTF-8", "save it as UTF-8, for names with accents");
    std::string const ending = std::filesystem::path(path).extension();
    bool const json = text[begin] == '{' && ending != ".yml" && ending != ".yaml";
    return parsed(path, json ? withoutPairs(text) : text);
}

Node valueOfLine(std::string const& line) {
    try {
        return parsed("", line);
    } catch (Failure const&) {
        return {};
    }
}

}  // namespace vrltool::exchange
