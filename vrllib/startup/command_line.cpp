#include "vrllib/startup/command_line.h"

#include <cctype>
#include <iterator>

namespace {

bool isSpace(char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; }

constexpr char kProgramName[] = "Kestrom Software example";

}  // namespace

vrl_cmdline2args::vrl_cmdline2args(char const* cmdline) : text(), args(), count(1) {
    args[0] = kProgramName;
    if (cmdline) split(cmdline);
}
vrl_cmdline2args::vrl_cmdline2args(vrl_cmdline2args const& other) = default;
vrl_cmdline2args& vrl_cmdline2args::operator=(vrl_cmdline2args const& other) = default;
vrl_cmdline2args::~vrl_cmdline2args() = default;

void vrl_cmdline2args::split(char const* input) {
    char* end = text;
    char const* const limit = std::end(text);
    constexpr int kMostArguments = 255;
    for (;;) {
        while (isSpace(*input)) ++input;
        if (!*input || count > kMostArguments - 1 || end == limit) return;
        args[count++] = end;
        char const quote = *input == '"' || *input == '\'' ? *input++ : '\0';
        for (; *input && (quote ? *input != quote : !isSpace(*input)); ++input)
            if (end + 1 < limit) *end++ = *input;
        *end++ = '\0';
        if (quote && *input) ++input;
        if (!*input) return;
        ++input;  // whatever it is, also after a closing quote
    }
}
