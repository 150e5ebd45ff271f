#include "design/missing_text.h"

#include <algorithm>
#include <sstream>
#include <vector>

#include "host/loads.h"
#include "text/phrases.h"
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

/// A kind that designs lack, with the uses of all of them.
struct Lack {
    MissingKind kind;
    std::string paths;
};

void add(std::vector<Lack>& lacks, Design const& design) {
    for (MissingKind const& kind : design.missing) {
        auto const isSame = [&](Lack const& lack) {
            return lack.kind.what == kind.what && lack.kind.name == kind.name;
        };
        auto const known = std::find_if(lacks.begin(), lacks.end(), isSame);
        if (known == lacks.end()) {
            lacks.push_back({kind, design.path});
        } else {
            known->kind.count += kind.count;
            known->paths += " and " + design.path;
        }
    }
}

void writeLacks(std::ostream& os, std::vector<Lack> const& lacks) {
    for (auto const& [kind, paths] : lacks)
        os << "vrl: " << paths << ": no loaded plug-in has the " << word(kind.what) << " '" << printable(kind.name)
           << "' (" << counted(kind.count, "use") << "); a stand-in represents it\n";
}

/// The lines, and the libraries if there are any.
std::string textOf(std::vector<Lack> const& lacks) {
    std::ostringstream text;
    writeLacks(text, lacks);
    return lacks.empty() ? "" : text.str() + failedLibrariesText();
}

}  // namespace

std::string missingText(Design const& design) {
    std::vector<Lack> lacks;
    add(lacks, design);
    return textOf(lacks);
}

std::string missingText(Design const& a, Design const& b) {
    std::vector<Lack> lacks;
    add(lacks, a);
    add(lacks, b);
    return textOf(lacks);
}

std::string missingKindsLine(Design const& design) {
    std::vector<std::string> names;
    for (MissingKind const& kind : design.missing) names.push_back(inQuotes(printable(kind.name)));
    if (names.empty()) return {};
    bool const one = names.size() == 1;
    return "vrl: " + design.path + ": no loaded plug-in has the kind" + (one ? " " : "s ") + listText(names) +
           (one ? "; a stand-in represents it\n" : "; stand-ins represent them\n");
}

// The system's words begin with the path as often as not.
std::string failedLibrariesText() {
    std::ostringstream text;
    auto const failed = failedLibraries();
    for (FailedLibrary const& library : failed) {
        std::string const head = library.path + ": ";
        bool const named = library.reason.compare(0, head.size(), head) == 0;
        text << "  not loaded: " << (named ? "" : head) << library.reason << '\n';
    }
    if (failed.empty()) text << "  'vrl plugins' shows what is loaded\n";
    return text.str();
}

}  // namespace vrltool
