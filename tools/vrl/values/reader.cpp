#include <yaml.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <new>
#include <nlohmann/json.hpp>
#include <unordered_map>

#include "text/failure.h"
#include "text/json.h"
#include "text/number.h"
#include "text/table.h"
#include "text/utf8.h"
#include "values/node.h"

namespace vrltool::values {

namespace {

constexpr std::uintmax_t kLargest = 512 * 1024 * 1024;
constexpr std::size_t kMostDirectives = 100;
constexpr std::size_t kMostOfNote = 100000000;  // values: an import with raised limits wrote it
char const* const kHint = "give the path of a file of JSON or YAML";

std::string const kStandard = "tag:yaml.org,2002:";

bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// Whether a byte of UTF-8 is the first one of its character.
bool beginsCharacter(char byte) { return (byte & 0xC0) != 0x80; }

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

/// The place of a byte, with the lines of YAML and the columns of characters.
Mark markOf(std::string const& text, std::size_t at) {
    Mark mark{1, 1};
    for (std::size_t i = 0; i < at; ++i) {
        bool const ends = text[i] == '\n' || (text[i] == '\r' && text[i + 1] != '\n');
        mark.line += ends;
        mark.column = ends ? 1 : mark.column + beginsCharacter(text[i]);
    }
    return mark;
}

Mark markOf(yaml_mark_t const& mark) { return {static_cast<int>(mark.line) + 1, static_cast<int>(mark.column) + 1}; }

char const* charsOf(yaml_char_t const* text) { return text ? reinterpret_cast<char const*>(text) : ""; }

/// What an anchor names.
struct Anchored {
    Node node;
    std::size_t size;    ///< what a copy of it counts, with those of its aliases
    std::size_t levels;  ///< of maps and lists
};

/// The walk over the events of libyaml, which makes our values of them. It refuses what is nested too deeply, too large
/// or ambiguous, and resolves the plain scalars.
class EventReader {
public:
    /// An empty path is that of a note. It has what was in a netlist some levels deeper, and two names as one.
    EventReader(std::string const& file, std::string const& text, Limits most)
        : path(file), whole(text), limits(std::move(most)), levels(file.empty() ? kDeepest + 10 : kDeepest) {
        if (yaml_parser_initialize(&parser) == 0) throw std::bad_alloc();
        yaml_parser_set_encoding(&parser, YAML_UTF8_ENCODING);
        yaml_parser_set_input_string(&parser, reinterpret_cast<yaml_char_t const*>(text.data()), text.size());
    }
    EventReader(EventReader const&) = delete;
    EventReader& operator=(EventReader const&) = delete;
    ~EventReader() {
        yaml_event_delete(&event);
        yaml_parser_delete(&parser);
    }

    /// The value of the only document; null without one.
    Node document() {
        next();  // the stream begins
        next();
        if (event.type == YAML_STREAM_END_EVENT) return {};
        next();
        Node const result = value(1);
        next();  // the document ends
        next();
        if (event.type == YAML_STREAM_END_EVENT) return result;
        failHere("a second document begins here", "keep one document in a file");
    }

private:
    void next() {
        yaml_event_delete(&event);
        if (yaml_parser_parse(&parser, &event) != 0) return;
        if (parser.error == YAML_MEMORY_ERROR) throw std::bad_alloc();
        bool const unread = parser.error == YAML_READER_ERROR;  // then there is no mark
        std::string const context = parser.context && !unread ? std::string(" ") + parser.context : "";
        fail(path, unread ? markOf(whole, parser.problem_offset) : markOf(parser.problem_mark),
             parser.problem + context);
    }

    [[noreturn]] void failHere(std::string const& what, std::string const& hint = "") const {
        fail(path, mark(), what, hint);
    }

    [[noreturn]] void failDeep() const { failHere("is nested deeper than " + std::to_string(kDeepest) + " levels"); }

    Mark mark() const { return markOf(event.start_mark); }
    bool isMapBegin() const { return event.type == YAML_MAPPING_START_EVENT; }

    [[noreturn]] void failLarge(std::string const& what, std::size_t most) const {
        failHere(what + " more than " + std::to_string(most) + " values", limits.hint);
    }

    Node value(std::size_t depth) {
        if (event.type == YAML_ALIAS_EVENT) return aliased(depth);
        std::string const anchor = anchorName();
        if (!anchor.empty()) anchors.erase(anchor);  // until it has its value
        std::size_t const outer = std::exchange(deepest, depth - 1), before = size;
        Node node = event.type == YAML_SCALAR_EVENT ? scalar(true) : collection(depth);
        std::size_t const own = 1 + node.text.size() / sizeof(Node);
        size += own;
        if ((made += own) > limits.values) failLarge("has", limits.values);
        if (!anchor.empty()) anchors[anchor] = {node, size - before, deepest - (depth - 1)};
        deepest = std::max(deepest, outer);
        return node;
    }

