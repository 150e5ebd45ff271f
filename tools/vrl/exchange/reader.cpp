#include <yaml.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <new>
#include <nlohmann/json.hpp>
#include <unordered_map>

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

/// The place of a byte, with the columns of characters.
Mark markOf(std::string const& text, std::size_t at) {
    std::size_t const before = text.substr(0, at).rfind('\n'), start = before + 1;
    auto const begin = text.begin(), line = begin + static_cast<std::ptrdiff_t>(start),
               end = begin + static_cast<std::ptrdiff_t>(at);
    auto const beginsOne = [](char byte) { return (byte & 0xC0) != 0x80; };
    return {static_cast<int>(std::count(begin, line, '\n')) + 1,
            static_cast<int>(std::count_if(line, end, beginsOne)) + 1};
}

Mark markOf(yaml_mark_t const& mark) { return {static_cast<int>(mark.line) + 1, static_cast<int>(mark.column) + 1}; }

char const* charsOf(yaml_char_t const* text) { return text ? reinterpret_cast<char const*>(text) : ""; }

/// What an anchor names.
struct Anchored {
    Node node;
    std::size_t values, levels;  ///< in it, with those of its aliases
};

/// The walk over the events of libyaml, which makes our values of them. It refuses what is nested too deeply, too large
/// or ambiguous, and resolves the plain scalars.
class Reading {
public:
    Reading(std::string const& path, std::string const& text) : path_(path), text_(text) {
        if (yaml_parser_initialize(&parser_) == 0) throw std::bad_alloc();
        yaml_parser_set_encoding(&parser_, YAML_UTF8_ENCODING);
        yaml_parser_set_input_string(&parser_, reinterpret_cast<yaml_char_t const*>(text.data()), text.size());
    }
    Reading(Reading const&) = delete;
    Reading& operator=(Reading const&) = delete;
    ~Reading() {
        yaml_event_delete(&event_);
        yaml_parser_delete(&parser_);
    }

    /// The value of the only document; null without one.
    Node document() {
        next();  // the stream begins
        next();
        if (event_.type == YAML_STREAM_END_EVENT) return {};
        next();
        Node const result = value(1);
        next();  // the document ends
        next();
        if (event_.type == YAML_STREAM_END_EVENT) return result;
        fail(path_, mark(), "a second document begins here", "keep one document in a file");
    }

private:
    void next() {
        yaml_event_delete(&event_);
        if (yaml_parser_parse(&parser_, &event_) != 0) return;
        bool const unread = parser_.error == YAML_READER_ERROR;  // then there is no mark
        std::string const context = parser_.context && !unread ? std::string(" ") + parser_.context : "",
                          problem = parser_.problem ? parser_.problem : "needs more memory than there is";
        fail(path_, unread ? markOf(text_, parser_.problem_offset) : markOf(parser_.problem_mark), problem + context);
    }

    Mark mark() const { return markOf(event_.start_mark); }
    bool isMapBegin() const { return event_.type == YAML_MAPPING_START_EVENT; }

    Node value(std::size_t depth) {
        if (event_.type == YAML_ALIAS_EVENT) return aliased(depth);
        std::string const anchor = anchorName();
        std::size_t const outer = std::exchange(deepest_, depth), before = values_++;
        Node node = event_.type == YAML_SCALAR_EVENT ? scalar(true) : collection(depth);
        if (!anchor.empty()) anchors_[anchor] = {node, values_ - before, deepest_ - depth};
        deepest_ = std::max(deepest_, outer);
        return node;
    }

    std::string anchorName() const {
        auto const& data = event_.data;
        if (event_.type == YAML_SCALAR_EVENT) return charsOf(data.scalar.anchor);
        return charsOf(isMapBegin() ? data.mapping_start.anchor : data.sequence_start.anchor);
    }

    Node aliased(std::size_t depth) {
        std::string const name = charsOf(event_.data.alias.anchor);
        auto const found = anchors_.find(name);
        if (found == anchors_.end())
            fail(path_, mark(), "'*" + printable(name) + "' leads to nothing that ends before it");
        Anchored const& anchored = found->second;
        deepest_ = std::max(deepest_, depth + anchored.levels);
        if (deepest_ > kDeepest) failDeep();
        values_ += anchored.values;
        if ((copied_ += anchored.values) <= kMostCopied) return anchored.node;
        fail(path_, mark(), "its aliases make more than " + std::to_string(kMostCopied) + " values", "write them out");
    }

    [[noreturn]] void failDeep() const {
        fail(path_, mark(), "is nested deeper than " + std::to_string(kDeepest) + " levels");
    }

