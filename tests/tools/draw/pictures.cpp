#include "tests/tools/draw/pictures.h"

#include <regex>
#include <utility>

#include "circuit/circuit.h"
#include "draw/drawing.h"
#include "draw/selection.h"
#include "draw/svg.h"

namespace vrl_test {

namespace {

std::string replaced(std::string text, std::string const& old, std::string const& with) {
    for (auto at = text.find(old); at != std::string::npos; at = text.find(old, at + with.size()))
        text.replace(at, old.size(), with);
    return text;
}

std::string withoutEntities(std::string text) {
    for (auto const& [entity, character] : {std::pair("&lt;", "<"),
                                            {"&gt;", ">"},
                                            {"&quot;", "\""},
                                            {"&#45;", "-"},
                                            {"&#39;", "'"},
                                            {"&#160;", " "},
                                            {"&amp;", "&"}})
        text = replaced(text, entity, character);
    return text;
}

std::vector<std::string> firstGroups(std::string const& text, std::string const& pattern) {
    std::regex const expression(pattern);
    std::vector<std::string> found;
    for (std::sregex_iterator match(text.begin(), text.end(), expression); match != std::sregex_iterator(); ++match)
        found.push_back((*match)[1]);
    return found;
}

}  // namespace

std::string svgOf(SampleCircuit& circuit, vrltool::draw::Picture const& picture, int depth) {
    vrltool::Circuit const whole = vrltool::circuitFrom(circuit.netlist(), depth);
    return svgText(drawingOf(whole, picture, vrltool::draw::selectionOf(whole, picture)).sheets[0]);
}

std::string wiresOf(std::string const& svg) {
    std::regex const wire("class=\"wire ([a-zA-Z]+) [^\"]*\" data-ends=\"([^\"]*)\"");
    std::string lines;
    for (std::sregex_iterator match(svg.begin(), svg.end(), wire); match != std::sregex_iterator(); ++match)
        lines += (*match)[2].str() + " " + (*match)[1].str() + "\n";
    return lines;
}

std::vector<std::string> idsOf(std::string const& svg, std::string const& kind) {
    return firstGroups(svg, "id=\"([a-zA-Z0-9_]+)\" class=\"" + kind + "[ \"]");
}

std::size_t count(std::string const& text, std::string const& part) {
    std::size_t found = 0;
    for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + part.size())) ++found;
    return found;
}

std::vector<std::string> textsOf(std::string const& svg) {
    auto texts = firstGroups(svg, "<text [^>]*>(?:<title>[^<]*</title>)?([^<]*)</text>");
    for (std::string& text : texts) text = withoutEntities(text);
    return texts;
}

bool isWellFormed(std::string const& svg) {
    std::vector<std::string> open;
    for (auto at = svg.find('<'); at != std::string::npos; at = svg.find('<', at + 1)) {
        auto const end = svg.find(svg.compare(at, 4, "<!--") == 0 ? "-->" : ">", at);
        if (end == std::string::npos) return false;
        std::string const tag = svg.substr(at + 1, end - at - 1);
        std::string const name = tag.substr(0, tag.find_first_of(" \n"));
        if (tag.empty() || tag[0] == '?' || tag[0] == '!') continue;
        if (tag[0] == '/' && (open.empty() || open.back() != name.substr(1))) return false;
        if (tag[0] == '/')
            open.pop_back();
        else if (tag.back() != '/')
            open.push_back(name);
    }
    return open.empty();
}

}  // namespace vrl_test
