#include "booklet/findings_tables.h"

#include <map>
#include <ostream>
#include <utility>

#include "booklet/tex_table.h"
#include "booklet/tex_text.h"
#include "text/table.h"

namespace vrltool::booklet {

namespace {

using check::FileReport;
using check::RuleFinding;

constexpr std::size_t kMostOfRule = 40;

std::string placeText(check::Place const& place) {
    if (place.element.empty() && place.port.empty()) return "the design";
    return cellName(place.port.empty() ? place.element : place.element + "," + place.port);
}

void writeTable(std::ostream& os, std::vector<RuleFinding> const& findings) {
    if (findings.empty()) {
        os << "The check has no findings.\n\n";
        return;
    }
    std::map<check::Rule const*, std::size_t> counts;
    TexTable table(
        {{'P', 0.1, "Severity"}, {'N', 0.2, "Place"}, {'P', 0.5, "Finding, and what to do"}, {'N', 0.2, "Rule"}});
    for (RuleFinding const& finding : findings)
        if (++counts[finding.rule] <= kMostOfRule)
            table.add({severityWord(finding.severity), placeText(finding.place),
                       cellText(finding.what) + " \\newline \\textit{" + cellText(finding.hint) + "}",
                       texName(finding.rule->id)});
    table.write(os);
    for (auto const& [rule, count] : counts)
        if (count > kMostOfRule)
            os << texName(rule->id) << ": " << count - kMostOfRule
               << " more findings, which \\texttt{vrl check -{}-all} lists.\n\n";
}

void writeExcepted(std::ostream& os, FileReport const& report) {
    if (report.excepted.empty() && report.idle.empty()) return;
    std::map<std::pair<std::string, std::string>, std::size_t> counts;
    for (check::Excepted const& excepted : report.excepted) ++counts[{excepted.finding.rule->id, excepted.reason}];
    TexTable table({{'P', 0.15, "Exceptions"}, {'N', 0.3, "Rule"}, {'P', 0.55, "Reason"}});
    for (auto const& [key, count] : counts)
        table.add({counted(count, "finding"), texName(key.first), cellText(key.second)});
    for (check::Exception const& exception : report.idle)
        table.add({"none any more", cellName(exception.text()), cellText(exception.reason)});
    table.write(os);
}

void writeLeftOut(std::ostream& os, FileReport const& report) {
    if (report.leftOut.empty()) return;
    TexTable table({{'N', 0.35, "Rule"}, {'P', 0.65, "Where it could not look"}});
    for (check::LeftOut const& leftOut : report.leftOut)
        table.add(
            {texName(leftOut.rule->id), (leftOut.elements == 0 ? "" : counted(leftOut.elements, "element") + " ") +
                                            texText(leftOut.reason->text)});
    table.write(os);
}

}  // namespace

void writeFindings(std::ostream& os, FileReport const& report) {
    writeTable(os, report.findings);
    writeExcepted(os, report);
    writeLeftOut(os, report);
}

}  // namespace vrltool::booklet
