#include "text/finding.h"

namespace vrltool {

char const* severityWord(Severity severity) {
    static char const* const words[] = {"off", "note", "warning", "error"};
    return words[static_cast<int>(severity)];
}

}  // namespace vrltool
