#include "validate/child.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <iterator>

#include "validate/heap.h"
#include "validate/plugin.h"

namespace vrltool::validate {

namespace {

int printed = -1;       // the file that has the place of both standard streams
off_t printedDone = 0;  // how much of it was reported

// A plug-in that writes or allocates without end hurts itself only. The sanitisers reserve more than any limit.
void setLimits() {
    rlimit const none{0, 0};
    setrlimit(RLIMIT_CORE, &none);
    rlimit const written{1U << 26, 1U << 26};
    setrlimit(RLIMIT_FSIZE, &written);
#if !defined(__SANITIZE_ADDRESS__)
    rlimit const memory{rlim_t{1} << 32, rlim_t{1} << 32};
    setrlimit(RLIMIT_DATA, &memory);
#endif
}

/// Keeps standard output for the report, and puts a file in the place of both streams.
int takeStreams() {
    int const report = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 100);
    printed = memfd_create("printed", MFD_CLOEXEC);
    if (report < 0 || printed < 0) throw Failure("standard output", "cannot be kept");
    fcntl(printed, F_SETFL, O_APPEND);
    dup2(printed, STDOUT_FILENO);
    dup2(printed, STDERR_FILENO);
    return report;
}

void flushAll() {
    std::cout.flush();
    std::cerr.flush();
    std::fflush(nullptr);
}

}  // namespace

std::string jobBytes(Job const& job) {
    std::string bytes;
    for (std::string const& word : {job.check, std::to_string(job.seconds), job.config, job.plugin})
        bytes += word + '\0';
    for (std::string const& other : job.others) bytes += other + '\0';
    return bytes;
}

Job jobOf(std::string const& bytes) {
    std::vector<std::string> words(1);
    for (char const c : bytes)
        if (c == '\0')
            words.emplace_back();
        else
            words.back() += c;
    if (words.size() < 5) throw Failure("validate-check", "got no job", "'vrl validate' calls it");
    auto const seconds = static_cast<unsigned>(std::strtoul(words[1].c_str(), nullptr, 10));
    return {words[0], words[2], words[3], {words.begin() + 4, words.end() - 1}, seconds};
}

std::string printedSoFar() {
    flushAll();
    std::string text;
    std::array<char, 4096> buffer;
    for (ssize_t count; (count = pread(printed, buffer.data(), buffer.size(), printedDone)) > 0; printedDone += count)
        text.append(buffer.data(), static_cast<std::size_t>(count));
    return text;
}

std::string firstLine(std::string const& text) {
    std::string line = text.substr(0, text.find('\n'));
    if (line.size() > 60) line = line.substr(0, 57) + "...";
    return "'" + line + "'";
}

Outcome runJob() {
    std::string const bytes{std::istreambuf_iterator<char>(std::cin), std::istreambuf_iterator<char>()};
    Job const job = jobOf(bytes);
    Check const& check = findCheck(job.check);
    setLimits();
    Report report(takeStreams());
    watchHeap();
    vrl::Attributes::factory();  // as start-up does: the five value types are registered before every plug-in
    std::string const thrown = throwsText([&] { check.run(job, report); });
    if (!thrown.empty()) report.find("", thrown);
    report.done();
    // Only one check is about what comes afterwards: static destructors, and what else a plug-in does in the end.
    if (check.run != &checkProcessEnd) _exit(static_cast<int>(Outcome::kFine));
    return Outcome::kFine;
}

}  // namespace vrltool::validate
