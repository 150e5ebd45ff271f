#include "vrllib/core/messages.h"

#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <cstdio>

#include "vrllib/platform/platform.h"

namespace {

constexpr std::size_t kPrintfLimit = 65536;

// One more than the limit, for the terminator that vsnprintf always writes.
char vrlPrintfBuffer[kPrintfLimit + 1];

// Nobody reads it; it keeps the call of vrlbreaker from being optimised away.
volatile std::uint32_t vrlbreakerCount = 0;

}  // namespace

std::stringstream& vrlCout() {
    static auto* const vrlCoutStream = new std::stringstream(std::ios_base::out);  // never destroyed
    return *vrlCoutStream;
}

void vrlPuts(char const* text) { vrlCout() << (text ? text : "") << "\n"; }

void vrlPrintf(char const* format, ...) {
    vrlPrintfBuffer[0] = '\0';
    std::va_list arguments;
    va_start(arguments, format);
    if (format) std::vsnprintf(vrlPrintfBuffer, sizeof vrlPrintfBuffer, format, arguments);
    va_end(arguments);
    vrlCout() << vrlPrintfBuffer;
}

void vrlCoutReset() { vrlCout().str(""); }

void vrlCoutFlush() {}

std::string vrlGetCoutMsg() { return vrlCout().str(); }

bool vrlShowCoutMsg() {
    namespace platform = Vorlane_v1_0::platform;

    std::string const text = vrlGetCoutMsg();
    if (text.empty()) return true;
    platform::Button const pressed = platform::showMessageBox(text.c_str(), "Vorlane");
    vrlCoutReset();
    return pressed != platform::Button::kCancel;
}

void vrlbreaker() { vrlbreakerCount = vrlbreakerCount + 1; }
