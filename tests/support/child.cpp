#include "tests/support/child.h"

#include <csignal>
#include <cstdlib>
#include <stdexcept>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

extern char** environ;

namespace vrl_test {

namespace {

constexpr unsigned kPatienceSeconds = 900;

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (auto& text : texts) pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

int openFile(std::string const& path, int flags) {
    int const file = ::open(path.c_str(), flags | O_CLOEXEC, 0600);
    if (file < 0) throw std::runtime_error("cannot open " + path);
    return file;
}

/// What a child is started with.
struct Start {
    std::vector<std::string> words;
    std::vector<std::string> environment;
    std::string folder;
    int in;
    int out;
    int err;
    bool ownsTerminal;
};

pid_t startChild(Start start) {
    auto const words = pointersTo(start.words);
    auto const environment = pointersTo(start.environment);
    pid_t const child = ::fork();
    if (child < 0) throw std::runtime_error("cannot start a child");
    if (child > 0) return child;
    if (start.ownsTerminal && (::setsid() < 0 || ::ioctl(start.in, TIOCSCTTY, 0) != 0)) ::_exit(126);
    bool const ready = ::dup2(start.in, STDIN_FILENO) >= 0 && ::dup2(start.out, STDOUT_FILENO) >= 0 &&
                       ::dup2(start.err, STDERR_FILENO) >= 0 && ::chdir(start.folder.c_str()) == 0;
    ::alarm(kPatienceSeconds);
    if (ready) ::execve(words[0], words.data(), environment.data());
    ::_exit(127);
}

int waitFor(pid_t child) {
    int status = 0;
    while (::waitpid(child, &status, 0) < 0) {
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

/// Both ends of a terminal: the child's, and the one at which its user sits.
struct Terminal {
    int user;
    int child;
};

/// A terminal that neither echoes nor changes what passes through it, but knows lines and the end of input.
Terminal openTerminal() {
    int const user = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (user < 0 || ::grantpt(user) != 0 || ::unlockpt(user) != 0) throw std::runtime_error("cannot open a terminal");
    int const child = openFile(::ptsname(user), O_RDWR | O_NOCTTY);
    termios settings;
    ::tcgetattr(child, &settings);
    settings.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    settings.c_oflag &= ~static_cast<tcflag_t>(OPOST);
    ::tcsetattr(child, TCSANOW, &settings);
    return {user, child};
}

std::string readAll(int file) {
    std::string text;
    char buffer[4096];
    for (ssize_t got = ::read(file, buffer, sizeof buffer); got > 0; got = ::read(file, buffer, sizeof buffer))
        text.append(buffer, static_cast<std::size_t>(got));
    return text;
}

std::vector<std::string> wordsOf(std::string const& program, std::string const& scenario,
                                 std::vector<std::string> const& arguments) {
    std::vector<std::string> words{program, scenario};
    words.insert(words.end(), arguments.begin(), arguments.end());
    return words;
}

std::vector<std::string> listed(std::map<std::string, std::string> const& variables) {
    std::vector<std::string> list;
    for (auto const& variable : variables) list.push_back(variable.first + "=" + variable.second);
    return list;
}

/// The caller's environment, which has what sanitisers and the search for libraries need, but for the library's own.
std::map<std::string, std::string> inheritedVariables() {
    std::map<std::string, std::string> variables;
    for (char** entry = environ; *entry; ++entry) {
        std::string const text = *entry;
        auto const split = text.find('=');
        variables[text.substr(0, split)] = split == std::string::npos ? "" : text.substr(split + 1);
    }
    variables.erase("VRLLOAD");
    variables["LC_ALL"] = "C";
    return variables;
}

}  // namespace

Sandbox::Sandbox(std::string scenarioProgram)
    : program(std::move(scenarioProgram)),
      homeFolder(folder / "home"),
      workFolder(folder / "work"),
      variables(inheritedVariables()) {
    std::filesystem::create_directory(homeFolder);
    std::filesystem::create_directory(workFolder);
    variables["HOME"] = homeFolder.string();
    variables["TMPDIR"] = workFolder.string();
}

Outcome Sandbox::run(std::string const& scenario, std::vector<std::string> const& arguments) const {
    std::string const outFile = (folder / "out").string();
    std::string const errFile = (folder / "err").string();
    int const in = openFile("/dev/null", O_RDONLY);
    int const out = openFile(outFile, O_WRONLY | O_CREAT | O_TRUNC);
    int const err = openFile(errFile, O_WRONLY | O_CREAT | O_TRUNC);
    pid_t const child = startChild(
        {wordsOf(program, scenario, arguments), listed(variables), workFolder.string(), in, out, err, false});
    for (int const file : {in, out, err}) ::close(file);
    int const status = waitFor(child);
    return {status, readFile(outFile), readFile(errFile)};
}

Outcome Sandbox::runAtTerminal(std::string const& typed, std::string const& scenario,
                               std::vector<std::string> const& arguments) const {
    std::string const outFile = (folder / "out").string();
    Terminal const terminal = openTerminal();
    int const out = openFile(outFile, O_WRONLY | O_CREAT | O_TRUNC);
    pid_t const child = startChild({wordsOf(program, scenario, arguments), listed(variables), workFolder.string(),
                                    terminal.child, out, terminal.child, true});
    bool const sent = ::write(terminal.user, typed.data(), typed.size()) == static_cast<ssize_t>(typed.size());
    ::close(terminal.child);
    std::string const err = readAll(terminal.user);
    int const status = waitFor(child);
    ::close(terminal.user);
    ::close(out);
    if (!sent) throw std::runtime_error("cannot type at the terminal");
    return {status, readFile(outFile), err};
}

}  // namespace vrl_test
