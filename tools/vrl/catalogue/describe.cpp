#include "catalogue/describe.h"

#include <algorithm>
#include <iostream>
#include <nlohmann/json.hpp>

#include "catalogue/page.h"
#include "catalogue/page_output.h"
#include "guard/quiet_output.h"
#include "host/loads.h"
#include "text/near_names.h"

namespace vrltool::catalogue {

namespace {

/// Near names, and the libraries that might have brought the name.
std::string hintForUnknown(std::string const& name, std::vector<std::string> const& known) {
    std::vector<std::string> lines;
    if (std::string const near = didYouMean(name, known); !near.empty()) lines.push_back(near);
    for (FailedLibrary const& library : failedLibraries())
        lines.push_back("not loaded: " + library.path + ": " + library.reason);
    if (lines.empty()) lines.emplace_back("'vrl list' shows what there is");
    std::string text;
    for (std::string const& line : lines) text += (text.empty() ? "" : "\n  ") + line;
    return text;
}

/// The entry of a factory; a Failure without one.
Kind found(Target target, std::string const& key, char const* word) {
    auto const kinds = kindsOf(target);
    auto const kind = std::find_if(kinds.begin(), kinds.end(), [&](Kind const& k) { return k.key == key; });
    if (kind != kinds.end()) return *kind;
    throw Failure(key.empty() ? "''" : key, std::string("no loaded plug-in has this ") + word,
                  hintForUnknown(key, keysOf(kinds)));
}

Page pageForFoundry(std::string const& foundryKey, std::string const& blockKey) {
    Kind const kind = found(kFoundry, foundryKey, "foundry");
    Kind const block = found(kBlock, blockKey, "block");
    auto const foundry = makeFoundry(kind.key);
    if (!foundry) throw Failure(kind.key, "the plug-in " + kind.plugin() + " makes nothing of this key");
    return pageOf(block, foundry.get());
}

std::vector<Page> pagesOf(std::string const& key) {
    QuietOutput const quiet;
    auto const kinds = allKinds();
    std::vector<Page> pages;
    for (Kind const& kind : kinds)
        if (kind.key == key) pages.push_back(pageOf(kind, nullptr));
    auto const at = key.find('@');
    if (pages.empty() && at != std::string::npos)
        pages.push_back(pageForFoundry(key.substr(0, at), key.substr(at + 1)));
    if (pages.empty())
        throw Failure(key.empty() ? "''" : key, "no loaded plug-in has this key", hintForUnknown(key, keysOf(kinds)));
    return pages;
}

/// Leaves the named parameters only.
void keepNamed(std::vector<Page>& pages, std::string const& key, std::vector<std::string> const& wanted) {
    if (wanted.empty()) return;
    std::vector<std::string> known;
    for (Page const& page : pages)
        for (Parameter const& parameter : page.parameters) known.push_back(parameter.name);
    for (std::string const& name : wanted)
        if (std::find(known.begin(), known.end(), name) == known.end()) {
            std::string const near = didYouMean(name, known);
            throw Failure(key, "has no parameter '" + name + "'",
                          near.empty() ? "'vrl describe " + key + "' shows its parameters" : near);
        }
    for (Page& page : pages) {
        auto& parameters = page.parameters;
        auto const unwanted = [&](Parameter const& parameter) {
            return std::find(wanted.begin(), wanted.end(), parameter.name) == wanted.end();
        };
        parameters.erase(std::remove_if(parameters.begin(), parameters.end(), unwanted), parameters.end());
    }
}

}  // namespace

Outcome describeKey(std::string const& key, std::vector<std::string> const& parameters, bool json) {
    std::vector<Page> pages = pagesOf(key);
    keepNamed(pages, key, parameters);
    bool const bad = std::any_of(pages.begin(), pages.end(), [](Page const& page) { return page.hasProblems(); });
    Outcome const outcome = bad ? Outcome::kFindings : Outcome::kFine;
    if (json) {
        Json whole = jsonHead("describe", 2);
        whole["asked"] = key;
        whole["pages"] = Json::array();
        for (Page const& page : pages) whole["pages"].push_back(pageJson(page));
        writeJson(std::cout, whole);
        return outcome;
    }
    for (Page const& page : pages) {
        if (&page != &pages.front()) std::cout << '\n';
        writePage(std::cout, page);
    }
    return outcome;
}

}  // namespace vrltool::catalogue
