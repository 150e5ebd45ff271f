#include <CLI/CLI.hpp>
#include <memory>

#include "catalogue/listing.h"
#include "cli/grammar.h"
#include "commands/commands.h"
#include "host/start.h"
#include "text/near_names.h"
#include "text/phrases.h"

namespace vrltool {

using namespace catalogue;

namespace {

struct Options {
    std::string word;
    std::string domain;
};

Outcome list(Options const& options, Common const& common) {
    auto const domain = domainOf(options.domain);  // none for the empty name
    startLibrary(common);
    return listKinds(options.word, domain, common.json);
}

std::string choices(std::vector<std::string> const& words) {
    std::string text;
    for (std::string const& word : words) text += (text.empty() ? "{" : ",") + word;
    return text + "}";
}

/// Accepts one of the words, whatever its capitals if `known` says so; another one gets near ones.
template <class Known>
CLI::Validator oneOf(std::vector<std::string> const& words, Known known) {
    return CLI::Validator(
        [words, known](std::string& word) {
            if (known(word)) return std::string();
            std::string const near = didYouMean(word, words);
            return "no '" + word + "'\n" +
                   (near.empty() ? "it is one of " + listText(words, words.size(), "or") : near);
        },
        choices(words));
}

}  // namespace

void addList(Grammar& grammar) {
    auto const options = std::make_shared<Options>();
    CLI::App& command = grammar.add("list", "lists what the plug-ins bring",
                                    "  vrl list foundries            # each with its description\n"
                                    "  vrl list blocks               # each with its ports and parameters\n"
                                    "  vrl list blocks --domain RF   # those that have an RF port",
                                    [options](Common const& common) { return list(*options, common); });
    auto const words = listWords();
    command.add_option("what", options->word, "what is to be listed")
        ->required()
        ->type_name("LIST")
        ->check(oneOf(words, [words](std::string const& word) {
            return std::find(words.begin(), words.end(), word) != words.end();
        }));
    command.add_option("--domain", options->domain, "only blocks that have a port of this domain")
        ->type_name("DOMAIN")
        ->check(oneOf(domainNames(), [](std::string const& word) { return domainOf(word).has_value(); }));
}

}  // namespace vrltool