    Node collection(std::size_t depth) {
        if (depth > kDeepest) failDeep();
        bool const map = isMapBegin();
        isPlainTag(map ? event_.data.mapping_start.tag : event_.data.sequence_start.tag);
        Node result{map ? Kind::kMap : Kind::kList, "", mark()};
        std::size_t const first = parts_.size();
        for (next(); event_.type != YAML_MAPPING_END_EVENT && event_.type != YAML_SEQUENCE_END_EVENT; next()) {
            Node key = map ? name() : Node();
            if (map) next();
            Node part = value(depth + 1);
            parts_.emplace_back(std::move(key), std::move(part));
        }
        auto const begin = parts_.begin() + static_cast<std::ptrdiff_t>(first);
        if (begin != parts_.end())
            result.parts = std::make_shared<std::vector<Node::Part>>(std::make_move_iterator(begin),
                                                                     std::make_move_iterator(parts_.end()));
        parts_.erase(begin, parts_.end());
        if (map) refuseTwins(result);
        return result;
    }

    /// Whether a value with that tag is what the schema makes of it, and no string anyway.
    bool isPlainTag(yaml_char_t const* tag) const {
        if (!tag) return false;
        std::string const text = charsOf(tag);
        bool const standard = text.compare(0, 18, "tag:yaml.org,2002:") == 0;
        if (!standard && text != "!")
            fail(path_, mark(), "the tag '" + printable(text) + "' is not known here", "write a plain value");
        return standard && text != "tag:yaml.org,2002:str";
    }

    /// A scalar; as a string in any case, unless it is to be resolved or null.
    Node scalar(bool resolve) const {
        auto const& given = event_.data.scalar;
        bool const untagged = !given.tag && given.style == YAML_PLAIN_SCALAR_STYLE;
        bool const plain = isPlainTag(given.tag) || untagged;
        std::string text(charsOf(given.value), given.length);
        if (text.find('\0') != std::string::npos)  // by an escape; names in the library end there
            fail(path_, mark(), "a string holds a zero byte", "remove it");
        static std::string_view const nulls[] = {"", "~", "null", "Null", "NULL"};
        if (untagged && std::find(std::begin(nulls), std::end(nulls), text) != std::end(nulls))
            return {Kind::kNull, "", mark()};
        std::string const spelling = plain && resolve ? resolved(text) : "";
        if (spelling.empty()) return stringNode(text, mark());
        if (std::isinf(std::strtod(spelling.c_str(), nullptr)))
            fail(path_, mark(), "the number " + printable(text) + " is too large", "no number of a program holds it");
        return plainNode(spelling, mark());
    }

    /// The name of a member, which is a string also where a value that is written so would be none.
    Node name() {
        bool const written = event_.type == YAML_SCALAR_EVENT, alias = event_.type == YAML_ALIAS_EVENT;
        Node const name = written ? scalar(false) : alias ? aliased(0) : Node{isMapBegin() ? Kind::kMap : Kind::kList};
        if (!isString(name))
            fail(path_, mark(), std::string("the name of a member is ") + kindWord(name.kind), "names are strings");
        if (name.text.size() > kLongestName)
            fail(path_, mark(), "a name is longer than " + std::to_string(kLongestName) + " bytes", "shorten it");
        std::string const anchor = written ? anchorName() : "";
        if (!anchor.empty()) anchors_[anchor] = {scalar(true), 1, 0};
        return name;
    }

    /// Fails for a map with two members of one name: one of the values would be lost.
    void refuseTwins(Node const& map) {
        sorted_.clear();
        for (auto const& part : map) sorted_.push_back(&part);
        auto const before = [](Node::Part const* a, Node::Part const* b) {
            int const order = a->first.text.compare(b->first.text);
            return order != 0 ? order < 0 : a < b;
        };
        auto const equal = [](Node::Part const* a, Node::Part const* b) { return a->first.text == b->first.text; };
        std::sort(sorted_.begin(), sorted_.end(), before);
        auto const twins = std::adjacent_find(sorted_.begin(), sorted_.end(), equal);
        if (twins == sorted_.end()) return;
        Node const &first = (*twins)->first, &second = (*(twins + 1))->first;
        fail(path_, second.mark,
             "'" + printable(first.text) + "' is duplicated; the first is in line " + std::to_string(first.mark.line),
             "rename or remove one of them");
    }

    std::string const& path_;
    std::string const& text_;
    yaml_parser_t parser_ = {};
    yaml_event_t event_ = {};
    std::unordered_map<std::string, Anchored> anchors_ = {};
    std::size_t values_ = 0, copied_ = 0;  ///< so far; those that aliases made
    std::size_t deepest_ = 0;              ///< level within the value that is read
    std::vector<Node::Part> parts_ = {};   ///< of all collections that have not ended, one after the other
    std::vector<Node::Part const*> sorted_ = {};
};

