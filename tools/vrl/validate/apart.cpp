#include "validate/apart.h"

#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>

#include "system/process.h"
#include "validate/plugin.h"

namespace vrltool::validate {

namespace {

// Each text ends in a zero byte; the first is the trouble. An end without any tells of a process that did not finish.
[[noreturn]] void answer(int to, std::function<std::vector<std::string>()> const& work) {
    std::vector<std::string> texts;
    std::string const thrown = thrownBy([&] { texts = work(); });
    std::string bytes = thrown + '\0';
    for (std::string const& text : texts) bytes += text + '\0';
    for (std::size_t done = 0; done < bytes.size();) {
        ssize_t const count = write(to, bytes.data() + done, bytes.size() - done);
        if (count <= 0) break;
        done += static_cast<std::size_t>(count);
    }
    _exit(0);
}

std::string readAll(int from) {
    std::string bytes;
    std::array<char, 4096> buffer;
    for (ssize_t count; (count = read(from, buffer.data(), buffer.size())) != 0;) {
        if (count > 0) bytes.append(buffer.data(), static_cast<std::size_t>(count));
        if (count < 0 && errno != EINTR) break;
    }
    return bytes;
}

Apart parted(std::string const& bytes) {
    Apart apart;
    bool first = true;
    for (std::size_t start = 0; start < bytes.size();) {
        auto const end = bytes.find('\0', start);
        std::string const text = bytes.substr(start, end - start);
        first ? apart.trouble = text : apart.texts.emplace_back(text);
        first = false;
        start = end == std::string::npos ? bytes.size() : end + 1;
    }
    return apart;
}

}  // namespace

Apart workApart(std::function<std::vector<std::string>()> const& work, unsigned seconds) {
    int ends[2];
    if (pipe(ends) != 0) return {"no pipe could be made", {}};
    pid_t const child = fork();
    if (child == 0) {
        close(ends[0]);
        alarm(seconds);
        answer(ends[1], work);
    }
    close(ends[1]);
    std::string const bytes = readAll(ends[0]);
    close(ends[0]);
    int state = 0;
    if (child < 0 || waitpid(child, &state, 0) != child) return {"no process could be made", {}};
    Ended ended;
    ended.started = true;
    if (WIFSIGNALED(state)) ended.signal = WTERMSIG(state);
    if (WIFEXITED(state)) ended.status = WEXITSTATUS(state);
    if (!ended.fine() || bytes.empty()) return {ended.how(), {}};
    return parted(bytes);
}

}  // namespace vrltool::validate
