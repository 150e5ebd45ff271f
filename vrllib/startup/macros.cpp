#include "vrllib/startup/macros.h"

#include "vrllib/core/fixed_text.h"
#include "vrllib/core/messages.h"
#include "vrllib/startup/configuration_state.h"

namespace Vorlane_v1_0::detail {

namespace {

constexpr int kMostReplacements = 1000;  // of one macro in one line
constexpr char kBits[] = "64";

void warnEndless(std::string const& macro) { vrlCout() << "-- warning: macro " << macro << " never ends.\n"; }

// Each search starts at the front again, so that a macro whose text only comes about by a replacement is replaced too.
void replaceMacro(std::string& text, std::string const& macro, std::string const& value, std::size_t arraySize) {
    bool const holdsItself = value.find(macro) != std::string::npos;
    int replacements = 0;
    for (auto place = text.find(macro); place != std::string::npos; place = text.find(macro)) {
        bool const fits = text.size() - macro.size() + value.size() < arraySize;
        if ((holdsItself && !fits) || ++replacements > kMostReplacements) return warnEndless(macro);
        text.replace(place, macro.size(), value);
        text = fitted(text, arraySize);
    }
}

}  // namespace

void expandMacros(std::string& text, std::size_t arraySize) {
    text = fitted(text, arraySize);
    if (text.find("${") == std::string::npos) return;
    auto const& settings = configuration();
    replaceMacro(text, "${version}", settings.versionText, arraySize);
    replaceMacro(text, "${bits}", kBits, arraySize);
    replaceMacro(text, "${bitdir}", kBits, arraySize);
    replaceMacro(text, "${user}", settings.userName, arraySize);
    for (auto const& alias : settings.aliasList) replaceMacro(text, alias.first, alias.second, arraySize);
}

}  // namespace Vorlane_v1_0::detail
