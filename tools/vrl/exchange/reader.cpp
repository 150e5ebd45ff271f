#include <yaml-cpp/eventhandler.h>

#include <charconv>
#include <filesystem>
#include <fstream>
#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>

#include "exchange/node.h"
#include "text/failure.h"
#include "text/table.h"

namespace vrltool::exchange {

namespace {

using YAML::anchor_t;
using YAML::NodeType;

constexpr std::uintmax_t kLargest = 512 * 1024 * 1024;
constexpr std::size_t kDeepest = 100;         // far beyond what netlists need, far below what stacks hold
constexpr std::size_t kMostCopied = 1000000;  // values that aliases may make
std::string const kStandard = "tag:yaml.org,2002:";
char const* const kHint = "give the path of a file of JSON or YAML";

/// A decimal number of YAML in the spelling of JSON; empty for what is none.
std::string decimal(std::string const& text) {
    auto const digitsEnd = [&](std::size_t from) {
        return std::min(text.find_first_not_of("0123456789", from), text.size());
    };
    std::size_t const start = text.find_first_of("+-") == 0, point = digitsEnd(start);
    std::size_t const fraction = point + (text[point] == '.'), exponent = digitsEnd(fraction);
    std::size_t end = exponent;
    if (text[end] == 'e' || text[end] == 'E') {
        std::size_t const power = end + (text[end + 1] == '+' || text[end + 1] == '-' ? 2 : 1);
        end = digitsEnd(power);
        if (end == power) return {};
    }
    if (end != text.size() || exponent - start == fraction - point) return {};
    std::size_t const whole = std::min(text.find_first_not_of('0', start), point);
    return (text[0] == '-' ? "-" : "") + (whole == point ? "0" : text.substr(whole, point - whole)) +
           text.substr(point, exponent - point) + (fraction > point && fraction == exponent ? "0" : "") +
           text.substr(exponent);
}

/// Whether no double holds a number. One that is too small for it is kept by its text.
bool isTooLarge(std::string const& number) {
    double value = 0;
    bool const tiny = number.find('-', 1) != std::string::npos || number[number[0] == '-'] == '0';
    auto const end = number.data() + number.size();
    return std::from_chars(number.data(), end, value).ec == std::errc::result_out_of_range && !tiny;
}

/// A plain scalar by the core schema of YAML.
std::pair<Kind, std::string> resolved(std::string const& text) {
    static std::set<std::string> const nulls{"", "~", "null", "Null", "NULL"}, truths{"true", "True", "TRUE"},
        untruths{"false", "False", "FALSE"}, infinities{".inf", ".Inf", ".INF"}, nans{".nan", ".NaN", ".NAN"};
    if (nulls.count(text)) return {Kind::kNull, ""};
    if (truths.count(text)) return {Kind::kBool, "true"};
    if (untruths.count(text)) return {Kind::kBool, "false"};
    if (nans.count(text)) return {Kind::kNumber, ".nan"};
    if (infinities.count(text.substr(text[0] == '+' || text[0] == '-')))
        return {Kind::kNumber, text[0] == '-' ? "-.inf" : ".inf"};
    std::string number = decimal(text);
    if (text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'o')) {  // such as 0x1F or 0o17
        std::uint64_t value = 0;
        char const* const end = text.data() + text.size();
        auto const read = std::from_chars(text.data() + 2, end, value, text[1] == 'x' ? 16 : 8);
        bool const good = read.ptr == end && read.ec != std::errc::invalid_argument;
        number = !good ? "" : read.ec == std::errc() ? std::to_string(value) : "1e999";
    }
    return number.empty() ? std::pair(Kind::kText, text) : std::pair(Kind::kNumber, number);
}

/// A node with the number of its values, itself included, and of its levels.
struct Sized {
    Node node;
    std::size_t values = 1;
    std::size_t depth = 1;
};

/// Makes nodes of the events of a parser, and refuses what is nested too deeply, too large or ambiguous.
class NodeEvents final : public YAML::EventHandler {
public:
    explicit NodeEvents(std::string const& file) : path(file) {}

    void OnDocumentStart(Mark const& mark) override {
        if (documents++ > 0) fail(mark, "a second document begins here", "keep one document in a file");
    }
    void OnDocumentEnd() override {}
    void OnNull(Mark const& mark, anchor_t anchor) override { put({newBeside(root, NodeType::Null, mark)}, anchor); }