/// JSON as YAML that means the same. YAML has no pairs of escapes for characters beyond 16 bits, some that have to be
/// escaped, and looks for the colon after a name in its line only, and not far, unless the name is marked.
std::string asYaml(std::string const& json) {
    std::string result;
    std::size_t done = 0;
    for (auto begin = json.find('"'); begin != std::string::npos; begin = json.find('"', done)) {
        std::size_t end = begin + 1;
        bool odd = false;
        for (; end < json.size() && json[end] != '"'; ++end) {
            odd = odd || static_cast<unsigned char>(json[end]) >= 0x7F || json.compare(end, 3, "\\ud") == 0;
            end += json[end] == '\\';
        }
        auto const colon = json.find_first_not_of(" \t\r\n", end + 1);
        bool const name = colon != std::string::npos && json[colon] == ':';
        bool const marked = name && (end - begin > 1000 || json.find_first_of("\n:", end) != colon);
        result.append(json, done, begin - done).append(marked ? "? " : "");
        done = std::min(end + 1, json.size());
        std::string const text = json.substr(begin, done - begin);
        Json const string = odd ? Json::parse(text, nullptr, false) : Json();
        result += string.is_string() ? written(stringNode(string), Format::kJson) : text;
    }
    return result.append(json, done);
}

std::string readText(std::string const& path) {
    std::error_code problem;
    auto const status = std::filesystem::status(path, problem);
    if (!std::filesystem::exists(status)) throw Failure(path, "cannot be read: " + problem.message(), kHint);
    if (!std::filesystem::is_regular_file(status)) throw Failure(path, "is not a regular file", kHint);
    auto const size = std::filesystem::file_size(path, problem);
    if (size > kLargest) throw Failure(path, "is larger than 512 MiB", "split it into smaller ones");
    std::ifstream file(path, std::ios::binary);
    if (!file) throw Failure(path, "cannot be read: " + std::generic_category().message(errno), kHint);
    std::string text(size, ' ');
    if (!file.read(text.data(), static_cast<std::streamsize>(size)))
        throw Failure(path, "cannot be read to its end", kHint);
    return text.compare(0, 3, "\xEF\xBB\xBF") == 0 ? text.substr(3) : text;
}

/// Fails for a text with bytes that no value can have.
void checkBytes(std::string const& path, std::string const& text, bool json) {
    auto const check = [&](std::size_t at, char const* what, char const* hint) {
        if (at < text.size()) fail(path, markOf(text, at), what, hint);
    };
    check(text.find('\0'), "holds a zero byte", kHint);
    check(firstStrayByte(text), "is no UTF-8", "save it as UTF-8, for names with accents");
    if (json) return;
    for (char const* const end : {"\xC2\x85", "\xE2\x80\xA8", "\xE2\x80\xA9"})  // YAML 1.2 takes them for no line ends
        check(text.find(end), "holds an end of a line that only YAML 1.1 knows", "write it as an escape");
}

}  // namespace

std::string resolved(std::string const& text) {
    static std::map<std::string, std::string> const words{
        {"true", "true"},   {"True", "true"},   {"TRUE", "true"},   {"false", "false"}, {"False", "false"},
        {"FALSE", "false"}, {".nan", ".nan"},   {".NaN", ".nan"},   {".NAN", ".nan"},   {".inf", ".inf"},
        {".Inf", ".inf"},   {".INF", ".inf"},   {"+.inf", ".inf"},  {"+.Inf", ".inf"},  {"+.INF", ".inf"},
        {"-.inf", "-.inf"}, {"-.Inf", "-.inf"}, {"-.INF", "-.inf"},
    };
    if (text.find_first_of("tTfF.+-0123456789") != 0) return {};
    auto const word = words.find(text);
    return word == words.end() ? decimal(text) : word->second;
}

Node readFile(std::string const& path) {
    std::string const text = readText(path);
    std::size_t const begin = text.find_first_not_of(" \t\r\n");
    if (begin == std::string::npos) throw Failure(path, "is empty", kHint);
    std::string const ending = std::filesystem::path(path).extension();
    bool const json = text[begin] == '{' && ending != ".yml" && ending != ".yaml";
    checkBytes(path, text, json);
    return json ? Reading(path, asYaml(text)).document() : Reading(path, text).document();
}

Node valueOfLine(std::string const& line) {
    if (line.empty()) return {};
    try {
        return Reading("", line).document();
    } catch (Failure const&) {
        return {};
    }
}

}  // namespace vrltool::exchange
