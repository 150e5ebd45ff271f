#pragma once

#include <sstream>
#include <string>

#include "vrllib/base/export.h"

/// @file
/// The message channel: one process-wide buffer of text for people.
///
/// The library never prints. What a person should know (warnings of the configuration, plug-ins that failed to load,
/// values out of range) waits here until the host fetches it, shows it or throws it away; until then it grows without
/// end. Messages are text that ends in a line feed by convention; there is no count and no severity. Plug-ins write
/// here as well. Threads: one thread at a time; nothing is locked.

/// The channel. The stream is made on first use, is open for output only, and outlives all other static objects.
VRL_API std::stringstream& vrlCout();

/// Writes the text, then a line feed. A null string counts as empty.
VRL_API void vrlPuts(char const* text);

/// Formats as printf does and writes the result up to its first zero byte, 65536 characters at most.
///
/// What lies beyond is lost. A null format counts as empty.
VRL_API void vrlPrintf(char const* format, ...) VRL_PRINTF_FORMAT(1, 2);

/// Throws the text so far away.
VRL_API void vrlCoutReset();

/// Does nothing: it neither shows nor clears. It stays for the hosts that call it.
VRL_API void vrlCoutFlush();

/// A copy of the text so far. The channel stays as it is.
VRL_API std::string vrlGetCoutMsg();

/// Shows the text in a modal box with OK and Cancel, and clears the channel whichever was pressed.
///
/// An empty channel shows nothing. Returns false only if the user pressed Cancel.
VRL_API bool vrlShowCoutMsg();

/// A place for a developer's breakpoint: it is called right before a string is thrown by the attribute classes.
VRL_API void vrlbreaker();
