#include "desktop/support/ChildProcess.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <stdexcept>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace quorvane {
namespace {

[[noreturn]] void become(const std::vector<char*>& arguments, int inherited) {
    setpgid(0, 0);
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    const int nothing = open("/dev/null", O_RDWR);
    for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        dup2(nothing, standard);
    fcntl(inherited, F_SETFD, 0);
    execvp(arguments[0], arguments.data());
    _exit(127);
}

}  // namespace

ChildProcess::ChildProcess(std::vector<std::string> command) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
    std::replace(command.begin(), command.end(), std::string("{ready}"), std::to_string(ends[1]));
    std::vector<char*> arguments;
    for (auto& argument : command)
        arguments.push_back(argument.data());
    arguments.push_back(nullptr);
    pid_ = fork();
    if (pid_ == 0) become(arguments, ends[1]);
    close(ends[1]);
    ready_ = ends[0];
    setpgid(pid_, pid_);  // whoever comes first
}

ChildProcess::~ChildProcess() {
    kill();
    close(ready_);
}

std::optional<std::string> ChildProcess::readyLine(Seconds timeout) {
    const auto end = std::chrono::steady_clock::now() + timeout;
    std::string line;
    for (char c = 0;;) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
        pollfd waiting{.fd = ready_, .events = POLLIN, .revents = 0};
        if (left.count() <= 0 || poll(&waiting, 1, static_cast<int>(left.count())) <= 0) return std::nullopt;
        if (read(ready_, &c, 1) != 1) return std::nullopt;
        if (c == '\n') return line;
        line += c;
    }
}

int ChildProcess::wait() {
    if (pid_ == 0) return -1;
    int status = 0;
    while (waitpid(pid_, &status, 0) < 0 && errno == EINTR) {
    }
    ::kill(-std::exchange(pid_, 0), SIGKILL);  // what it leaves behind
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

void ChildProcess::send(int signal) const {
    if (pid_ != 0) ::kill(pid_, signal);
}

void ChildProcess::kill() {
    if (pid_ == 0) return;
    ::kill(-pid_, SIGKILL);
    wait();
}

int run(std::vector<std::string> command) {
    return ChildProcess(std::move(command)).wait();
}

}  // namespace quorvane
