#include "commands/candidates.h"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <set>

#include "catalogue/kinds.h"
#include "circuit/circuit.h"
#include "circuit/parameters.h"
#include "design/design.h"
#include "host/start.h"
#include "setting/target.h"
#include "text/failure.h"
#include "vrllib/vrllib.h"

// The words that the completion takes from the plug-ins, a design or a table of the tool.

namespace vrltool {

using namespace catalogue;

namespace {

using Names = std::set<std::string>;
using Words = std::vector<std::string>;

std::map<std::string, std::function<Words()>>& registered() {
    static std::map<std::string, std::function<Words()>> sources;
    return sources;
}

Names keysOfAll(std::vector<Kind> const& kinds) {
    Words const keys = keysOf(kinds);
    return {keys.begin(), keys.end()};
}

/// All keys. Of FOUNDRY@BLOCK the first part; after it the blocks of every plug-in, since any can be made for a
/// foundry.
Names keyCandidates(CandidateRequest const& request) {
    auto const at = request.begun.find('@');
    Names names;
    if (at != std::string::npos) {
        for (Kind const& block : kindsOf(kBlock)) names.insert(request.begun.substr(0, at + 1) + block.key);
        return names;
    }
    names = keysOfAll(allKinds());
    for (Kind const& foundry : kindsOf(kFoundry)) names.insert(foundry.key + "@");
    return names;
}

Names foundryCandidates(CandidateRequest const&) { return keysOfAll(kindsOf(kFoundry)); }

void addParameters(Names& names, vrl::Attributes& list) {
    for (Parameter const& parameter : parametersOf(list)) names.insert(parameter.name);
}

void addParametersOfBlock(Names& names, std::string const& key) {
    if (!FactoryLoader<vrl::BB>::factory().find(key)) return;
    auto const block = makeBlock(nullptr, key);
    if (block) addParameters(names, *block);
}

/// The designs among the words; what is none is passed over.
std::vector<Design> designsAmong(Words const& words) {
    std::vector<Design> designs;
    for (std::string const& word : words) {
        if (word[0] == '-') continue;
        try {
            designs.push_back(readDesign(word));
        } catch (Failure const&) {
            continue;  // most words are no files
        }
    }
    return designs;
}

/// The parameters of the blocks that are named, otherwise of the designs, otherwise of all blocks.
Names parameterCandidates(CandidateRequest const& request) {
    Names names;
    for (std::string const& word : request.words) {
        auto const at = word.find('@');
        addParametersOfBlock(names, at == std::string::npos ? word : word.substr(at + 1));
    }
    if (!names.empty()) return names;
    for (Design const& design : designsAmong(request.words)) {
        if (design.object.list()) addParameters(names, *design.object.list());
        vrl::Netlist* const netlist = design.object.netlist();
        if (!netlist) continue;
        for (auto element = netlist->beginElements(); element != netlist->endElements(); ++element)
            if (element->second) addParameters(names, *element->second);
    }
    if (names.empty())
        for (Kind const& block : kindsOf(kBlock)) addParametersOfBlock(names, block.key);
    return names;
}

Names elementCandidates(CandidateRequest const& request) {
    Names names;
    for (Design const& design : designsAmong(request.words))
        if (vrl::Netlist* const netlist = design.object.netlist())
            for (auto name = netlist->beginElementName(); name != netlist->endElementName(); ++name)
                names.insert(name->first);
    return names;
}

void addPaths(Names& names, Circuit const& circuit, std::string const& before) {
    for (Element const& element : circuit.elements) {
        names.insert(before + element.label());
        if (element.inside) addPaths(names, *element.inside, before + element.label() + "/");
    }
}

/// The elements of the designs, those inside of composites by their paths.
Names pathCandidates(CandidateRequest const& request) {
    Names names;
    for (Design const& design : designsAmong(request.words))
        if (vrl::Netlist* const netlist = design.object.netlist()) addPaths(names, circuitFrom(*netlist), "");
    return names;
}

/// What can be set in the designs, up to the value.
Names assignmentCandidates(CandidateRequest const& request) {
    Names names;
    for (Design const& design : designsAmong(request.words)) {
        auto const words = setting::Targets(design).words();
        names.insert(words.begin(), words.end());
    }
    return names;
}

/// The types that plug-ins and designs know.
std::map<std::string, Names (*)(CandidateRequest const&)> const& sources() {
    static std::map<std::string, Names (*)(CandidateRequest const&)> const table{
        {"KEY", keyCandidates},         {"FOUNDRY", foundryCandidates}, {"PARAMETER", parameterCandidates},
        {"ELEMENT", elementCandidates}, {"PATH", pathCandidates},       {"ASSIGNMENT", assignmentCandidates}};
    return table;
}

/// A path as the shell would take it, which does not expand what is only being written.
std::string expanded(std::string const& path) {
    char const* const home = std::getenv("HOME");
    return home && path.compare(0, 2, "~/") == 0 ? home + path.substr(1) : path;
}

std::string configIn(Words const& words) {
    std::string const option = "--config";
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (words[i] == option && i + 1 < words.size()) return expanded(words[i + 1]);
        if (words[i].compare(0, option.size() + 1, option + "=") == 0)
            return expanded(words[i].substr(option.size() + 1));
    }
    char const* const variable = std::getenv("VRL_CONFIG");
    return variable ? variable : "";
}

Words pluginsIn(Words const& words) {
    Words plugins;
    for (std::size_t i = 0; i + 1 < words.size(); ++i)
        if (words[i] == "--plugin") plugins.push_back(expanded(words[i + 1]));
    return plugins;
}

Names namesFor(CandidateRequest request) {
    auto const own = registered().find(request.type);
    if (own != registered().end()) {
        Words const words = own->second();
        return {words.begin(), words.end()};
    }
    auto const source = sources().find(request.type);
    if (source == sources().end()) return {};
    request.words.erase(std::remove(request.words.begin(), request.words.end(), ""), request.words.end());
    StartOptions options;
    options.config = configIn(request.words);
    options.plugins = pluginsIn(request.words);
    options.seconds = 5;
    options.reportsSkipped = false;
    startLibrary(options);
    for (std::string& word : request.words) word = expanded(word);
    return source->second(request);
}

}  // namespace

void registerCandidates(std::string const& type, std::function<std::vector<std::string>()> source) {
    registered()[type] = std::move(source);
}

std::vector<std::string> candidatesFor(CandidateRequest const& request) {
    Words words;
    for (std::string const& name : namesFor(request))
        if (name.compare(0, request.begun.size(), request.begun) == 0) words.push_back(name);
    return words;
}

}  // namespace vrltool
