#include "page/finding_data.h"

#include <nlohmann/json.hpp>

#include "draw/shown_text.h"

namespace vrltool::page {

namespace {

using check::RuleFinding;
using draw::plainText;

Json oneData(RuleFinding const& finding) {
    Json json{{"severity", severityWord(finding.severity)}, {"rule", finding.rule->id}};
    std::pair<char const*, std::string const*> const texts[] = {{"element", &finding.place.element},
                                                                {"port", &finding.place.port},
                                                                {"parameter", &finding.place.parameter},
                                                                {"what", &finding.what},
                                                                {"hint", &finding.hint}};
    for (auto const& [name, text] : texts)
        if (!text->empty()) json[name] = plainText(*text);
    for (check::Place const& other : finding.facts.others) json["others"].push_back(plainText(other.element));
    return json;
}

}  // namespace

Json findingData(check::FileReport const& report) {
    Json json{{"findings", Json::array()}, {"excepted", Json::array()}, {"titles", Json::object()}};
    if (!report.failure.empty()) json["failure"] = plainText(report.failure);
    auto const add = [&](char const* list, RuleFinding const& finding) -> Json& {
        json["titles"][finding.rule->id] = finding.rule->title;
        json[list].push_back(oneData(finding));
        return json[list].back();
    };
    for (RuleFinding const& finding : report.findings) add("findings", finding);
    for (check::Excepted const& excepted : report.excepted)
        add("excepted", excepted.finding)["reason"] = plainText(excepted.reason);
    return json;
}

}  // namespace vrltool::page
