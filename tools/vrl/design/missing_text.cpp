#include "design/missing_text.h"

#include <sstream>

#include "host/loads.h"
#include "text/table.h"

namespace vrltool {

namespace {

using What = MissingKind::What;

char const* word(What what) {
    switch (what) {
    case What::kBlock:
        return "block";
    case What::kParameter:
        return "parameter type";
    case What::kNetlist:
        return "netlist";
    }
    return "";
}

void writeMissing(std::ostream& os, Design const& design) {
    for (MissingKind const& kind : design.missing)
        os << "vrl: " << design.path << ": no loaded plug-in has the " << word(kind.what) << " '"
           << printable(kind.name) << "' (" << counted(kind.count, "use") << "); a stand-in represents it\n";
}

/// The system's words begin with the path as often as not.
void writeFailedLibraries(std::ostream& os) {
    auto const failed = failedLibraries();
    for (FailedLibrary const& library : failed) {
        std::string const head = library.path + ": ";
        bool const named = library.reason.compare(0, head.size(), head) == 0;
        os << "  not loaded: " << (named ? "" : head) << library.reason << '\n';
    }
    if (failed.empty()) os << "  'vrl plugins' shows what is loaded\n";
}

}  // namespace

std::string missingText(Design const& design) {
    std::ostringstream text;
    writeMissing(text, design);
    if (!design.missing.empty()) writeFailedLibraries(text);
    return text.str();
}

std::string missingText(Design const& a, Design const& b) {
    std::ostringstream text;
    writeMissing(text, a);
    writeMissing(text, b);
    if (!a.missing.empty() || !b.missing.empty()) writeFailedLibraries(text);
    return text.str();
}

}  // namespace vrltool