    std::string anchorName() const {
        auto const& data = event.data;
        if (event.type == YAML_SCALAR_EVENT) return charsOf(data.scalar.anchor);
        return charsOf(isMapBegin() ? data.mapping_start.anchor : data.sequence_start.anchor);
    }

    Node aliased(std::size_t depth) {
        std::string const name = charsOf(event.data.alias.anchor);
        auto const found = anchors.find(name);
        if (found == anchors.end()) failHere("'*" + printable(name) + "' leads to nothing that ends before it");
        Anchored const& anchored = found->second;
        std::size_t const reached = depth - 1 + anchored.levels;
        if (reached > levels) failDeep();
        deepest = std::max(deepest, reached);
        size += anchored.size;
        if ((copied += anchored.size) > limits.aliased) failLarge("its aliases make", limits.aliased);
        return anchored.node;
    }

    Node collection(std::size_t depth) {
        if (depth > levels) failDeep();
        deepest = depth;
        bool const map = isMapBegin();
        Node result{map ? Kind::kMap : Kind::kList, "", mark()};
        checkTag(map ? event.data.mapping_start.tag : event.data.sequence_start.tag, result);
        std::size_t const first = parts.size();
        for (next(); event.type != YAML_MAPPING_END_EVENT && event.type != YAML_SEQUENCE_END_EVENT; next()) {
            Node key = map ? name() : Node();
            if (map) next();
            Node part = value(depth + 1);
            parts.emplace_back(std::move(key), std::move(part));
        }
        auto const begin = parts.begin() + static_cast<std::ptrdiff_t>(first);
        if (begin != parts.end())
            result.parts = std::make_shared<std::vector<Node::Part>>(std::make_move_iterator(begin),
                                                                     std::make_move_iterator(parts.end()));
        parts.erase(begin, parts.end());
        if (map) refuseTwins(result);
        return result;
    }

    /// Fails for a value that is not what its tag says, and for a tag of no kind of ours.
    void checkTag(yaml_char_t const* given, Node const& node) const {
        static std::map<std::string, Kind> const kinds{
            {"null", Kind::kNull},  {"bool", Kind::kBool}, {"int", Kind::kNumber}, {"float", Kind::kNumber},
            {"str", Kind::kString}, {"seq", Kind::kList},  {"map", Kind::kMap}};
        std::string const tag = charsOf(given);
        if (tag.empty() || tag == "!") return;
        bool const standard = tag.compare(0, kStandard.size(), kStandard) == 0;
        auto const kind = standard ? kinds.find(tag.substr(kStandard.size())) : kinds.end();
        if (kind == kinds.end()) failHere("the tag '" + printable(tag) + "' is not known here", "write a plain value");
        if (kind->second != node.kind)
            failHere(std::string("is ") + kindWord(node.kind) + " with the tag of " + kindWord(kind->second));
    }

    /// A scalar; as a string in any case, unless it is to be resolved or null.
    Node scalar(bool resolve) const {
        auto const& given = event.data.scalar;
        std::string const text(charsOf(given.value), given.length), tag = charsOf(given.tag);
        if (text.find('\0') != std::string::npos)  // by an escape; names in the library end there
            failHere("a string holds a zero byte", "remove it");
        bool const plain =
            tag.empty() ? given.style == YAML_PLAIN_SCALAR_STYLE : tag != "!" && tag != kStandard + "str";
        Node const node = plain ? schemaNode(text, resolve) : stringNode(text, mark());
        if (resolve) checkTag(given.tag, node);
        return node;
    }

    /// What the schema makes of a scalar.
    Node schemaNode(std::string const& text, bool resolve) const {
        static std::string_view const nulls[] = {"", "~", "null", "Null", "NULL"};
        if (std::find(std::begin(nulls), std::end(nulls), text) != std::end(nulls)) return {Kind::kNull, "", mark()};
        std::string const spelling = resolve ? resolved(text) : "";
        if (spelling.empty()) return stringNode(text, mark());
        if (std::isinf(numberFrom(spelling)))
            failHere("the number " + printable(text) + " is too large", "no number of a program holds it");
        return plainNode(spelling, mark());
    }

    /// The name of a member, which is a string also where a value that is written so would be none.
    Node name() {
        bool const written = event.type == YAML_SCALAR_EVENT, alias = event.type == YAML_ALIAS_EVENT;
        Node name = written ? scalar(false) : alias ? aliased(1) : Node{isMapBegin() ? Kind::kMap : Kind::kList};
        name.mark = mark();
        if (!isString(name))
            failHere(std::string("the name of a member is ") + kindWord(name.kind), "names are strings");
        if (name.text.size() > kLongestName && !path.empty())
            failHere("a name is longer than " + std::to_string(kLongestName) + " bytes", "shorten it");
        std::string const anchor = written ? anchorName() : "";
        if (!anchor.empty()) anchors[anchor] = {scalar(true), 1 + name.text.size() / sizeof(Node), 0};
        return name;
    }