    /// An alias becomes a node of its own, with its place, which shares the parts of what it means.
    void OnAlias(Mark const& mark, anchor_t anchor) override {
        auto const found = anchors.find(anchor);
        if (found == anchors.end()) fail(mark, "an alias stands inside what it means", "write it out");
        Sized const& source = found->second;
        if ((copied += source.values) > kMostCopied)
            fail(mark, "its aliases make more than " + std::to_string(kMostCopied) + " values", "write them out");
        refuseDeep(open.size() + source.depth, mark);
        Node copy = newBeside(root, source.node.Type(), mark);
        if (source.node.IsScalar()) copy = source.node.Scalar();
        copy.SetTag(source.node.Tag());
        append(copy, source.node);
        put({copy, source.values, source.depth}, YAML::NullAnchor);
    }

    void OnScalar(Mark const& mark, std::string const& tag, anchor_t anchor, std::string const& text) override {
        if (text.find('\0') != std::string::npos)  // by an escape; names in the library end there
            fail(mark, "a text holds a zero byte", "remove it");
        bool const name = wantsName();
        auto const [kind, spelling] = name ? std::pair(Kind::kText, text) : meaningOf(mark, tag, text);
        if (kind == Kind::kNull) return OnNull(mark, anchor);
        Node node = newBeside(root, NodeType::Scalar, mark);
        node = spelling;
        if (kind == Kind::kText) node.SetTag("!");
        if (!name) return put({node}, anchor);
        if (anchor != YAML::NullAnchor) anchors.emplace(anchor, Sized{node});
        auto const twin = open.back().lines.emplace(text, mark.line + 1);  // one of the two values would be lost
        if (!twin.second)
            fail(mark,
                 "'" + printable(text) + "' stands twice; the first is in line " + std::to_string(twin.first->second),
                 "rename or remove one of them");
        open.back().name.reset(node);
    }

    void OnSequenceStart(Mark const& mark, std::string const& tag, anchor_t anchor,
                         YAML::EmitterStyle::value = {}) override {
        begin(NodeType::Sequence, mark, tag == kStandard + "seq" ? "" : tag, anchor);
    }
    void OnMapStart(Mark const& mark, std::string const& tag, anchor_t anchor,
                    YAML::EmitterStyle::value = {}) override {
        begin(NodeType::Map, mark, tag == kStandard + "map" ? "" : tag, anchor);
    }
    void OnSequenceEnd() override { OnMapEnd(); }
    void OnMapEnd() override {
        Open const done(std::move(open.back()));
        open.pop_back();
        put(done.whole, done.anchor);
    }

    /// Throws a Failure with a place.
    [[noreturn]] void fail(Mark const& mark, std::string const& what, std::string const& hint = "") const {
        throw Failure(placeText(path, mark), what, hint);
    }

    Node root{NodeType::Null};  ///< what was read

private:
    /// A list or map that is being read.
    struct Open {
        Sized whole;
        anchor_t anchor;
        Node name = {};                         ///< of the next member; null without one
        std::map<std::string, int> lines = {};  ///< of the names
    };

    bool wantsName() const { return !open.empty() && open.back().whole.node.IsMap() && open.back().name.IsNull(); }

    void refuseAsName(Node const& node) const {
        if (wantsName())
            fail(node.Mark(), std::string("the name of a member is ") + kindWord(kindOf(node)), "names are texts");
    }

    void refuseDeep(std::size_t depth, Mark const& mark) const {
        if (depth > kDeepest) fail(mark, "is nested deeper than " + std::to_string(kDeepest) + " levels");
    }

    void refuseTag(Mark const& mark, std::string const& tag) const {
        if (!tag.empty() && tag != "?" && tag != "!")
            fail(mark, "the tag '" + printable(tag) + "' is not known here", "write a plain value");
    }

    std::pair<Kind, std::string> meaningOf(Mark const& mark, std::string const& tag, std::string const& text) const {
        static std::set<std::string> const plain{kStandard + "int", kStandard + "float", kStandard + "bool",
                                                 kStandard + "null"};
        if (tag == "!" || tag == kStandard + "str") return {Kind::kText, text};
        refuseTag(mark, plain.count(tag) ? "" : tag);
        auto const meaning = resolved(text);
        if (meaning.first == Kind::kNumber && isTooLarge(meaning.second))
            fail(mark, "the number " + printable(text) + " is too large", "no number of a program holds it");
        return meaning;
    }

    void begin(NodeType::value type, Mark const& mark, std::string const& tag, anchor_t anchor) {
        Node const node = newBeside(root, type, mark);
        refuseTag(mark, tag);
        refuseAsName(node);
        refuseDeep(open.size() + 1, mark);
        open.push_back({{node}, anchor});
    }

    void put(Sized const& value, anchor_t anchor) {
        refuseAsName(value.node);
        if (anchor != YAML::NullAnchor) anchors.emplace(anchor, value);
        if (open.empty()) return root.reset(value.node);
        Open& parent = open.back();
        parent.whole.values += value.values;
        parent.whole.depth = std::max(parent.whole.depth, value.depth + 1);
        Node& node = parent.whole.node;
        node.IsMap() ? node.force_insert(parent.name, value.node) : node.push_back(value.node);
        parent.name.reset();
    }

