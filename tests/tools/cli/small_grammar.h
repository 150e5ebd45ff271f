#pragma once

#include <CLI/CLI.hpp>

#include "cli/grammar.h"

namespace vrl_test {

/// A grammar with something of everything; its commands do nothing.
class SmallGrammar : public vrltool::Grammar {
public:
    SmallGrammar() {
        auto const nothing = [](vrltool::Common const&) { return vrltool::Outcome::kFine; };
        CLI::App& look = add("look", "looks at a kind", "  vrl look sfBend   # it's .all\\n", nothing);
        look.add_option("key", text, "the kind")->required()->type_name("KEY");
        look.add_option("parameters", texts, "some of its parameters")->type_name("PARAMETER");
        look.add_option("--as", text, "how it looks")->type_name("")->check(CLI::IsMember({"table", "tree", "text"}));
        look.add_option("-o,--output", text, "where to")->type_name("FILE");
        CLI::App& make = add("make", "makes 'it'", "  vrl make x\nAnd no more.", nothing);
        make.add_option("folder", text, "where to make it")->required()->type_name("DIR");
        make.add_option("--rule", text, "a rule")->type_name("RULE=LEVEL");
        make.add_option("--count", number, "how many")->type_name("N");
        make.add_flag("--dry-run", flag, "only says it");
        addHidden("secret", "nobody sees it", nothing);
    }

private:
    std::string text;
    std::vector<std::string> texts;
    int number = 0;
    bool flag = false;
};

}  // namespace vrl_test
