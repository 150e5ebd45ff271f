#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "bench/circuit.h"

// The circuit as plain objects, as a user would write them who needs no library: the same graph of polymorphic blocks
// and parameters, with the pointers of their choice.

namespace bench {

struct Unique {
    template <class T>
    using Pointer = std::unique_ptr<T>;
};
struct Shared {
    template <class T>
    using Pointer = std::shared_ptr<T>;
};

struct Parameter {
    std::string name, description, unit, expression;
    bool calculated = false;

    virtual ~Parameter() = default;
    virtual double number() const = 0;
};

inline double numberOf(std::string const& text) { return static_cast<double>(text.size()); }
inline double numberOf(double value) { return value; }

template <class T>
struct Typed : Parameter {
    T value{};

    double number() const override { return numberOf(value); }
};

struct Port {
    std::string name, crossSection, flow;
    int domain = 0;
};

template <class Ownership>
struct Block {
    template <class T>
    using Pointer = typename Ownership::template Pointer<T>;

    std::string foundry, crossSection, flow;
    std::vector<Port> ports;
    std::map<std::string, Pointer<Parameter>> parameters;
    std::vector<std::string> order;

    virtual ~Block() = default;
    virtual std::string kind() const = 0;

    template <class T, class V>
    void add(ParameterSpec<V> const& spec) {
        auto* const parameter = new Typed<T>;
        parameters[spec.name] = Pointer<Parameter>(parameter);
        order.push_back(spec.name);
        parameter->name = spec.name;
        parameter->description = spec.description;
        parameter->unit = spec.unit;
        parameter->value = spec.value;
    }

    /// What the constructor of a kind does in the library. A reader of a peer replaces all of it, so it starts empty.
    void fill() {
        foundry = kFoundry;
        crossSection = kCrossSection;
        for (char const* const name : kPorts) ports.push_back({name, "", "", 1});
        add<double>(kLength);
        add<double>(kWidth);
        add<int>(kCount);
        add<bool>(kHeated);
        add<std::string>(kModel);
    }
};

template <class Ownership, std::size_t Kind>
struct KindBlock final : Block<Ownership> {
    std::string kind() const override { return kindName(Kind); }
};

template <class Ownership, std::size_t... Kinds>
Block<Ownership>* newBlock(std::size_t kind, std::index_sequence<Kinds...>) {
    using Create = Block<Ownership>* (*)();
    static Create const creators[] = {[]() -> Block<Ownership>* { return new KindBlock<Ownership, Kinds>; }...};
    return creators[kind]();
}

/// An empty block of a kind.
template <class Ownership>
Block<Ownership>* newBlock(std::size_t kind) {
    return newBlock<Ownership>(kind, std::make_index_sequence<kKinds>());
}

template <class Ownership>
struct Circuit {
    std::map<unsigned, typename Ownership::template Pointer<Block<Ownership>>> blocks;
    std::map<std::string, unsigned> names;
    std::map<std::pair<std::string, std::string>, unsigned> nodes;
    std::vector<unsigned> inputs, outputs;

    void build(std::size_t count) {
        unsigned node = 1;
        for (std::size_t i = 0; i < count; ++i) {
            auto const number = static_cast<unsigned>(i + 1);
            auto* const block = newBlock<Ownership>(i % kKinds);
            auto const& owner = blocks[number] = typename Ownership::template Pointer<Block<Ownership>>(block);
            std::string const name = elementName(i);
            names[name] = number;
            owner->fill();
            static_cast<Typed<double>&>(*owner->parameters.at(kLength.name)).value = lengthOf(i);
            for (std::size_t port = 0; port < kPorts.size(); ++port)
                nodes[{name, kPorts[port]}] = node + static_cast<unsigned>(port);
            if (i == 0) inputs = {node, node + 1};
            node += 2;
        }
        outputs = {node, node + 1};
    }

    double checksum() const {
        double sum = 0;
        for (auto const& entry : blocks) {
            for (auto const& parameter : entry.second->parameters) sum += parameter.second->number();
            sum += entry.first + numberOf(entry.second->kind()) + static_cast<double>(entry.second->ports.size());
        }
        for (auto const& entry : names) sum += entry.second;
        for (auto const& entry : nodes) sum += entry.second;
        for (auto const* list : {&inputs, &outputs})
            for (unsigned const node : *list) sum += node;
        return sum;
    }
};

}  // namespace bench
