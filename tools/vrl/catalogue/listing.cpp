#include "catalogue/listing.h"

#include <algorithm>
#include <cctype>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <utility>

#include "catalogue/kinds.h"
#include "circuit/parameters.h"
#include "guard/foreign_work.h"
#include "guard/quiet_output.h"
#include "guard/thrown.h"
#include "host/loads.h"
#include "host/targets.h"
#include "text/json.h"
#include "text/progress.h"
#include "text/table.h"

namespace vrltool::catalogue {

namespace {

/// What is reported of one kind.
struct Line {
    Kind kind;
    std::string about;
    std::string problem;
    bool shown = true;  ///< false for a block of another domain
    Json more = Json::object();
};

using Domain = std::optional<vrl::EnumList::Domain>;

constexpr char kNothingMade[] = "its creator makes nothing";

void describeAttribute(Line& line, Domain) {
    auto const attribute = makeAttribute(line.kind.key);
    attribute ? line.about = attribute->getType() : line.problem = kNothingMade;
}

void describeFoundry(Line& line, Domain) {
    auto const foundry = makeFoundry(line.kind.key);
    foundry ? line.about = foundry->describe() : line.problem = kNothingMade;
}

void describeBlock(Line& line, Domain domain) {
    auto const block = makeBlock(nullptr, line.kind.key);
    if (!block) {
        line.problem = kNothingMade;
        return;
    }
    line.shown = !domain || block->chkDomain(*domain);
    line.about = blockLine(*block);
    line.more["composite"] = dynamic_cast<vrl::CBB*>(block.get()) != nullptr;
    line.more["ports"] = portNames(*block);
    line.more["parameters"] = parameterNames(*block);
}

void describeNetlist(Line& line, Domain) {
    auto const netlist = makeNetlist(line.kind.key);
    if (!netlist) {
        line.problem = kNothingMade;
        return;
    }
    std::string const parameters = joined(parameterNames(*netlist));
    line.about = counted(netlist->sizeElements(), "element") + (parameters.empty() ? "" : "; " + parameters);
}

void describeView(Line& line, Domain) { line.about = kTargets[line.kind.target].one; }

/// A word that can be listed: the factories that it selects, and how its third column is reported.
struct Listable {
    char const* word;
    std::vector<Target> targets;
    char const* heading;
    void (*describe)(Line& line, Domain domain);
};

std::vector<Listable> const& listables() {
    static std::vector<Listable> const all{
        {"foundries", {kFoundry}, "description", &describeFoundry},
        {"blocks", {kBlock}, "ports; parameters", &describeBlock},
        {"netlists", {kNetlist}, "elements; parameters", &describeNetlist},
        {"views", {kComponentView, kBlockView, kNetlistView}, "factory", &describeView},
        {"attributes", {kAttribute}, "type", &describeAttribute}};
    return all;
}

Line lineOf(Kind const& kind, Listable const& what, Domain domain) {
    Line line;
    line.kind = kind;
    ForeignWork const work(kind.plugin() + ": making '" + printable(kind.key) + "'");
    std::string const thrown = thrownBy([&] { what.describe(line, domain); });
    if (!thrown.empty()) line.problem = "cannot be made: it throws " + thrown;
    return line;
}

std::vector<Line> linesOf(Listable const& what, Domain domain) {
    QuietOutput const quiet;
    std::vector<Kind> kinds;
    for (Target const target : what.targets)
        for (Kind& kind : kindsOf(target)) kinds.push_back(std::move(kind));
    std::stable_sort(kinds.begin(), kinds.end(), [](Kind const& a, Kind const& b) { return a.key < b.key; });
    std::vector<Line> lines;
    Progress progress("making", what.word, kinds.size());
    for (Kind const& kind : kinds) {
        Line line = lineOf(kind, what, domain);
        if (line.shown) lines.push_back(std::move(line));
        progress.step();
    }
    return lines;
}

void writeText(std::ostream& os, Listable const& what, std::vector<Line> const& lines, Domain domain) {
    if (lines.empty()) {
        os << "no " << what.word << (domain ? " of the domain " + vrl::EnumList::getName(*domain) : "") << '\n';
        return;
    }
    Table table({"key", "plug-in", what.heading});
    for (Line const& line : lines)
        table.add({line.kind.key, line.kind.plugin(), line.problem.empty() ? line.about : line.problem});
    table.write(os);
}

Json listJson(Listable const& what, std::vector<Line> const& lines, Domain domain) {
    Json json = jsonHead("list", 1);
    json["list"] = what.word;
    if (domain) json["domain"] = vrl::EnumList::getName(*domain);
    json["kinds"] = Json::array();
    for (Line const& line : lines) {
        Json entry{{"key", line.kind.key}, {"target", kTargets[line.kind.target].id}};
        entry.update(Json{{"plugin", line.kind.plugin()}, {"file", line.kind.file}});
        if (line.problem.empty())
            entry["about"] = line.about;
        else
            entry["problem"] = line.problem;
        entry.update(line.more);
        json["kinds"].push_back(entry);
    }
    return json;
}

/// Says that there might be more, had every library been loaded.
void warnOfFailed() {
    auto const failed = failedLibraries();
    if (!failed.empty())
        std::cerr << "vrl: " << counted(failed.size(), "configured library", "configured libraries")
                  << " not loaded; 'vrl plugins' shows why\n";
}

bool anyLoaded() {
    auto const loads = loadsSoFar();
    return std::any_of(loads.begin(), loads.end(),
                       [](Load const& load) { return load.result == Load::Result::kLoaded; });
}

std::string lowered(std::string text) {
    for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text;
}

}  // namespace

std::vector<std::string> listWords() {
    std::vector<std::string> words;
    for (Listable const& what : listables()) words.emplace_back(what.word);
    return words;
}

std::vector<std::string> domainNames() {
    std::vector<std::string> names;
    for (int id = vrl::EnumList::Unknown; id <= vrl::EnumList::CBB; ++id)
        names.push_back(vrl::EnumList::getName(static_cast<vrl::EnumList::Domain>(id)));
    return names;
}

Domain domainOf(std::string const& name) {
    auto const names = domainNames();
    auto const found = std::find_if(names.begin(), names.end(),
                                    [&](std::string const& known) { return lowered(known) == lowered(name); });
    if (found == names.end()) return std::nullopt;
    return static_cast<vrl::EnumList::Domain>(found - names.begin());
}

Outcome listKinds(std::string const& word, Domain domain, bool json) {
    auto const what = std::find_if(listables().begin(), listables().end(),
                                   [&](Listable const& listable) { return listable.word == word; });
    if (domain && what->targets.front() != kBlock)
        throw Failure("--domain", "only blocks have domains", "'vrl list blocks --domain D' lists them");
    auto const lines = linesOf(*what, domain);
    if (lines.empty() && !anyLoaded())
        throw Failure("vrl list " + word, "no plug-in is loaded",
                      "'vrl plugins' shows why; 'vrl config init PLUGIN...' writes a configuration, and --plugin FILE "
                      "does without one");
    if (json)
        writeJson(std::cout, listJson(*what, lines, domain));
    else
        writeText(std::cout, *what, lines, domain);
    warnOfFailed();
    bool const good = std::all_of(lines.begin(), lines.end(), [](Line const& line) { return line.problem.empty(); });
    return good ? Outcome::kFine : Outcome::kFindings;
}

}  // namespace vrltool::catalogue
