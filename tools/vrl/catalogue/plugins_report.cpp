#include "catalogue/plugins_report.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <ostream>
#include <utility>
#include <vector>

#include "catalogue/load_hints.h"
#include "host/targets.h"
#include "text/json.h"
#include "text/number.h"
#include "text/table.h"

namespace vrltool::catalogue {

namespace {

using Result = Load::Result;

struct Place {
    std::string path;
    char const* state;  ///< what is the matter with it
};

struct Report {
    std::string file;  ///< the configuration in use; empty if there is none
    bool named = false;
    bool byVariable = false;  ///< named by VRL_CONFIG
    bool without = false;     ///< plug-ins are named, and no configuration is read
    bool readable = false;
    std::vector<Place> places;
    std::vector<ConfiguredLibrary> libraries;
    std::vector<Load> loads;
    std::vector<std::size_t> besides;  ///< the loads that the configuration does not name
};

std::vector<Place> placesOf(Report const& report) {
    std::vector<Place> places;
    bool searched = !report.named;
    for (std::string const& path : vrlConfigFilePlaces()) {
        bool const inUse = searched && path == report.file;
        places.push_back({path, inUse ? "in use" : searched ? "missing" : "not tried"});
        if (inUse) searched = false;
    }
    return places;
}

Report collect(Common const& common) {
    Report report;
    report.loads = loadsSoFar();
    report.libraries = configuredLibraries(report.loads);
    report.named = !common.config.empty();
    report.byVariable = !common.configNamed;
    report.without = common.config.empty() && !common.plugins.empty();
    if (!report.without) report.file = vrlConfigFile();
    std::error_code ignored;
    report.readable = report.without ||
                      (std::filesystem::is_regular_file(report.file, ignored) && std::ifstream(report.file).is_open());
    report.places = placesOf(report);
    std::vector<bool> configured(report.loads.size());
    for (ConfiguredLibrary const& library : report.libraries)
        for (std::size_t const load : library.loads) configured[load] = true;
    for (std::size_t i = 0; i < configured.size(); ++i)
        if (!configured[i]) report.besides.push_back(i);
    return report;
}

bool searchedInVain(Report const& report) {
    return !report.named && std::none_of(report.places.begin(), report.places.end(),
                                         [&](Place const& place) { return place.path == report.file; });
}

/// Where the configuration comes from, for programs.
char const* sourceId(Report const& report) {
    if (report.without || report.file.empty()) return "none";
    if (report.named) return report.byVariable ? "variable" : "option";
    return searchedInVain(report) ? "written" : "found";
}

/// The loads that no line of the configuration asks for and that are reported: all, or the named plug-ins, which have a
/// path; standard ones have none.
std::vector<std::size_t> besidesShown(Report const& report, PluginsOptions const& options) {
    std::vector<std::size_t> shown;
    for (std::size_t const load : report.besides)
        if (options.all || (report.without && report.loads[load].path.find('/') != std::string::npos))
            shown.push_back(load);
    return shown;
}

/// What came of a line: for people, and for programs.
struct State {
    char const* text;
    char const* id;
};

State stateOf(ConfiguredLibrary const& library, Report const& report) {
    if (library.failed(report.loads)) return {"not loaded", "failed"};
    if (!library.loads.empty()) return {"loaded", "loaded"};
    if (library.line.key == "e" && !std::getenv(library.line.value.c_str())) return {"not set", "nothing"};
    if (library.line.key == "sodllfile" || library.line.key == "f") {
        bool const pattern = library.line.value.find('*') != std::string::npos;
        return pattern ? State{"matches no file", "nothing"} : State{"loaded already", "nothing"};
    }
    return {"holds no library", "nothing"};
}

std::size_t countOf(std::string const& state, Report const& report) {
    auto const isIt = [&](ConfiguredLibrary const& library) { return stateOf(library, report).id == state; };
    return static_cast<std::size_t>(std::count_if(report.libraries.begin(), report.libraries.end(), isIt));
}

/// The system's message without the path that it begins with, which is in the line above.
std::string shortReason(Load const& load) {
    std::string const head = load.path + ": ";
    bool const repeats = load.reason.compare(0, head.size(), head) == 0;
    return repeats ? load.reason.substr(head.size()) : load.reason;
}

/// The hint of a load; none where another folder had the library.
std::string hintFor(Load const& load, ConfiguredLibrary const* library, Report const& report) {
    bool const missed = load.result == Result::kUnmapped && library && !library->failed(report.loads);
    return missed ? std::string() : hintOf(load);
}

double rounded(double milliseconds) { return std::round(milliseconds * 10) / 10; }

/// Rows of a label and a string; equal labels that follow each other are written once, long lists are wrapped.
class Rows {
public:
    explicit Rows(std::ostream& stream) : os(stream) {}

