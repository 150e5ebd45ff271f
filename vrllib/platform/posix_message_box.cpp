#include <cstdio>
#include <string>

#include <unistd.h>

#include "vrllib/platform/platform.h"

namespace Vorlane_v1_0::platform {

namespace {

/// Whether a question would reach a person: both streams are a terminal and the program does not run in its background,
/// where reading would stop it.
bool somebodyWatches() {
    if (!::isatty(STDIN_FILENO) || !::isatty(STDERR_FILENO)) return false;
    pid_t const foreground = ::tcgetpgrp(STDIN_FILENO);
    return foreground < 0 || foreground == ::getpgrp();
}

/// Reads one line of the answer: Cancel for a line that starts with "c" and for the end of input.
Button askForButton() {
    std::fputs("[Enter] OK, [c] Cancel: ", stderr);
    int const first = std::getc(stdin);
    int next = first;
    while (next != '\n' && next != EOF) next = std::getc(stdin);
    if (next == EOF) std::clearerr(stdin);  // so that the next question can be answered
    return first == EOF || first == 'c' || first == 'C' ? Button::kCancel : Button::kOk;
}

}  // namespace

Button showMessageBox(char const* text, char const* caption) {
    std::string shown = std::string(caption ? caption : "") + "\n" + (text ? text : "");
    if (shown.back() != '\n') shown += '\n';
    std::fwrite(shown.data(), 1, shown.size(), stderr);
    return somebodyWatches() ? askForButton() : Button::kOk;
}

}  // namespace Vorlane_v1_0::platform
