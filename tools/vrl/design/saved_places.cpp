#include "design/saved_places.h"

#include <cstdint>
#include <stdexcept>

#include "text/table.h"
#include "vrllib/vrllib.h"

namespace vrltool {

namespace {

constexpr std::size_t kMarker = 6;
constexpr unsigned kDeepest = 256;  // what the library reads

// How an item is written: 's' a string, '1', '4', '8' and 'c' a value of 1, 4, 8 and 16 bytes, 'o' an object; '[' a
// container, with the items of an element after it. '?' is not known.
using Shape = std::string;

std::map<std::string, Shape, std::less<>> const& shapes() {
    using namespace vrl;
    static auto const& table = *new std::map<std::string, Shape, std::less<>>{
        {Annotations::getSerId("annotations"), "[ss"},
        {AttributeWithExpr::getSerId("expr"), "s"},
        {AttributeWithExpr::getSerId("calc"), "1"},
        {AutoValueRange<double, Value<double>>::getSerId("is auto-changeable"), "1"},
        {Attributes::getSerId("attributes"), "[so"},
        {Foundry::CSInfo::getSerId("default CS name"), "s"},
        {Foundry::CSInfo::getSerId("default Flow name"), "s"},
        {BB::Port::getSerId("currCS"), "o"},
        {BB::getSerId("defaultCS"), "o"},
        {BB::getSerId("foundryName"), "s"},
        {BB::getSerId("ports"), "[so"},
        {Netlist::getSerId("numBB"), "4"},
        {Netlist::getSerId("nodeCount"), "4"},
        {Netlist::getSerId("nameToBB"), "[s4"},
        {Netlist::getSerId("portToNode"), "[ss4"},
        {Netlist::getSerId("inputNodes"), "[4"},
        {Netlist::getSerId("outputNodes"), "[4"},
        {Netlist::getSerId("DCNodes"), "[4"},
        {Netlist::getSerId("BBList"), "[4o"},
    };
    return table;
}

/// The shape of a parameter's value, by the type that the file says of the parameter.
Shape shapeOfValue(std::string_view type) {
    for (std::string_view const head : {"Value_", "AutoValueRange<vrl::"}) {
        if (type.substr(0, head.size()) != head) continue;
        std::string_view const word = type.substr(head.size(), type.find('>') - head.size());
        if (word == "bool") return "1";
        if (word == "Int") return "4";
        if (word == "Double") return "8";
        if (word == "Complex") return "c";
        if (word == "String") return "s";
    }
    return "?";
}

Shape shapeOf(std::string_view id, std::string_view type) {
    static std::string const value = vrl::Value<double>::getSerId("val");
    if (id == value) return shapeOfValue(type);
    auto const known = shapes().find(id);
    return known == shapes().end() ? "?" : known->second;
}

class Walk {
public:
    explicit Walk(std::string_view all) : bytes(all) {}

    /// An object; a null place is only passed over.
    void object(unsigned depth, SavedPlace* place) {
        std::string_view const type = open(depth, place);
        for (std::uint32_t left = number(place); left > 0; --left) {
            std::string const id(string());
            item(shapeOf(id, type), depth + 1, innerOf(place, id), left == 1);
        }
        close(depth, place);
    }

private:
    [[noreturn]] void fail(std::string const& what) const {
        throw std::runtime_error(what + " near byte " + std::to_string(at));
    }

    std::string_view take(std::size_t count) {
        if (count > bytes.size() - at) fail("ends too early");
        at += count;
        return bytes.substr(at - count, count);
    }

    std::uint32_t number() {
        std::uint32_t value = 0;
        int shift = 0;
        for (char const byte : take(4)) {
            value |= std::uint32_t(static_cast<unsigned char>(byte)) << shift;
            shift += 8;
        }
        return value;
    }

    std::string_view string() { return take(number()); }

    bool isMarker(std::size_t place, unsigned depth) const {
        return bytes.compare(place, kMarker, savedMarker(depth)) == 0;
    }

    void marker(unsigned depth) {
        if (!isMarker(at, depth)) fail("has no marker of the depth " + std::to_string(depth));
        at += kMarker;
    }

