#include "page/page.h"

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>
#include <utility>
#include <vector>

#include "draw/shown_text.h"
#include "draw/svg.h"
#include "page/element_data.h"
#include "page/finding_data.h"
#include "page/template_text.h"

namespace vrltool::page {

namespace {

constexpr std::size_t kMostDetailed = 1000;  // elements, past which the page shows texts only of what is in sight

/// JSON that cannot end the script element that it is in, whatever its strings are.
std::string scriptText(Json const& data) {
    std::string text;
    for (char const c : data.dump(-1, ' ', false, Json::error_handler_t::replace))
        c == '<' ? text += "\\u003c" : text += c;
    return text;
}

/// Line feeds are between elements only, where each would be a node of the document.
std::string inOneLine(std::string items) {
    items.erase(std::remove(items.begin(), items.end(), '\n'), items.end());
    return items;
}

Json dataOf(Design const& design, Circuit const& whole, check::FileReport const& report, draw::Picture const& picture,
            std::vector<std::string> const& notes) {
    Json data{{"title", draw::plainText(picture.title)},
              {"file", draw::plainText(design.path)},
              {"type", draw::plainText(design.type)},
              {"notes", Json::array()}};
    for (std::string const& note : notes) data["notes"].push_back(draw::plainText(note));
    data.update(elementData(design, whole, picture.names));
    data.update(findingData(report));
    return data;
}

std::size_t elementsIn(Circuit const& circuit) {
    std::size_t count = circuit.elements.size();
    for (Element const& element : circuit.elements)
        if (element.inside) count += elementsIn(*element.inside);
    return count;
}

}  // namespace

std::string pageText(Design const& design, check::FileReport const& report, draw::Picture const& picture,
                     std::vector<std::string> const& notes, draw::Scene const& scene) {
    Circuit const whole = circuitFrom(circuitOf(design));
    std::vector<std::pair<std::string, std::string>> const places{
        {"@title@", draw::xmlText(picture.title)},
        {"@sheet@", draw::svgSheet()},
        {"@look@", elementsIn(whole) > kMostDetailed ? "page-sparse" : ""},
        {"@box@", "0 0 " + std::to_string(scene.width) + ' ' + std::to_string(scene.height)},
        {"@picture@", inOneLine(draw::svgItems(scene))},
        {"@data@", scriptText(dataOf(design, whole, report, picture, notes))}};
    std::string page, rest = templateText();
    for (auto const& [place, text] : places) {  // in the order of the template
        auto const at = rest.find(place);
        page += rest.substr(0, at) + text;
        rest.erase(0, at + place.size());
    }
    return page + rest;
}

int widthForScreen(Circuit const& circuit) {
    constexpr double kWidthOfOne = 220;  // an element with its wires takes about 30,000 square points
    return std::max(1600, static_cast<int>(kWidthOfOne * std::sqrt(static_cast<double>(elementsIn(circuit)))));
}

}  // namespace vrltool::page
