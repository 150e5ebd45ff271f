#include <cctype>
#include <nlohmann/json.hpp>
#include <sstream>

#include "exchange/reader.h"
#include "exchange/tree_builder.h"

namespace vrltool::exchange {

namespace {

/// Steps through a text and tells line and column of a place in it; places come in order.
class LineCounter {
public:
    explicit LineCounter(std::string const& whole) : text(whole) {}

    Mark at(std::size_t place) {
        for (; next < place && next < text.size(); ++next) {
            if (text[next] == '\n') {
                ++line;
                lineStart = next + 1;
            }
        }
        return {line, next - lineStart + 1};
    }

    /// The place of the next character behind `place` that begins a value or a name.
    Mark tokenBehind(std::size_t place) {
        std::size_t const start = text.find_first_not_of(" \t\r\n,:]}", place);
        return at(start == std::string::npos ? text.size() : start);
    }

private:
    std::string const& text;
    std::size_t next = 0;
    std::size_t line = 1;
    std::size_t lineStart = 0;
};

/// Makes a tree of the events of the parser, which reads from a stream and has always read up to the end of a token.
class JsonEvents final : public nlohmann::json_sax<nlohmann::json> {
public:
    JsonEvents(TreeBuilder& target, std::string const& text, std::istream& source)
        : builder(target), lines(text), stream(source) {}

    bool null() override { return value(Tree()); }
    bool boolean(bool on) override { return value(Tree::ofBool(on)); }
    bool number_integer(number_integer_t number) override { return value(Tree::ofNumber(std::to_string(number))); }
    bool number_unsigned(number_unsigned_t number) override { return value(Tree::ofNumber(std::to_string(number))); }
    bool number_float(number_float_t, string_t const& text) override { return value(Tree::ofNumber(text)); }
    bool string(string_t& text) override { return value(Tree::ofText(text)); }
    bool binary(binary_t&) override { return false; }

    bool start_object(std::size_t) override { return open(Tree::map()); }
    bool key(string_t& text) override {
        builder.name(text, mark());
        return true;
    }
    bool end_object() override { return close(); }
    bool start_array(std::size_t) override { return open(Tree::list()); }
    bool end_array() override { return close(); }

    bool parse_error(std::size_t place, std::string const&, nlohmann::json::exception const& error) override {
        std::string what = error.what();
        auto const from = what.find(": ");
        if (error.id == 406) {  // no place: it is the token that was read last
            builder.fail(mark(), "a number is too large", "no number of a program holds it");
        }
        builder.fail(lines.at(place == 0 ? 0 : place - 1), from == std::string::npos ? what : what.substr(from + 2));
    }

private:
    Mark mark() {
        Mark const result = lines.tokenBehind(read);
        read = static_cast<std::size_t>(stream.rdbuf()->pubseekoff(0, std::ios::cur, std::ios::in));
        return result;
    }

    bool value(Tree tree) {
        tree.mark = mark();
        builder.value(std::move(tree));
        return true;
    }

    bool open(Tree tree) {
        tree.mark = mark();
        builder.open(std::move(tree));
        return true;
    }

    bool close() {
        builder.close();
        read = static_cast<std::size_t>(stream.rdbuf()->pubseekoff(0, std::ios::cur, std::ios::in));
        return true;
    }

    TreeBuilder& builder;
    LineCounter lines;
    std::istream& stream;
    std::size_t read = 0;
};

}  // namespace

Tree readJson(std::string const& path, std::string const& text) {
    TreeBuilder builder(path);
    std::istringstream stream(text);
    JsonEvents events(builder, text, stream);
    nlohmann::json::sax_parse(stream, &events);
    return builder.take();
}

}  // namespace vrltool::exchange
