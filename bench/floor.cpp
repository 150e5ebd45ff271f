#include <cstdint>
#include <cstring>
#include <istream>
#include <iterator>
#include <ostream>

#include "bench/peer.h"
#include "bench/plain.h"

namespace bench {

namespace {

/// Writes into one string, which goes to the stream at once.
struct Writer {
    std::string bytes;

    template <class T>
    void number(T value) {
        bytes.append(reinterpret_cast<char const*>(&value), sizeof value);
    }
    void text(std::string const& value) {
        number(static_cast<std::uint32_t>(value.size()));
        bytes += value;
    }
    template <class List>
    void count(List const& list) {
        number(static_cast<std::uint32_t>(list.size()));
    }
};

struct Reader {
    char const* next;

    template <class T>
    T number() {
        T value;
        std::memcpy(&value, next, sizeof value);
        next += sizeof value;
        return value;
    }
    std::string text() {
        auto const size = number<std::uint32_t>();
        next += size;
        return {next - size, size};
    }
    template <class Use>
    void repeat(Use const& use) {
        for (auto left = number<std::uint32_t>(); left > 0; --left) use();
    }
};

/// The least that saving the plain objects can cost: one string, written and read front to back, without checks.
class FloorPeer final : public Peer {
    using PlainBlock = Block<Unique>;

public:
    void build(std::size_t blocks) override {
        circuit = std::make_unique<Circuit<Unique>>();
        circuit->build(blocks);
    }
    void free() override { circuit.reset(); }
    double checksum() const override { return circuit->checksum(); }

    void save(std::ostream& out) override {
        Writer w;
        w.count(circuit->blocks);
        for (auto const& entry : circuit->blocks) {
            w.number(entry.first);
            w.number(kindOf(*entry.second));
            writeBlock(w, *entry.second);
        }
        w.count(circuit->names);
        for (auto const& entry : circuit->names) w.text(entry.first), w.number(entry.second);
        w.count(circuit->nodes);
        for (auto const& entry : circuit->nodes)
            w.text(entry.first.first), w.text(entry.first.second), w.number(entry.second);
        for (auto const* list : {&circuit->inputs, &circuit->outputs}) {
            w.count(*list);
            for (unsigned const node : *list) w.number(node);
        }
        out.write(w.bytes.data(), static_cast<std::streamsize>(w.bytes.size()));
    }

    void load(std::istream& in) override {
        in.seekg(0, std::ios::end);
        std::string bytes(static_cast<std::size_t>(in.tellg()), '\0');
        in.seekg(0);
        in.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        circuit = std::make_unique<Circuit<Unique>>();
        Reader r{bytes.data()};
        r.repeat([&] {
            auto const number = r.number<unsigned>();
            auto* const block = newBlock<Unique>(r.number<std::uint8_t>());
            circuit->blocks.emplace_hint(circuit->blocks.end(), number, std::unique_ptr<PlainBlock>(block));
            readBlock(r, *block);
        });
        r.repeat([&] {
            std::string name = r.text();
            circuit->names.emplace_hint(circuit->names.end(), std::move(name), r.number<unsigned>());
        });
        r.repeat([&] {
            std::string name = r.text(), port = r.text();
            circuit->nodes.emplace_hint(circuit->nodes.end(), std::pair(std::move(name), std::move(port)),
                                        r.number<unsigned>());
        });
        for (auto* list : {&circuit->inputs, &circuit->outputs})
            r.repeat([&] { list->push_back(r.number<unsigned>()); });
    }

private:
    static std::uint8_t kindOf(PlainBlock const& block) {
        return static_cast<std::uint8_t>(std::stoi(block.kind().substr(std::strlen("benchBlock"))));
    }

    static void writeBlock(Writer& w, PlainBlock const& block) {
        for (auto const* text : {&block.foundry, &block.crossSection, &block.flow}) w.text(*text);
        w.count(block.ports);
        for (Port const& port : block.ports) {
            for (auto const* text : {&port.name, &port.crossSection, &port.flow}) w.text(*text);
            w.number(port.domain);
        }
        w.count(block.order);
        for (std::string const& name : block.order) {
            Parameter const& p = *block.parameters.at(name);
            for (auto const* text : {&p.name, &p.description, &p.unit, &p.expression}) w.text(*text);
            w.number(p.calculated);
            writeValue<double>(w, p, 0) || writeValue<int>(w, p, 1) || writeValue<bool>(w, p, 2);
            if (auto const* const text = dynamic_cast<Typed<std::string> const*>(&p))
                w.number(std::uint8_t{3}), w.text(text->value);
        }
    }
    template <class T>
    static bool writeValue(Writer& w, Parameter const& parameter, std::uint8_t type) {
        auto const* const typed = dynamic_cast<Typed<T> const*>(&parameter);
        if (typed) w.number(type), w.number(typed->value);
        return typed;
    }

    static void readBlock(Reader& r, PlainBlock& block) {
        for (auto* text : {&block.foundry, &block.crossSection, &block.flow}) *text = r.text();
        r.repeat([&] {
            Port port;
            for (auto* text : {&port.name, &port.crossSection, &port.flow}) *text = r.text();
            port.domain = r.number<int>();
            block.ports.push_back(std::move(port));
        });
        r.repeat([&] {
            std::string texts[4];
            for (std::string& text : texts) text = r.text();
            bool const calculated = r.number<bool>();
            std::unique_ptr<Parameter> p(readValue(r));
            p->name = std::move(texts[0]);
            p->description = std::move(texts[1]);
            p->unit = std::move(texts[2]);
            p->expression = std::move(texts[3]);
            p->calculated = calculated;
            block.order.push_back(p->name);
            block.parameters.emplace(p->name, std::move(p));
        });
    }
    template <class T>
    static Parameter* typed(T value) {
        auto* const parameter = new Typed<T>;
        parameter->value = std::move(value);
        return parameter;
    }
    static Parameter* readValue(Reader& r) {
        switch (r.number<std::uint8_t>()) {
        case 0:
            return typed(r.number<double>());
        case 1:
            return typed(r.number<int>());
        case 2:
            return typed(r.number<bool>());
        default:
            return typed(r.text());
        }
    }

    std::unique_ptr<Circuit<Unique>> circuit;
};

}  // namespace

std::unique_ptr<Peer> handWritten() { return std::make_unique<FloorPeer>(); }

}  // namespace bench