    /// The number of members or elements that follow.
    std::uint32_t number(SavedPlace* place) {
        if (place) place->count = at;
        return number();
    }

    /// The head of an object or a container. Returns its type.
    std::string_view open(unsigned depth, SavedPlace* place) {
        if (depth > kDeepest) fail("is nested too deeply");
        if (place) place->begin = at;
        marker(depth);
        std::string_view const type = string();
        number();
        return type;
    }

    void close(unsigned depth, SavedPlace* place) {
        marker(depth);
        if (place) place->end = at;
    }

    /// The place inside another for an id or a key, if somebody looks for it.
    SavedPlace* innerOf(SavedPlace* place, std::string const& key) const {
        if (!place) return nullptr;
        auto const wanted = place->wantsAll ? place->inner.try_emplace(key).first : place->inner.find(key);
        if (wanted == place->inner.end()) return nullptr;
        if (wanted->second.found) fail("repeats '" + printable(key) + "'");
        wanted->second.found = true;
        return &wanted->second;
    }

    void item(Shape const& shape, unsigned depth, SavedPlace* place, bool isLast) {
        if (shape[0] == 'o')
            object(depth, place);
        else if (shape[0] == '[')
            container(shape.substr(1), depth, place);
        else if (shape[0] == '?')
            unknown(depth, place, isLast);
        else
            value(shape[0], depth, place);
    }

    /// A value; returns its bytes.
    std::string_view value(char shape, unsigned depth, SavedPlace* place) {
        std::size_t const begin = at;
        marker(depth);
        std::string_view const content = shape == 's' ? string() : take(shape == 'c' ? 16 : std::size_t(shape - '0'));
        marker(depth);
        if (place) {
            place->begin = begin;
            place->end = at;
        }
        return content;
    }

    /// Elements that end with an object have their first item as key.
    void container(Shape const& element, unsigned depth, SavedPlace* place) {
        open(depth, place);
        if (place) place->isContainer = true;
        for (std::uint32_t left = number(place); left > 0; --left) {
            SavedPlace* inner = nullptr;
            for (char const shape : element) {
                if (shape == 'o')
                    object(depth + 1, inner);
                else
                    inner = innerOf(place, keyOf(shape, value(shape, depth + 1, nullptr)));
            }
        }
        close(depth, place);
    }

    /// A string is read up to its first zero byte.
    static std::string keyOf(char shape, std::string_view content) {
        if (shape == 's') return std::string(content.substr(0, content.find('\0')));
        return std::to_string(Walk(content).number());
    }

    /// What follows an unknown member: the end of its object, or an id and a marker.
    bool goesOn(std::size_t place, unsigned depth, bool isLast) const {
        if (isLast) return isMarker(place, depth - 1);
        Walk next(bytes);
        next.at = place;
        try {
            next.string();
        } catch (std::runtime_error const&) {
            return false;
        }
        return isMarker(next.at, depth);
    }

    void unknown(unsigned depth, SavedPlace* place, bool isLast) {
        std::size_t const begin = at;
        marker(depth);
        std::string const closing = savedMarker(depth);
        do {
            at = bytes.find(closing, at);
            if (at == std::string_view::npos) {
                at = begin;
                fail("has a member without an end");
            }
            ++at;
        } while (!goesOn(at - 1 + kMarker, depth, isLast));
        at += kMarker - 1;
        if (place) {
            place->begin = begin;
            place->end = at;
        }
    }

    std::string_view bytes;
    std::size_t at = 0;
};

}  // namespace

void findPlaces(std::string_view bytes, SavedPlace& root, unsigned depth) {
    Walk(bytes).object(depth, &root);
    root.found = true;
}

std::string savedNumber(std::size_t number) {
    std::string text;
    for (int shift = 0; shift < 32; shift += 8) text += static_cast<char>(number >> shift & 0xFF);
    return text;
}

std::string savedString(std::string const& text) { return savedNumber(text.size()) + text; }

std::string savedMarker(unsigned depth) { return "=@" + savedNumber(depth); }

}  // namespace vrltool