    /// Fails for a map with two members of one name: one of the values would be lost.
    void refuseTwins(Node const& map) {
        sorted.clear();
        for (auto const& part : map) sorted.push_back(&part);
        auto const before = [](Node::Part const* a, Node::Part const* b) {
            int const order = a->first.text.compare(b->first.text);
            return order != 0 ? order < 0 : a < b;
        };
        auto const equal = [](Node::Part const* a, Node::Part const* b) { return a->first.text == b->first.text; };
        std::sort(sorted.begin(), sorted.end(), before);
        auto const twins = std::adjacent_find(sorted.begin(), sorted.end(), equal);
        if (twins == sorted.end()) return;
        Node const &first = (*twins)->first, &second = (*(twins + 1))->first;
        fail(path, second.mark,
             "'" + printable(first.text) + "' is duplicated; the first is in line " + std::to_string(first.mark.line),
             "rename or remove one of them");
    }

    std::string const path;
    std::string const& whole;
    Limits const limits;
    std::size_t const levels;  ///< how many there may be
    yaml_parser_t parser = {};
    yaml_event_t event = {};
    std::unordered_map<std::string, Anchored> anchors = {};
    std::size_t size = 0, made = 0, copied = 0;  ///< of all values so far; without, and only those of aliases
    std::size_t deepest = 0;                     ///< level of a map or list within the value that is read
    std::vector<Node::Part> parts = {};          ///< of all collections that have not ended, one after the other
    std::vector<Node::Part const*> sorted = {};
};

/// One string of JSON that YAML would not take as it is. What gets shorter is followed by blanks: columns stay.
std::string yamlString(std::string const& text) {
    Json const string = Json::parse(text, nullptr, false);
    if (!string.is_string()) return text;
    auto const columns = [](std::string const& of) { return std::count_if(of.begin(), of.end(), beginsCharacter); };
    std::string result = written(stringNode(string), Format::kJson);
    auto const less = columns(text) - columns(result);
    return less > 0 ? result.append(static_cast<std::size_t>(less), ' ') : result;
}

/// JSON as YAML that means the same. YAML has no pairs of escapes for characters beyond 16 bits, some that have to be
/// escaped, tabs in fewer places, and looks for the colon after a name in its line only, and not far, unless the name
/// is marked.
std::string asYaml(std::string const& json) {
    std::string result;
    std::size_t done = 0;
    auto const copyTo = [&](std::size_t end) {  // what is between strings
        result.append(json, done, end - done);
        std::replace(result.end() - static_cast<std::ptrdiff_t>(end - done), result.end(), '\t', ' ');
    };
    for (auto begin = json.find('"'); begin != std::string::npos; begin = json.find('"', done)) {
        std::size_t end = begin + 1;
        bool odd = false;
        for (; end < json.size() && json[end] != '"'; ++end) {
            auto const isPair = [&](char d) { return json[end] == '\\' && json[end + 1] == 'u' && json[end + 2] == d; };
            odd = odd || static_cast<unsigned char>(json[end]) >= 0x7F || isPair('d') || isPair('D');
            end += json[end] == '\\';
        }
        auto const colon = json.find_first_not_of(" \t\r\n", end + 1);
        bool const name = colon != std::string::npos && json[colon] == ':';
        copyTo(begin);
        done = std::min(end + 1, json.size());
        std::string const text = json.substr(begin, done - begin), string = odd ? yamlString(text) : text;
        if (name && (string.size() > kFarthestColon || json.find_first_of("\r\n:", end) != colon)) result += "? ";
        result += string;
    }
    copyTo(json.size());
    return result;
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
    std::size_t directives = 0;  // of which libyaml compares each with all
    for (auto at = text.find('%'); at != std::string::npos; at = text.find('%', at + 1))
        if ((at == 0 || text[at - 1] == '\n' || text[at - 1] == '\r') && ++directives > kMostDirectives)
            check(at, "has more than 100 lines that begin with '%'", "YAML needs none");
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

Node readFile(std::string const& path, Limits const& limits) {
    std::string const text = readText(path);
    std::size_t const begin = text.find_first_not_of(" \t\r\n");
    if (begin == std::string::npos) throw Failure(path, "is empty", kHint);
    std::string const ending = std::filesystem::path(path).extension();
    bool const json = text[begin] == '{' && ending != ".yml" && ending != ".yaml" && Json::accept(text);
    checkBytes(path, text, json);
    return EventReader(path, json ? asYaml(text) : text, limits).document();
}

Node valueOfLine(std::string const& line) {
    if (line.empty()) return {};
    try {
        return EventReader("", asYaml(line), {kMostOfNote}).document();
    } catch (Failure const&) {
        return {};
    }
}

}  // namespace vrltool::values