    void row(std::string const& label, std::string const& text) {
        std::string const shown = std::exchange(last, label) == label ? "" : label;
        os << "  " << shown << std::string(kLabel - shown.size(), ' ') << printable(text) << '\n';
    }

    /// "HEAD: a, b, c".
    void list(std::string const& label, std::string const& head, std::vector<std::string> const& words) {
        std::string line = head + ":";
        for (std::size_t i = 0; i < words.size(); ++i) {
            std::string const word = words[i] + (i + 1 < words.size() ? "," : "");
            if (line.size() + word.size() > kWidth) {
                row(label, line);
                line = "   ";
            }
            line += " " + word;
        }
        row(label, line);
    }

    /// The next label is written whatever the last one was.
    void restart() { last.clear(); }

private:
    static constexpr std::size_t kLabel = 8;
    static constexpr std::size_t kWidth = 90;

    std::ostream& os;
    std::string last;
};

std::string keyText(vrl::LoadedKey const& key, Load const& load) {
    return key.file == load.file ? key.key : key.key + " (code in " + key.file + ")";
}

void writeKeys(Rows& rows, Load const& load) {
    for (std::size_t target = 0; target < kTargets.size(); ++target) {
        std::vector<std::string> keys;
        for (vrl::LoadedKey const& key : load.keys)
            if (static_cast<std::size_t>(key.target) == target && key.takenFrom.empty())
                keys.push_back(keyText(key, load));
        if (!keys.empty()) rows.list("brings", kTargets[target].plural, keys);
    }
    for (vrl::LoadedKey const& key : load.keys)
        if (!key.takenFrom.empty())
            rows.row("takes", keyText(key, load) + " (" + kTargets[static_cast<std::size_t>(key.target)].plural +
                                  ") from " + pluginName(key.takenFrom));
}

void writeLoad(std::ostream& os, Load const& load, std::string const& hint, PluginsOptions const& options) {
    Rows rows(os);
    rows.row("path", load.path.empty() ? "none" : load.path);
    if (!load.reason.empty()) rows.row("why", shortReason(load));
    if (!hint.empty()) rows.row("hint", hint);
    std::string served;
    for (std::size_t const target : load.serves)
        served += (served.empty() ? "" : ", ") + std::string(kTargets[target].plural);
    if (!served.empty()) rows.row("serves", served);
    writeKeys(rows, load);
    if (load.result == Result::kLoaded && load.keys.empty()) rows.row("brings", "no key");
    if (options.times) rows.row("time", numberText(rounded(load.milliseconds)) + " ms");
}

void writeHead(std::ostream& os, Report const& report) {
    if (report.without) {
        os << "configuration  none, since plug-ins are named with --plugin\n";
        return;
    }
    if (report.file.empty())
        os << "configuration  none, and no place to write one\n";
    else if (report.named)
        os << "configuration  " << report.file
           << (report.byVariable ? "  (named by VRL_CONFIG)\n" : "  (named with --config)\n");
    else if (searchedInVain(report))
        os << "configuration  " << report.file << "  (written, since none was found)\n";
    else
        os << "configuration  " << report.file << (report.readable ? "\n" : "  (cannot be read)\n");
    Table places;
    for (std::size_t i = 0; i < report.places.size(); ++i)
        places.add({i == 0 ? "looked for in" : "", report.places[i].state, report.places[i].path});
    if (!report.named) places.write(os);
}

std::string nameOf(ConfiguredLibrary const& library) {
    if (library.line.key == "e") return "variable " + library.line.value;
    if (library.line.key == "d") return "folder " + library.line.value;
    return library.line.value.empty() ? "(no name)" : library.line.value;
}

std::string placeText(ConfiguredLibrary const& library, Report const& report) {
    std::string const line = ", line " + std::to_string(library.line.number);
    return library.line.file == report.file ? line : line + " of " + library.line.file;
}

void writeText(std::ostream& os, Report const& report, PluginsOptions const& options) {
    writeHead(os, report);
    for (ConfiguredLibrary const& library : report.libraries) {
        os << '\n'
           << printable(nameOf(library) + placeText(library, report)) << ": " << stateOf(library, report).text << '\n';
        for (std::size_t const load : library.loads)
            writeLoad(os, report.loads[load], hintFor(report.loads[load], &library, report), options);
    }
    for (std::size_t const load : besidesShown(report, options)) {
        bool const works = report.loads[load].result == Result::kLoaded;
        os << '\n'
           << printable(pluginName(report.loads[load].path)) << ", not configured: " << (works ? "" : "not ")
           << "loaded\n";
        writeLoad(os, report.loads[load], hintFor(report.loads[load], nullptr, report), options);
    }
    if (report.libraries.empty())
        os << "\nno library is configured"
           << (report.without ? "\n" : "; 'vrl config init PLUGIN...' writes a configuration\n");
    else
        os << "\n"
           << counted(report.libraries.size(), "line names a library", "lines name libraries") << ": "
           << countOf("loaded", report) << " loaded, " << countOf("failed", report) << " failed\n";
}

char const* resultId(Result result) {
    switch (result) {
    case Result::kLoaded:
        return "loaded";
    case Result::kUnmapped:
        return "not mapped";
    case Result::kRefused:
        return "refused";
    case Result::kNoEntry:
        return "no entry point";
    case Result::kEnded:
        return "ended";
    }
    return "";
}

Json loadJson(Load const& load, std::string const& hint, PluginsOptions const& options) {
    Json json{{"path", load.path}, {"result", resultId(load.result)}};
    if (!load.reason.empty()) json["reason"] = load.reason;
    if (!hint.empty()) json["hint"] = hint;
    json["serves"] = Json::array();
    for (std::size_t const target : load.serves) json["serves"].push_back(kTargets[target].id);
    json["keys"] = Json::array();
    json["takenOver"] = Json::array();
    for (vrl::LoadedKey const& key : load.keys) {
        Json entry{{"target", kTargets[static_cast<std::size_t>(key.target)].id}, {"key", key.key}, {"file", key.file}};
        if (!key.takenFrom.empty()) entry["from"] = key.takenFrom;
        json[key.takenFrom.empty() ? "keys" : "takenOver"].push_back(entry);
    }
    if (options.times) json["milliseconds"] = rounded(load.milliseconds);
    return json;
}

Json configurationJson(Report const& report) {
    Json json{
        {"file", report.file}, {"source", sourceId(report)}, {"named", report.named}, {"readable", report.readable}};
    json["lookedFor"] = Json::array();
    for (Place const& place : report.named ? std::vector<Place>() : report.places)
        json["lookedFor"].push_back(Json{{"path", place.path}, {"state", place.state}});
    return json;
}

Json reportJson(Report const& report, PluginsOptions const& options) {
    Json json = jsonHead("plugins", 1);
    json["configuration"] = configurationJson(report);
    json["libraries"] = Json::array();
    for (ConfiguredLibrary const& library : report.libraries) {
        Json entry{{"name", library.line.value},
                   {"key", library.line.key},
                   {"file", library.line.file},
                   {"line", library.line.number}};
        State const state = stateOf(library, report);
        entry["state"] = state.id;
        if (library.loads.empty()) entry["reason"] = state.text;
        entry["loads"] = Json::array();
        for (std::size_t const load : library.loads)
            entry["loads"].push_back(
                loadJson(report.loads[load], hintFor(report.loads[load], &library, report), options));
        json["libraries"].push_back(entry);
    }
    json["summary"] = Json::object();
    for (char const* const state : {"loaded", "failed", "nothing"}) json["summary"][state] = countOf(state, report);
    if (!options.all && !report.without) return json;
    json["notConfigured"] = Json::array();
    for (std::size_t const load : besidesShown(report, options))
        json["notConfigured"].push_back(
            loadJson(report.loads[load], hintFor(report.loads[load], nullptr, report), options));
    return json;
}

}  // namespace

Outcome writePluginsReport(std::ostream& os, PluginsOptions const& options, Common const& common) {
    Report const report = collect(common);
    if (common.json)
        writeJson(os, reportJson(report, options));
    else
        writeText(os, report, options);
    bool const failed = std::any_of(report.libraries.begin(), report.libraries.end(),
                                    [&](ConfiguredLibrary const& library) { return library.failed(report.loads); });
    return failed || !report.readable ? Outcome::kFindings : Outcome::kFine;
}

}  // namespace vrltool::catalogue