    std::string const& path;
    std::vector<Open> open;
    std::map<anchor_t, Sized> anchors;
    std::size_t copied = 0;
    int documents = 0;
};

/// Line and column of a place in a text; places come in order.
class LineCounter {
public:
    explicit LineCounter(std::string const& whole) : text(whole) {}

    Mark at(std::size_t place) {
        for (; next < std::min(place, text.size()); ++next, ++mark.column) {
            if (text[next] != '\n') continue;
            ++mark.line;
            mark.column = -1;
        }
        return mark;
    }

private:
    std::string const& text;
    std::size_t next = 0;
    Mark mark;
};

/// Hands the events of the parser of JSON on. It reads from a stream, and has always read to the end of a token.
class JsonEvents final : public nlohmann::json_sax<nlohmann::json> {
public:
    JsonEvents(NodeEvents& receiver, std::string const& whole)
        : stream(whole), target(receiver), text(whole), lines(text) {}

    bool null() override { return scalar("?", "null"); }
    bool boolean(bool on) override { return scalar("?", on ? "true" : "false"); }
    bool number_integer(number_integer_t number) override { return scalar("?", std::to_string(number)); }
    bool number_unsigned(number_unsigned_t number) override { return scalar("?", std::to_string(number)); }
    bool number_float(number_float_t, string_t const& number) override { return scalar("?", number); }
    bool string(string_t& value) override { return scalar("!", value); }
    bool binary(binary_t&) override { return false; }
    bool key(string_t& name) override { return scalar("!", name); }
    bool start_object(std::size_t) override { return target.OnMapStart(mark(), "", YAML::NullAnchor), step(); }
    bool start_array(std::size_t) override { return target.OnSequenceStart(mark(), "", YAML::NullAnchor), step(); }
    bool end_object() override { return target.OnMapEnd(), step(); }
    bool end_array() override { return target.OnSequenceEnd(), step(); }

    bool parse_error(std::size_t place, std::string const&, nlohmann::json::exception const& error) override {
        if (error.id == 406)  // without a place: it is the token that was read last
            target.fail(mark(), "a number is too large", "no number of a program holds it");
        std::string const what = error.what();
        auto const from = what.find(": ");
        target.fail(lines.at(place == 0 ? 0 : place - 1), from == std::string::npos ? what : what.substr(from + 2));
    }

    std::istringstream stream;

private:
    bool scalar(char const* tag, std::string const& value) {
        return target.OnScalar(mark(), tag, YAML::NullAnchor, value), step();
    }

    bool step() {
        read = static_cast<std::size_t>(stream.rdbuf()->pubseekoff(0, std::ios::cur, std::ios::in));
        return true;
    }

    /// The place of the name or value that follows what was read before.
    Mark mark() { return lines.at(text.find_first_not_of(" \t\r\n,:]}", read)); }

    NodeEvents& target;
    std::string const& text;
    LineCounter lines;
    std::size_t read = 0;
};

Node readYaml(std::string const& path, std::string const& text) {
    NodeEvents events(path);
    try {
        std::istringstream stream(text);
        YAML::Parser parser(stream);
        while (parser.HandleNextDocument(events)) continue;
    } catch (YAML::Exception const& error) {
        events.fail(error.mark, error.msg);
    }
    return events.root;
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

bool isJson(std::string const& path, std::string const& text) {
    std::string const ending = std::filesystem::path(path).extension();
    if (ending == ".json" || ending == ".yml" || ending == ".yaml") return ending == ".json";
    return text[text.find_first_not_of(" \t\r\n")] == '{';
}

}  // namespace

Node readJson(std::string const& path, std::string const& text) {
    NodeEvents events(path);
    JsonEvents json(events, text);
    nlohmann::json::sax_parse(json.stream, &json);
    return events.root;
}

Node readFile(std::string const& path) {
    std::string const text = readText(path);
    auto const place = [&](std::size_t at) { return placeText(path, LineCounter(text).at(at)); };
    if (text.find_first_not_of(" \t\r\n") == std::string::npos) throw Failure(path, "is empty", kHint);
    std::size_t const zero = text.find('\0'), good = utf8Length(text);
    if (zero != std::string::npos) throw Failure(place(zero), "holds a zero byte", kHint);
    if (good < text.size()) throw Failure(place(good), "is no UTF-8", "save it as UTF-8, for names with accents");
    return isJson(path, text) ? readJson(path, text) : readYaml(path, text);
}

}  // namespace vrltool::exchange
