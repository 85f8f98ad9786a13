// Lets time pass faster in the programs that load it (LD_PRELOAD), so that a test sees ten minutes in one.
// QUORVANE_TEST_CLOCK says how: "FACTOR BASE", where BASE is the instant, in seconds of the monotonic clock, from
// which on all clocks run so much faster. What waits for files and timers waits as much shorter.

#include <charconv>
#include <cmath>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <optional>
#include <poll.h>
#include <sys/epoll.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

struct Speed {
    double factor = 1;
    double base = 0;
};

const Speed& speed() {
    static const Speed speed = [] {
        const char* const text = std::getenv("QUORVANE_TEST_CLOCK");
        if (text == nullptr) return Speed{};
        Speed read;
        const char* const end = text + std::strlen(text);
        std::from_chars(std::from_chars(text, end, read.factor).ptr + 1, end, read.base);
        return read;
    }();
    return speed;
}

timespec realTime(clockid_t clock) {
    timespec time{};
    syscall(SYS_clock_gettime, clock, &time);
    return time;
}

double seconds(const timespec& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

timespec plus(timespec time, double more) {
    const double nanoseconds = static_cast<double>(time.tv_nsec) + more * 1e9;
    const double carry = std::floor(nanoseconds / 1e9);
    time.tv_sec += static_cast<time_t>(carry);
    time.tv_nsec = static_cast<long>(nanoseconds - carry * 1e9);
    return time;
}

/// How far ahead the clocks are.
double ahead() {
    return (seconds(realTime(CLOCK_MONOTONIC)) - speed().base) * (speed().factor - 1);
}

bool isFast(clockid_t clock) {
    return clock != CLOCK_PROCESS_CPUTIME_ID && clock != CLOCK_THREAD_CPUTIME_ID && clock >= 0;
}

int systemPoll(pollfd* files, nfds_t count, std::optional<double> timeout, const sigset_t* mask) {
    // Rounded up, or who waits for a moment would wait in vain.
    timespec wait = plus({}, timeout.value_or(0) > 0 ? *timeout / speed().factor + 1e-6 : 0);
    return static_cast<int>(syscall(SYS_ppoll, files, count, timeout ? &wait : nullptr, mask, _NSIG / 8));
}

}  // namespace

extern "C" {

int clock_gettime(clockid_t clock, timespec* time) noexcept {
    const auto result = syscall(SYS_clock_gettime, clock, time);
    if (result == 0 && isFast(clock)) *time = plus(*time, ahead());
    return static_cast<int>(result);
}

int ppoll(pollfd* files, nfds_t count, const timespec* timeout, const sigset_t* mask) {
    return systemPoll(files, count, timeout ? std::optional(seconds(*timeout)) : std::nullopt, mask);
}

int poll(pollfd* files, nfds_t count, int timeout) {
    return systemPoll(files, count, timeout >= 0 ? std::optional(timeout / 1e3) : std::nullopt, nullptr);
}

int epoll_wait(int file, epoll_event* events, int most, int timeout) {
    const int wait = timeout <= 0 ? timeout : static_cast<int>(std::ceil(timeout / speed().factor));
    return static_cast<int>(syscall(SYS_epoll_pwait, file, events, most, wait, nullptr, _NSIG / 8));
}
}
