#include <charconv>
#include <map>
#include <nlohmann/json.hpp>
#include <ostream>
#include <utility>

#include "circuit/circuit.h"
#include "circuit/parameters.h"
#include "overview/overview.h"
#include "overview/places.h"
#include "text/natural_order.h"
#include "text/number.h"
#include "text/table.h"

namespace vrltool::overview {

namespace {

struct Count {
    std::size_t elements = 0;
    std::size_t inside = 0;                 ///< of composites
    std::map<std::string, double> lengths;  ///< the sums of the parameter 'length' of all of them, by unit
};

struct Key {
    std::string kind, foundry;

    bool operator<(Key const& other) const {
        return kind == other.kind ? naturallyLess(foundry, other.foundry) : naturallyLess(kind, other.kind);
    }
};

using Bill = std::map<Key, Count>;

void addLength(Count& count, vrl::BB& block) {
    if (!block.find("length")) return;
    Parameter const length = parameterOf(*block.getAttribute("length"));
    if (auto const* const real = std::get_if<double>(&length.value)) count.lengths[length.unit] += *real;
    if (auto const* const whole = std::get_if<int>(&length.value)) count.lengths[length.unit] += *whole;
}

void add(Bill& bill, Circuit const& circuit, std::size_t Count::*where) {
    for (Element const& element : circuit.elements) {
        if (!element.block || element.isSecondName) continue;
        Count& count = bill[{element.kind, element.foundry}];
        ++(count.*where);
        addLength(count, *element.block);
        if (element.inside) add(bill, *element.inside, &Count::inside);
    }
}

Bill billOf(Design const& design) {
    Bill bill;
    add(bill, circuitFrom(circuitOf(design)), &Count::elements);
    return bill;
}

/// A sum without the last digits, in which only the rounding of the addends shows.
double rounded(double sum) {
    char text[32];
    auto const end = std::to_chars(text, text + sizeof text, sum, std::chars_format::general, 12).ptr;
    return numberFrom({text, end});
}

std::string lengthText(Count const& count) {
    std::vector<std::string> texts;
    for (auto const& [unit, sum] : count.lengths)
        texts.push_back(numberText(rounded(sum)) + (unit.empty() || unit == "1" ? "" : " " + unit));
    return joined(texts, " + ");
}

Json lengthsJson(Count const& count) {
    Json json = Json::array();
    for (auto const& [unit, sum] : count.lengths) {
        json.push_back(Json{{"sum", jsonNumber(rounded(sum))}});
        if (!unit.empty()) json.back()["unit"] = unit;
    }
    return json;
}

}  // namespace

void writeBill(std::ostream& os, Design const& design) {
    Table table({"kind", "foundry", "count", "inside composites", "length of all"});
    for (auto const& [key, count] : billOf(design))
        table.add({key.kind, key.foundry, std::to_string(count.elements),
                   count.inside > 0 ? std::to_string(count.inside) : "", lengthText(count)});
    table.write(os);
}

Json billJson(Design const& design) {
    Json json = jsonHead("bill", 1);
    json["kinds"] = Json::array();
    for (auto const& [key, count] : billOf(design))
        json["kinds"].push_back(Json{{"kind", key.kind},
                                     {"foundry", key.foundry.empty() ? Json(nullptr) : Json(key.foundry)},
                                     {"count", count.elements},
                                     {"insideComposites", count.inside},
                                     {"lengths", lengthsJson(count)}});
    return json;
}

}  // namespace vrltool::overview
