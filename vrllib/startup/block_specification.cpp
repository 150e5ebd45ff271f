#include "vrllib/startup/block_specification.h"

#include <string>

#include "vrllib/core/fixed_text.h"
#include "vrllib/core/messages.h"
#include "vrllib/core/thrown_text.h"
#include "vrllib/model/building_block.h"
#include "vrllib/model/foundry.h"

using namespace Vorlane_v1_0;

vrl_spec2bb::vrl_spec2bb(char const* spec, char const* defaultArg)
    : foundryName(), bbName(), arg(), foundry(nullptr), bb(nullptr) {
    std::string const text = spec ? spec : "";
    vrlCout() << "Creating: " << text << "\n";
    auto const first = text.find('@');
    if (first == std::string::npos) {
        static char message[] = "Format is not valid for foundry@bb[@arg]";
        detail::throwText(message);
    }
    auto const second = text.find('@', first + 1);
    detail::store(foundryName, text.substr(0, first));
    if (second != std::string::npos)
        detail::store(arg, text.substr(second + 1));
    else if (defaultArg)
        detail::store(arg, defaultArg);
    detail::store(bbName, text.substr(first + 1, second == std::string::npos ? second : second - first - 1));

    foundry = Foundry::create(foundryName);
    if (!foundry) {
        vrlCout() << "Foundry '" << foundryName << "' not defined/available\n";
        return;
    }
    bb = BB::create(foundry, bbName);
    if (!bb) vrlCout() << "BB '" << bbName << "' not defined/available\n";
}

vrl_spec2bb::vrl_spec2bb(vrl_spec2bb const& other) = default;
vrl_spec2bb& vrl_spec2bb::operator=(vrl_spec2bb const& other) = default;

vrl_spec2bb::~vrl_spec2bb() {
    if (bb) BB::destroy(bb);
    if (foundry) Foundry::destroy(foundry);
}
