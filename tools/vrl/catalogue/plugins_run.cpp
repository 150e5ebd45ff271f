#include "catalogue/plugins_run.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <iostream>
#include <map>
#include <sstream>
#include <string>

#include "guard/foreign_work.h"
#include "host/load_watch.h"
#include "host/start.h"
#include "system/process.h"
#include "text/progress.h"
#include "text/table.h"

// The child's lines on standard output: "call<TAB>FUNCTION<TAB>PATH" ahead of foreign work, "threw<TAB>TEXT" when a
// plug-in threw, and "report", behind which the report stands. Its standard input: "PATH<TAB>REASON" lines.

namespace vrltool::catalogue {

namespace {

using Skipped = std::map<std::string, std::string>;

constexpr char kReport[] = "report\n";

/// How far a child came.
struct Progressed {
    bool called = false;
    std::string function;  ///< that was called last; empty for the mapping of the file
    std::string path;
    std::string thrown;
    bool threw = false;
    bool reported = false;
    std::string report;
};

Progressed progressOf(std::string const& out) {
    Progressed progress;
    for (std::size_t begin = 0, end = 0; (end = out.find('\n', begin)) != std::string::npos; begin = end + 1) {
        std::string const line = out.substr(begin, end - begin);
        if (line + "\n" == kReport) {
            progress.reported = true;
            progress.report = out.substr(end + 1);
            break;
        }
        auto const tab = line.find('\t');
        auto const second = line.find('\t', tab + 1);
        if (line.compare(0, tab, "threw") == 0) {
            progress.threw = true;
            progress.thrown = line.substr(tab + 1);
        } else if (second != std::string::npos) {
            progress.called = true;
            progress.function = line.substr(tab + 1, second - tab - 1);
            progress.path = line.substr(second + 1);
        }
    }
    return progress;
}

std::string reasonText(Progressed const& progress, ProcessResult const& ended, unsigned seconds) {
    std::string const how = progress.threw   ? progress.thrown
                            : ended.timedOut ? "did not end within " + counted(seconds, "second")
                                             : ended.how();
    return how + (progress.function.empty() ? " while it was mapped" : " in " + progress.function);
}

std::vector<std::string> childWords(PluginsOptions const& options, Common const& common) {
    std::vector<std::string> words{ownProgram(), "plugins", "--in-process"};
    if (!common.config.empty()) words.push_back("--config=" + common.config);
    if (common.json) words.push_back("--json");
    if (options.times) words.push_back("--times");
    if (options.all) words.push_back("--all");
    return words;
}

/// Counts the seconds on a terminal.
ProcessResult runChild(Program program) {
    Progress progress("loading:", "s");
    program.waiting = [&progress](std::size_t seconds) { progress.at(seconds); };
    return runProgram(program);
}

std::string linesOf(Skipped const& skipped) {
    std::string lines;
    for (auto const& entry : skipped) lines += entry.first + "\t" + entry.second + "\n";
    return lines;
}

/// Hands on what a child wrote to standard error, but for the lines that the one before it began with as well.
void handOn(std::string const& text, std::string& before) {
    auto const differs = std::mismatch(text.begin(), text.end(), before.begin(), before.end()).first;
    auto const same = text.rfind('\n', static_cast<std::size_t>(differs - text.begin()));
    std::cerr << (differs == text.begin() || same == std::string::npos ? text : text.substr(same + 1));
    before = text;
}

Outcome finish(Progressed const& progress, ProcessResult const& ended) {
    std::cout << progress.report;
    for (Outcome const outcome : {Outcome::kFine, Outcome::kFindings})
        if (!ended.timedOut && ended.signal == 0 && ended.status == static_cast<int>(outcome)) return outcome;
    std::cerr << "vrl: the plug-ins are loaded, but a program with them does not end well: " << ended.how() << '\n';
    return Outcome::kFindings;
}

Skipped readSkipped(std::istream& is) {
    Skipped skipped;
    for (std::string line; std::getline(is, line);) {
        auto const tab = line.find('\t');
        if (tab != std::string::npos) skipped[line.substr(0, tab)] = line.substr(tab + 1);
    }
    return skipped;
}

void tell(int file, std::string const& line) {
    if (write(file, line.data(), line.size()) < 0) return;
}

/// What a failure says behind the thing that failed.
std::string withoutHead(std::string const& text, std::string const& head) {
    return text.compare(0, head.size(), head) == 0 ? text.substr(head.size()) : text;
}

}  // namespace

Outcome reportPlugins(PluginsOptions const& options, Common const& common, unsigned seconds) {
    Skipped skipped;
    std::string errors;
    for (;;) {
        ProcessResult const ended = runChild({childWords(options, common), linesOf(skipped), "", seconds});
        handOn(ended.err, errors);
        Progressed const progress = progressOf(ended.out);
        if (progress.reported) return finish(progress, ended);
        if (!progress.called && ended.signal == 0 && !ended.timedOut) return Outcome::kFailed;  // it said why
        std::string const reason = reasonText(progress, ended, seconds);
        if (!progress.called || !skipped.emplace(progress.path, reason).second)
            throw Failure("the plug-ins", "cannot be loaded: " + reason);
    }
}

Outcome reportPluginsInProcess(PluginsOptions const& options, Common const& common) {
    int const out = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 0);
    WatchOptions watching;
    watching.skipped = readSkipped(std::cin);
    watching.observer = [out](std::string const& path, std::string const& function) {
        tell(out, "call\t" + function + "\t" + path + "\n");
    };
    watchLoads(std::move(watching));
    leaveCrashesToParent();
    try {
        startLibrary(common.config);
    } catch (Failure const& failure) {
        if (lastWork().empty()) throw;
        tell(out, "threw\t" + printable(withoutHead(failure.what(), lastWork() + ": ")) + "\n");
        return Outcome::kFailed;
    }
    std::ostringstream report;
    Outcome const outcome = writePluginsReport(report, options, common.config, common.json);
    std::cout << kReport << report.str();
    return outcome;
}

}  // namespace vrltool::catalogue
