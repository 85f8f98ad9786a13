#include "platform/linux/process/TracingChild.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace quorvane::platform {
namespace {

/// What the child does between fork and exec. Other threads may have held any lock at the fork: system calls only.
/// `gate` lets it go on once it may trace; `problem` takes why the program could not be started.
[[noreturn]] void become(char* const* arguments, int output, int gate, int problem) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    char go = 0;
    if (::read(gate, &go, 1) != 1) ::_exit(127);  // the parent is gone
    sigset_t none;
    sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
    const int nothing = ::open("/dev/null", O_RDWR);
    ::dup2(nothing, STDIN_FILENO);
    ::dup2(output, STDOUT_FILENO);
    ::dup2(nothing, STDERR_FILENO);
    char* const environment[] = {nullptr};
    ::execve(arguments[0], arguments, environment);
    const int cause = errno;
    (void)!::write(problem, &cause, sizeof cause);
    ::_exit(127);
}

/// The reading end first.
struct Pipe {
    int ends[2] = {-1, -1};
    Pipe() {
        if (::pipe2(ends, O_CLOEXEC) != 0) ends[0] = ends[1] = -1;
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    ~Pipe() {
        closeEnd(0);
        closeEnd(1);
    }
    void closeEnd(int which) {
        if (const int end = std::exchange(ends[which], -1); end >= 0) ::close(end);
    }
};

}  // namespace

std::string TracingChild::start(std::vector<std::string> arguments, int output) {
    std::vector<char*> pointers;
    pointers.reserve(arguments.size() + 1);
    for (auto& argument : arguments)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    Pipe gate;
    Pipe problem;
    if (gate.ends[0] < 0 || problem.ends[0] < 0) return std::generic_category().message(errno);
    pid_ = ::fork();
    if (pid_ == 0) {
        gate.closeEnd(1);
        become(pointers.data(), output, gate.ends[0], problem.ends[1]);
    }
    if (pid_ < 0) {
        pid_ = 0;
        return std::generic_category().message(errno);
    }
    // Where nothing restricts tracing the call fails, and nobody needs it.
    prctl(PR_SET_PTRACER, static_cast<unsigned long>(pid_));
    (void)!::write(gate.ends[1], "x", 1);
    problem.closeEnd(1);
    int cause = 0;
    if (::read(problem.ends[0], &cause, sizeof cause) != sizeof cause) return {};  // closed by the program's start
    wait(0);
    return std::generic_category().message(cause);
}

std::optional<int> TracingChild::poll() {
    return wait(WNOHANG);
}

void TracingChild::kill() {
    if (pid_ == 0) return;
    ::kill(pid_, SIGKILL);
    wait(0);
}

std::optional<int> TracingChild::wait(int options) {
    int status = 0;
    pid_t ended = 0;
    do
        ended = ::waitpid(pid_, &status, options);
    while (ended < 0 && errno == EINTR);
    if (ended == 0) return std::nullopt;
    prctl(PR_SET_PTRACER, 0UL);
    pid_ = 0;
    if (ended < 0) return -1;  // somebody else has waited for it
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

}  // namespace quorvane::platform
