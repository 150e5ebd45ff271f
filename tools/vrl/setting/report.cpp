#include "setting/report.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <ostream>
#include <sstream>

#include "text/table.h"

namespace vrltool::setting {

namespace {

std::size_t changeCount(Settings const& settings) {
    return static_cast<std::size_t>(std::count_if(settings.settings.begin(), settings.settings.end(),
                                                  [](Setting const& setting) { return setting.changed; }));
}

Json nameOrNull(std::string const& name) { return name.empty() ? Json(nullptr) : Json(name); }

Json stateJson(Parameter const& parameter) {
    Json json{{"value", valueJson(parameter.value)}};
    if (!parameter.expression.empty()) json["expression"] = parameter.expression;
    return json;
}

Json settingJson(Setting const& setting) {
    static char const* const words[] = {"parameter", "crossSection", "flow"};
    Target const& target = setting.target;
    Json json{{"target", target.text()}, {"what", words[static_cast<int>(target.what)]}};
    json["element"] = nameOrNull(target.element);
    if (target.what != Target::What::kParameter) {
        json["port"] = nameOrNull(target.name);
        json["from"] = nameOrNull(setting.oldName);
        json["to"] = nameOrNull(setting.newName);
    } else {
        json["parameter"] = target.name;
        if (!setting.before.unit.empty()) json["unit"] = setting.before.unit;
        json["from"] = stateJson(setting.before);
        json["to"] = stateJson(setting.after);
        if (setting.after.hasRange) {
            json["min"] = valueJson(setting.after.min);
            json["max"] = valueJson(setting.after.max);
            json["inRange"] = setting.after.inRange;
        }
    }
    json["changed"] = setting.changed;
    return json;
}

}  // namespace

void writeSettings(std::ostream& os, Settings const& settings, Ending const& ending) {
    for (Setting const& setting : settings.settings)
        os << printable(setting.target.text()) << ": " << (setting.changed ? "" : "is already ")
           << printable(setting.text()) << '\n';
    std::size_t const changes = changeCount(settings), unchanged = settings.settings.size() - changes;
    std::string const counts =
        counted(changes, "change") + (unchanged > 0 ? ", " + std::to_string(unchanged) + " unchanged" : "");
    if (ending.dryRun)
        os << printable(ending.file) << ": " << counts << ", not written (--dry-run)\n";
    else if (!ending.output.empty())
        os << printable(ending.output) << ": written, " << counts << '\n';
    else
        os << printable(ending.file) << ": nothing to change, not written\n";
}

void writeFindings(std::ostream& os, Settings const& settings) {
    for (Finding const& finding : settings.findings) {
        bool const error = finding.severity == Severity::kError;
        os << "vrl: " << (error ? "" : std::string(severityWord(finding.severity)) + ": ") << printable(finding.what)
           << '\n';
        std::istringstream hints(finding.hint);
        for (std::string hint; std::getline(hints, hint);) os << "  " << printable(hint) << '\n';
    }
}

Json settingsJson(Settings const& settings, Ending const& ending) {
    Json json = jsonHead("set", 1);
    json["file"] = ending.file;
    json["output"] = nameOrNull(ending.output);
    json["dryRun"] = ending.dryRun;
    json["settings"] = Json::array();
    for (Setting const& setting : settings.settings) json["settings"].push_back(settingJson(setting));
    json["findings"] = Json::array();
    for (Finding const& finding : settings.findings) {
        json["findings"].push_back(Json{{"severity", severityWord(finding.severity)}, {"text", finding.what}});
        if (!finding.hint.empty()) json["findings"].back()["hint"] = finding.hint;
    }
    json["without"] = Json::array();
    for (Assignment const& assignment : settings.assignments)
        if (!assignment.without.empty())
            json["without"].push_back(Json{{"word", assignment.word}, {"elements", assignment.without}});
    return json;
}

}  // namespace vrltool::setting
