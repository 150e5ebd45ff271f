#include <map>
#include <nlohmann/json.hpp>
#include <ostream>
#include <utility>

#include "circuit/circuit.h"
#include "overview/overview.h"
#include "text/table.h"

namespace vrltool::overview {

namespace {

struct Count {
    std::size_t elements = 0;
    std::size_t inside = 0;  ///< of composites
};

using Bill = std::map<std::pair<std::string, std::string>, Count>;  // by kind and foundry

void add(Bill& bill, Circuit const& circuit, std::size_t Count::*where) {
    for (Element const& element : circuit.elements) {
        if (!element.block || element.isSecondName) continue;
        ++(bill[{element.kind, element.foundry}].*where);
        if (element.inside) add(bill, *element.inside, &Count::inside);
    }
}

Bill billOf(Design const& design) {
    Bill bill;
    add(bill, circuitFrom(circuitOf(design)), &Count::elements);
    return bill;
}

}  // namespace

void writeBill(std::ostream& os, Design const& design) {
    Table table({"kind", "foundry", "count", "inside composites"});
    for (auto const& [key, count] : billOf(design))
        table.add({key.first, key.second, std::to_string(count.elements),
                   count.inside > 0 ? std::to_string(count.inside) : ""});
    table.write(os);
}

Json billJson(Design const& design) {
    Json json = jsonHead("bill", 1);
    json["kinds"] = Json::array();
    for (auto const& [key, count] : billOf(design))
        json["kinds"].push_back(Json{{"kind", key.first},
                                     {"foundry", key.second.empty() ? Json(nullptr) : Json(key.second)},
                                     {"count", count.elements},
                                     {"insideComposites", count.inside}});
    return json;
}

}  // namespace vrltool::overview
